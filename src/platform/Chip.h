#pragma once

#include <cstdint>
#include <string>

namespace kestrune::platform {

// Fixed facts about the processor. Texts are bytes as the machine reports them, or empty; unknown counts are
// 0. Main thread.
class Chip {
 public:
  virtual ~Chip() = default;
  virtual std::string brand() = 0;         // "AMD Ryzen 7 5800X 8-Core Processor"
  virtual std::string machineModel() = 0;  // "Raspberry Pi 4 Model B Rev 1.4"
  virtual std::int32_t physicalCores() = 0;
  // Physical cores of each kind; both 0 if all cores are of one kind.
  virtual std::int32_t performanceCores() = 0;
  virtual std::int32_t efficiencyCores() = 0;
};

}  // namespace kestrune::platform
