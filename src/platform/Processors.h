#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace kestrune::platform {

// Cumulative ticks of one logical processor. The unit is the platform's own; only ratios matter.
struct ProcessorTicks {
  std::int32_t user = 0;  // without `nice`
  std::int32_t system = 0;
  std::int32_t idle = 0;
  std::int32_t nice = 0;
  friend bool operator==(const ProcessorTicks&, const ProcessorTicks&) = default;
};

// The load counters of all logical processors. Main thread.
class Processors {
 public:
  virtual ~Processors() = default;

  // One entry for each processor that is online: efficiency cores first, then by id. Absent: the read failed.
  // The sum over all processors and states fits in 32 bits. To keep that promise, and when the set of
  // processors changes, the counters restart at 0 for all processors at once.
  virtual std::optional<std::vector<ProcessorTicks>> processorTicks() = 0;
};

}  // namespace kestrune::platform
