#include "platform/linux/storage/LinuxVolumes.h"

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/statvfs.h>

#include "platform/linux/files/Files.h"
#include "platform/linux/files/Text.h"

namespace kestrune::platform {
namespace {

std::string resolved(const std::string& path) {
  const std::unique_ptr<char, void (*)(void*)> real(realpath(path.c_str(), nullptr), std::free);
  return real ? std::string(real.get()) : path;
}

}  // namespace

LinuxVolumes::LinuxVolumes(std::string root) : root_(std::move(root)) {}

std::optional<std::string> LinuxVolumes::name(const std::string& path) {
  if (mountsChanged()) known_.clear();
  auto known = known_.find(path);
  const bool isFresh =
      known != known_.end() && changeTime(known->second.labelFile) == known->second.labelTime;
  if (!isFresh) {
    auto found = findName(path);
    if (!found) return std::nullopt;
    known = known_.insert_or_assign(path, *std::move(found)).first;
  }
  return known->second.name;
}

std::optional<VolumeCapacity> LinuxVolumes::capacity(const std::string& path) {
  struct statvfs info {};
  if (statvfs(below(root_, std::string_view(path).substr(1)).c_str(), &info) != 0) return std::nullopt;
  VolumeCapacity capacity;
  const bool overflows =
      __builtin_mul_overflow(std::uint64_t{info.f_blocks}, std::uint64_t{info.f_frsize},
                             &capacity.totalBytes) ||
      __builtin_mul_overflow(std::uint64_t{info.f_bavail}, std::uint64_t{info.f_frsize}, &capacity.freeBytes);
  return overflows ? std::nullopt : std::optional(capacity);
}

// The kernel reports a change of the mounts as an exceptional state of the open file, once.
bool LinuxVolumes::mountsChanged() {
  if (!mounts_) {
    mounts_ = UniqueFd(open(below(root_, "proc/self/mountinfo").c_str(), O_RDONLY | O_CLOEXEC));
    return true;
  }
  pollfd state{.fd = mounts_.get(), .events = POLLPRI, .revents = 0};
  return poll(&state, 1, 0) > 0 && (state.revents & (POLLPRI | POLLERR)) != 0;
}

std::optional<LinuxVolumes::Known> LinuxVolumes::findName(const std::string& path) const {
  const auto mounts = readFile(below(root_, "proc/self/mountinfo"));
  const auto mount = mounts ? findMount(*mounts, path) : std::nullopt;
  if (!mount) return std::nullopt;
  const std::string number = deviceNumber(*mount);
  Known known;
  known.labelFile = below(root_, "run/udev/data/b" + number);
  known.labelTime = changeTime(known.labelFile);
  const std::string facts = readFile(known.labelFile).value_or("");
  known.name = unescaped(lineAfter(facts, "E:ID_FS_LABEL_ENC="));
  if (known.name.empty()) known.name = lineAfter(facts, "E:ID_FS_LABEL=");
  if (known.name.empty()) known.name = deviceName(*mount, number);
  return known;
}

// Some file systems have device numbers of their own, but their source names a real device.
std::string LinuxVolumes::deviceNumber(const Mount& mount) const {
  if (!mount.device.starts_with("0:") || !mount.source.starts_with("/dev/")) return mount.device;
  const std::string device = resolved(below(root_, std::string_view(mount.source).substr(1)));
  const std::string number =
      readText(below(root_, "sys/class/block/" + std::string(baseName(device)) + "/dev"));
  return number.empty() ? mount.device : number;
}

std::string LinuxVolumes::deviceName(const Mount& mount, const std::string& number) const {
  const std::string folder = below(root_, "sys/dev/block/" + number);
  if (std::string mapped = readText(folder + "/dm/name"); !mapped.empty()) return mapped;
  const std::string facts = readFile(folder + "/uevent").value_or("");
  if (const auto device = lineAfter(facts, "DEVNAME="); !device.empty()) return std::string(device);
  if (mount.source.starts_with('/')) return std::string(baseName(mount.source));
  return mount.source == "none" ? mount.type : mount.source;
}

}  // namespace kestrune::platform
