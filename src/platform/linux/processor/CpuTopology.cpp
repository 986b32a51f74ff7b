#include "platform/linux/processor/CpuTopology.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <string_view>

#include "platform/linux/files/FieldScanner.h"
#include "platform/linux/files/Files.h"
#include "platform/linux/files/Text.h"

namespace kestrune::platform {
namespace {

std::vector<std::int32_t> listIn(const std::string& root, std::string_view path) {
  return parseCpuList(readText(below(root, path))).value_or(std::vector<std::int32_t>());
}

std::string ofCpu(const std::string& root, std::int32_t cpu, std::string_view file) {
  return readText(below(root, "sys/devices/system/cpu/cpu" + std::to_string(cpu) + "/").append(file));
}

std::vector<std::int32_t> smallCoresOfX86(const std::string& root) {
  if (listIn(root, "sys/devices/cpu_core/cpus").empty()) return {};
  std::vector<std::int32_t> small;
  std::ranges::set_union(listIn(root, "sys/devices/cpu_atom/cpus"),
                         listIn(root, "sys/devices/cpu_lowpower/cpus"), std::back_inserter(small));
  return small;
}

std::vector<std::int32_t> cpusOfLowestCapacity(const std::string& root,
                                               std::span<const std::int32_t> online) {
  std::vector<std::int32_t> lowest;
  std::int32_t minimum = std::numeric_limits<std::int32_t>::max();
  for (const std::int32_t cpu : online) {
    const std::string text = ofCpu(root, cpu, "cpu_capacity");
    const auto capacity = FieldScanner(text).number<std::int32_t>();
    if (!capacity) return {};
    if (*capacity < minimum) lowest.clear();
    minimum = std::min(minimum, *capacity);
    if (*capacity == minimum) lowest.push_back(cpu);
  }
  return lowest;
}

std::string physicalCoreKey(const std::string& root, std::int32_t cpu) {
  for (const char* file : {"topology/core_cpus_list", "topology/thread_siblings_list"}) {
    if (std::string siblings = ofCpu(root, cpu, file); !siblings.empty()) return siblings;
  }
  const std::string core = ofCpu(root, cpu, "topology/core_id");
  return core.empty() ? core : ofCpu(root, cpu, "topology/physical_package_id") + "/" + core;
}

constexpr std::int32_t maxId = 65535;

bool addRange(std::string_view range, std::vector<std::int32_t>& ids) {
  const auto dash = range.find('-');
  const auto first = FieldScanner(range.substr(0, dash)).number<std::int32_t>();
  const auto last =
      dash == std::string_view::npos ? first : FieldScanner(range.substr(dash + 1)).number<std::int32_t>();
  if (!first || !last || *first < 0 || *last < *first || *last > maxId) return false;
  // The kernel lists ids in ascending order.
  if (!ids.empty() && *first <= ids.back()) return false;
  for (std::int32_t id = *first; id <= *last; ++id) ids.push_back(id);
  return true;
}

}  // namespace

std::vector<std::int32_t> onlineCpus(const std::string& root) {
  return listIn(root, "sys/devices/system/cpu/online");
}

std::vector<std::int32_t> efficiencyCpus(const std::string& root, std::span<const std::int32_t> online) {
  std::vector<std::int32_t> small = smallCoresOfX86(root);
  if (small.empty()) small = cpusOfLowestCapacity(root, online);
  std::vector<std::int32_t> efficiency;
  std::ranges::set_intersection(small, online, std::back_inserter(efficiency));
  if (efficiency.size() == online.size()) efficiency.clear();
  return efficiency;
}

std::vector<std::string> physicalCoreKeys(const std::string& root, std::span<const std::int32_t> cpus) {
  std::vector<std::string> keys;
  keys.reserve(cpus.size());
  for (const std::int32_t cpu : cpus) keys.push_back(physicalCoreKey(root, cpu));
  if (std::ranges::all_of(keys, &std::string::empty)) return {};
  for (std::size_t i = 0; i < keys.size(); ++i) {
    if (keys[i].empty()) keys[i] = "alone " + std::to_string(cpus[i]);
  }
  return keys;
}

std::optional<std::vector<std::int32_t>> parseCpuList(std::string_view text) {
  text = trimmed(text);
  std::vector<std::int32_t> ids;
  if (text.ends_with(',')) return std::nullopt;
  while (!text.empty()) {
    if (!addRange(takePart(text, ','), ids)) return std::nullopt;
  }
  return ids;
}

}  // namespace kestrune::platform
