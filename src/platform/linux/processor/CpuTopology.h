#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kestrune::platform {

// The ids in a kernel list of processors such as "0-5,8,10-11", ascending, each once. An empty text is an
// empty list. Absent: the text isn't such a list, or contains an id that is too large for any kernel.
std::optional<std::vector<std::int32_t>> parseCpuList(std::string_view text);

// The ids of the processors that are online, ascending. Empty if sysfs doesn't list them.
std::vector<std::int32_t> onlineCpus(const std::string& root);

// The processors of `online` that belong to efficiency cores, ascending: on x86 those that the kernel's
// counters for small cores cover, on Arm those of the lowest capacity. Empty if all of `online` are of one
// kind.
std::vector<std::int32_t> efficiencyCpus(const std::string& root, std::span<const std::int32_t> online);

// A key for each of `cpus`, equal exactly for threads of one physical core. Empty if the topology is
// unknown for all of them.
std::vector<std::string> physicalCoreKeys(const std::string& root, std::span<const std::int32_t> cpus);

}  // namespace kestrune::platform
