#pragma once

#include <string>

#include "platform/ProcessEnvironment.h"

namespace kestrune::platform {

// Whether the program sees the whole file system of the machine, as far as it can tell: it is in no container
// (of which it would see the processes' namespace or the mark), in no Flatpak or confined Snap, and not below
// a root of its own, by what proc and the files at the top say below `root`.
bool seesWholeFileSystem(const std::string& root, ProcessEnvironment& environment);

}  // namespace kestrune::platform
