#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace kestrune::platform {

// The ids of the processors that are online, ascending; empty where sysfs doesn't tell.
std::vector<std::int32_t> onlineCpus(const std::string& root);

// Those of `online` that belong to efficiency cores, ascending: what the kernel's counters for small cores
// cover on x86, the processors of lowest capacity on Arm. Empty where all of `online` are of one kind.
std::vector<std::int32_t> efficiencyCpus(const std::string& root, std::span<const std::int32_t> online);

// A text for each of `cpus` that is the same for those that share a physical core, and for no others. Empty
// where the topology of none of them is known.
std::vector<std::string> physicalCoreKeys(const std::string& root, std::span<const std::int32_t> cpus);

}  // namespace kestrune::platform
