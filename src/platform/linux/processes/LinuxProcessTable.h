#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <dirent.h>

#include "platform/ProcessTable.h"
#include "platform/linux/processes/PidStat.h"

namespace kestrune::platform {

// The processes below proc/ of `root`. What never changes while a process runs the same program, its path and
// its full name, is asked for once and kept until it shows another name or is gone.
class LinuxProcessTable final : public ProcessTable {
 public:
  explicit LinuxProcessTable(std::string root = "/");

  // Counts by listing; that list is what the next `listPids` hands out.
  std::int32_t processCount() override;
  std::int32_t listPids(std::span<std::int32_t> pids) override;
  std::optional<TaskInfo> taskInfo(std::int32_t pid) override;
  std::string name(std::int32_t pid) override;
  // The path that the process was started by, also after the file was deleted. Empty for threads of the
  // kernel, for what may not be looked at, and for paths of 1024 bytes or more.
  std::string executablePath(std::int32_t pid) override;

 private:
  // What is kept of a process from walk to walk.
  struct Known {
    std::uint64_t startTime = 0;
    std::uint64_t walk = 0;  // the last one that met it
    bool isKernelThread = false;
    bool hasName = false;  // `name` is complete
    bool hasPath = false;  // `path` is what there is to know
    std::string kernelName;
    std::string name;
    std::string path;
  };

  bool openDirectory();
  bool readList();
  void forgetEnded();
  Known* known(std::int32_t pid);
  void learnPath(std::int32_t pid, Known& process);
  void learnName(std::int32_t pid, Known& process);
  std::optional<std::string_view> read(std::int32_t pid, std::string_view file);

  std::string root_;
  std::unique_ptr<DIR, int (*)(DIR*)> directory_;
  std::vector<std::int32_t> pids_;
  bool hasList_ = false;
  std::unordered_map<std::int32_t, Known> known_;
  std::uint64_t walk_ = 0;       // counts the walks
  std::int32_t currentPid_ = 0;  // the one that `taskInfo` answered for last
  Known* current_ = nullptr;
  std::array<char, 4096> buffer_{};
  std::uint64_t ticksPerSecond_;
  std::uint64_t pageBytes_;
};

}  // namespace kestrune::platform
