#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace kestrune::platform {

// One process at one moment. Texts are bytes.
struct ProcessReading {
  std::int32_t pid = 0;        // above 0
  std::string name;            // empty if it has none
  std::string executablePath;  // empty if it can't be read
  std::uint64_t residentBytes = 0;
  std::uint64_t userNanoseconds = 0;    // cumulative
  std::uint64_t systemNanoseconds = 0;  // cumulative
};

// The table of processes. One thread at a time.
class ProcessTable {
 public:
  virtual ~ProcessTable() = default;
  // All processes that can be read, in the kernel's order. Empty: the table can't be read.
  virtual std::vector<ProcessReading> readings() = 0;
};

}  // namespace kestrune::platform
