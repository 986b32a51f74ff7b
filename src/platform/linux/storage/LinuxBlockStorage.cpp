#include "platform/linux/storage/LinuxBlockStorage.h"

#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>

#include <dirent.h>

#include "platform/linux/files/Directory.h"
#include "platform/linux/files/FieldScanner.h"
#include "platform/linux/files/Files.h"
#include "platform/linux/files/Text.h"

namespace kestrune::platform {
namespace {

constexpr std::uint64_t sectorBytes = 512;
// More than a drive moves in its life. Anything above is garbage, and sums of it could overflow.
constexpr std::uint64_t maxSectors = std::uint64_t{1} << 48U;

std::optional<std::uint64_t> bytesOf(std::optional<std::uint64_t> sectors) {
  if (!sectors || *sectors > maxSectors) return std::nullopt;
  return *sectors * sectorBytes;
}

}  // namespace

BlockDriver parseBlockStat(std::string_view text) {
  FieldScanner fields(takeLine(text));
  fields.field();  // reads completed
  fields.field();  // reads merged
  const auto read = fields.number<std::uint64_t>();
  fields.field();  // milliseconds spent reading
  fields.field();  // writes completed
  fields.field();  // writes merged
  const auto written = fields.number<std::uint64_t>();
  return {.bytesRead = bytesOf(read), .bytesWritten = bytesOf(written)};
}

LinuxBlockStorage::LinuxBlockStorage(std::string root) : root_(std::move(root)) {}

LinuxBlockStorage::Device LinuxBlockStorage::makeDevice(const std::string& name) const {
  const std::string folder = below(root_, "sys/block/" + name);
  // Hidden devices are the paths to a drive that has several. The drive itself counts what passes through
  // them.
  const bool isDrive = exists(folder + "/device") && readText(folder + "/hidden") != "1";
  return {.stat = KeptFile(folder + "/stat"), .isDrive = isDrive, .last = {}};
}

std::optional<std::vector<BlockDriver>> LinuxBlockStorage::blockDrivers() {
  const std::unique_ptr<DIR, int (*)(DIR*)> directory(opendir(below(root_, "sys/block").c_str()), closedir);
  if (!directory) return std::nullopt;
  for (auto& [name, device] : devices_) device.isListed = false;
  while (const dirent* entry = readdir(directory.get())) {
    const std::string_view name(static_cast<const char*>(entry->d_name));
    if (name.starts_with('.')) continue;
    auto known = devices_.find(name);
    if (known == devices_.end()) {
      known = devices_.emplace(std::string(name), makeDevice(std::string(name))).first;
    }
    known->second.isListed = true;
  }
  std::erase_if(devices_, [](const auto& entry) { return !entry.second.isListed; });

  std::vector<BlockDriver> drivers;
  for (auto& [name, device] : devices_) {
    if (!device.isDrive) continue;
    if (const auto text = device.stat.read()) {
      const BlockDriver now = parseBlockStat(*text);
      if (now.bytesRead) device.last.bytesRead = now.bytesRead;
      if (now.bytesWritten) device.last.bytesWritten = now.bytesWritten;
    }
    drivers.push_back(device.last);
  }
  return drivers;
}

}  // namespace kestrune::platform
