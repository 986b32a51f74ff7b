#pragma once

#include <cstdint>
#include <string_view>

namespace kestrune::platform {

// Whether a directory of that name is a package: a program or the like that users see as one thing. Known by
// its extension, in any case of letters: those of application bundles (app, appdir), of what they are
// extended with (appex, bundle, framework, kext, plugin, prefpane) and of their services (xpc).
bool isPackage(std::string_view directoryName);

// Whether a file system of that type, as statfs(2) tells it, is the kernel's own and shows its state instead
// of files. A place that mounts itself when it is entered, and isn't mounted yet, is of such a type as well.
bool isKernelFileSystem(std::uint32_t type);

}  // namespace kestrune::platform
