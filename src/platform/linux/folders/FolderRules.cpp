#include "platform/linux/folders/FolderRules.h"

#include <algorithm>
#include <array>

#include <linux/magic.h>

#include "platform/linux/files/Text.h"

namespace kestrune::platform {
namespace {

constexpr std::array<std::string_view, 9> packageExtensions{
    "app", "appdir", "appex", "bundle", "framework", "kext", "plugin", "prefpane", "xpc"};

constexpr std::array<std::uint32_t, 25> kernelFileSystems{
    AAFS_MAGIC, AUTOFS_SUPER_MAGIC, BINDERFS_SUPER_MAGIC, BINFMTFS_MAGIC, BPF_FS_MAGIC, CGROUP2_SUPER_MAGIC,
    CGROUP_SUPER_MAGIC, DEBUGFS_MAGIC, DEVPTS_SUPER_MAGIC, EFIVARFS_MAGIC, NSFS_MAGIC, OPENPROM_SUPER_MAGIC,
    PROC_SUPER_MAGIC, PSTOREFS_MAGIC, RDTGROUP_SUPER_MAGIC, SECURITYFS_MAGIC, SELINUX_MAGIC, SMACK_MAGIC,
    SYSFS_MAGIC, TRACEFS_MAGIC, XENFS_SUPER_MAGIC,
    // Not in the kernel's public header.
    0x62656570,  // configfs
    0x65735543,  // fusectl
    0x19800202,  // mqueue
    0x67596969,  // rpc_pipefs
};

}  // namespace

bool isPackage(std::string_view directoryName) {
  const auto dot = directoryName.rfind('.');
  // ".app" is a hidden name without an extension.
  if (dot == std::string_view::npos || dot == 0) return false;
  const std::string_view extension = directoryName.substr(dot + 1);
  return std::ranges::any_of(packageExtensions, [&](std::string_view known) {
    return std::ranges::equal(extension, known, {}, lowerCase);
  });
}

bool isKernelFileSystem(std::uint32_t type) {
  return std::ranges::find(kernelFileSystems, type) != kernelFileSystems.end();
}

}  // namespace kestrune::platform
