#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <dirent.h>

#include "platform/ProcessTable.h"
#include "platform/linux/processes/PidStat.h"

namespace kestrune::platform {

// The processes in proc/ below `root`. The full name and the path don't change while a process runs the same
// program, so they are read once and kept until the process shows another name or ends.
class LinuxProcessTable final : public ProcessTable {
 public:
  explicit LinuxProcessTable(std::string root = "/");

  // The path that the process was started by, even if the file has been deleted since. It is empty
  // for kernel threads, for processes that may not be inspected, and for paths of 1024 bytes or more.
  std::vector<ProcessReading> readings() override;

 private:
  // What is kept of a process from walk to walk.
  struct Known {
    std::uint64_t startTime = 0;
    std::uint64_t lastWalk = 0;
    bool isKernelThread = false;
    bool hasName = false;  // `name` is complete
    bool hasPath = false;  // `path` needn't be read again
    std::string kernelName;
    std::string name;
    std::string path;
  };

  bool openDirectory();
  std::optional<ProcessReading> readProcess(std::int32_t pid);
  Known& known(std::int32_t pid, const PidStat& stat);
  void readName(std::int32_t pid, Known& process);
  void readPath(std::int32_t pid, Known& process);
  std::optional<std::string_view> read(std::int32_t pid, std::string_view file);

  std::string root_;
  std::unique_ptr<DIR, int (*)(DIR*)> directory_;
  std::unordered_map<std::int32_t, Known> known_;
  std::uint64_t walk_ = 0;  // number of the current walk
  std::array<char, 4096> buffer_{};
  std::uint64_t ticksPerSecond_;
  std::uint64_t pageBytes_;
};

}  // namespace kestrune::platform
