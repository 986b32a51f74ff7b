#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/Processors.h"
#include "platform/linux/files/UniqueFd.h"
#include "platform/linux/processor/ProcStat.h"

namespace kestrune::platform {

// The processors as /proc/stat below `root` counts them, from the first read on: that one delivers zeros.
// Waiting for a disk is idle time; interrupts and time stolen by a hypervisor are system time. A counter of
// the kernel that falls adds nothing.
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
  void beginAnew();

  std::string root_;
  UniqueFd file_;
  std::vector<char> buffer_;
  std::vector<RawProcessor> raw_;      // as just read, in the order of the file
  std::vector<RawProcessor> lastRaw_;  // as last delivered
  std::vector<std::size_t> order_;     // positions in `raw_`, in the order of delivery
  std::vector<Gain> gains_;            // in the order of delivery, as is `ticks_`
  std::vector<ProcessorTicks> ticks_;
  std::int64_t sum_ = 0;  // of all `ticks_`
};

}  // namespace kestrune::platform
