#pragma once

#include <cstdint>
#include <string_view>

namespace kestrune::platform {

// Whether a directory of that name is a package, which users see as a single item. Packages are recognised by
// their extension, in upper or lower case: application bundles (app, appdir), their extensions (appex,
// bundle, framework, kext, plugin, prefpane) and their services (xpc).
bool isPackage(std::string_view directoryName);

// Whether a file system of that type, as returned by statfs(2), shows the kernel's state rather than files.
// Includes automount points that aren't mounted yet.
bool isKernelFileSystem(std::uint32_t type);

}  // namespace kestrune::platform
