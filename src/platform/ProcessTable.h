#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace kestrune::platform {

struct TaskInfo {
  std::uint64_t residentBytes = 0;
  std::uint64_t userNanoseconds = 0;    // cumulative
  std::uint64_t systemNanoseconds = 0;  // cumulative
};

// The table of processes. Any one thread at a time.
class ProcessTable {
 public:
  virtual ~ProcessTable() = default;

  // How many processes there are now; below 1: the table can't be read.
  virtual std::int32_t processCount() = 0;
  // Fills in process ids, as many as fit, and yields their number; below 1: the table can't be read.
  virtual std::int32_t listPids(std::span<std::int32_t> pids) = 0;

  // Absent: the process is gone or may not be looked at.
  virtual std::optional<TaskInfo> taskInfo(std::int32_t pid) = 0;

  // The two below are asked right after `taskInfo` for the same process. They yield bytes, not text, and
  // nothing for a process that has no such thing or is gone.
  virtual std::string name(std::int32_t pid) = 0;
  virtual std::string executablePath(std::int32_t pid) = 0;
};

}  // namespace kestrune::platform
