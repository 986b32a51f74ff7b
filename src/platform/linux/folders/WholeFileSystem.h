#pragma once

#include <string>

#include "platform/ProcessEnvironment.h"

namespace kestrune::platform {

// Whether the program sees the machine's whole file system, as far as it can tell: it isn't in a container
// (which would have its own pid namespace or leave a marker file), in a Flatpak or a confined Snap, or in a
// chroot. Read from proc/ and marker files below `root`.
bool seesWholeFileSystem(const std::string& root, ProcessEnvironment& environment);

}  // namespace kestrune::platform
