#pragma once

#include <cstdint>
#include <string>

namespace kestrune::platform {

// Fixed facts about the processor. Texts are bytes as the machine gives them, empty where it gives none;
// counts are 0 where they are unknown. Main thread.
class Chip {
 public:
  virtual ~Chip() = default;
  virtual std::string brand() = 0;         // "AMD Ryzen 7 5800X 8-Core Processor"
  virtual std::string machineModel() = 0;  // "Raspberry Pi 4 Model B Rev 1.4"
  virtual std::int32_t physicalCores() = 0;
  // Physical cores of each kind; both 0 on a chip whose cores are all of one kind.
  virtual std::int32_t performanceCores() = 0;
  virtual std::int32_t efficiencyCores() = 0;
};

}  // namespace kestrune::platform
