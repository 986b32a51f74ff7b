#include "platform/linux/processor/LinuxChip.h"

#include <algorithm>
#include <set>
#include <vector>

#include "platform/linux/files/Files.h"
#include "platform/linux/processor/CpuInfo.h"
#include "platform/linux/processor/CpuTopology.h"

namespace kestrune::platform {
namespace {

constexpr std::size_t cpuInfoLimit = std::size_t{1} << 24U;  // about 10,000 processors

// On Arm the model name of a 32-bit kernel is that of the instruction set, so the chip and the cores are
// preferred.
std::string brandOf(const CpuInfo& info) {
  if (info.armCores.empty()) return info.modelName;
  if (!info.hardware.empty() && !info.hardware.starts_with("Generic ")) return info.hardware;
  if (!info.modelName.empty() && !info.modelName.starts_with("ARMv")) return info.modelName;
  const std::string names = armCoreNames(info.armCores);
  return names.empty() ? info.modelName : names;
}

std::string machineModelOf(const std::string& root) {
  for (const char* path :
       {"sys/firmware/devicetree/base/model", "proc/device-tree/model", "sys/class/dmi/id/product_name"}) {
    if (std::string model = readText(below(root, path)); !model.empty()) return model;
  }
  return {};
}

}  // namespace

LinuxChip::LinuxChip(const std::string& root) {
  const auto text = readFile(below(root, "proc/cpuinfo"), cpuInfoLimit);
  const CpuInfo info = text ? parseCpuInfo(*text) : CpuInfo();
  brand_ = brandOf(info);
  machineModel_ = machineModelOf(root);
  countCores(root);
  if (physicalCores_ == 0) physicalCores_ = info.physicalCores > 0 ? info.physicalCores : info.processors;
}

void LinuxChip::countCores(const std::string& root) {
  const std::vector<std::int32_t> online = onlineCpus(root);
  const std::vector<std::string> cores = physicalCoreKeys(root, online);
  if (cores.empty()) return;
  const std::vector<std::int32_t> efficiency = efficiencyCpus(root, online);

  std::set<std::string> small;
  for (std::size_t i = 0; i < cores.size(); ++i) {
    if (std::ranges::binary_search(efficiency, online[i])) small.insert(cores[i]);
  }
  const std::set<std::string> all(cores.begin(), cores.end());
  physicalCores_ = static_cast<std::int32_t>(all.size());
  if (small.empty()) return;
  efficiencyCores_ = static_cast<std::int32_t>(small.size());
  performanceCores_ = physicalCores_ - efficiencyCores_;
}

}  // namespace kestrune::platform
