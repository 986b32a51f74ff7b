#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/Processors.h"
#include "platform/linux/files/UniqueFd.h"
#include "platform/linux/processor/ProcStat.h"

namespace kestrune::platform {

// The processors' times from /proc/stat below `root`, counted from the first read, which returns zeros.
// Waiting for a disk counts as idle time; interrupts and time stolen by a hypervisor count as system time. A
// kernel counter that decreases adds nothing.
class LinuxProcessors final : public Processors {
 public:
  explicit LinuxProcessors(std::string root = "/");

  std::optional<std::vector<ProcessorTicks>> processorTicks() override;

 private:
  // What one processor gained since the last read.
  struct Gain {
    std::int64_t user = 0;
    std::int64_t system = 0;
    std::int64_t idle = 0;
    std::int64_t nice = 0;
  };

  bool read();
  bool readOnce();
  bool sameProcessorsAsBefore() const;
  void arrange();
  std::int64_t measureGains();
  void addGains();
  void restart();

  std::string root_;
  UniqueFd file_;
  std::vector<char> buffer_;
  std::vector<RawProcessor> raw_;      // as just read, in the order of the file
  std::vector<RawProcessor> lastRaw_;  // of the last result
  std::vector<std::size_t> order_;     // positions in `raw_`, in the order of the result
  std::vector<Gain> gains_;            // in the order of the result, as is `ticks_`
  std::vector<ProcessorTicks> ticks_;
  std::int64_t sum_ = 0;  // of all `ticks_`
};

}  // namespace kestrune::platform
