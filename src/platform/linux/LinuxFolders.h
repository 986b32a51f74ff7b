#pragma once

#include <string>

#include "platform/Folders.h"
#include "platform/ProcessEnvironment.h"
#include "platform/linux/MeasurePool.h"

namespace kestrune::linux_platform {

// The machine's directories. Only the facts about a sandbox are read below `root`.
class LinuxFolders final : public platform::Folders {
 public:
  explicit LinuxFolders(platform::ProcessEnvironment& environment, std::string root = "/");

  // HOME where that is an absolute path, else what the user database says, else the root.
  platform::FileLocation homeDirectory() override;
  bool isReadable(const std::string& path) override;
  std::optional<std::vector<platform::DirectoryEntry>> contents(const platform::FileLocation& folder,
                                                                bool skipsHidden) override;
  void measure(std::vector<platform::FileLocation> folders, CancellationFlag isCancelled,
               MeasureDone done) override;

 private:
  platform::ProcessEnvironment& environment_;
  std::string root_;
  MeasurePool pool_;
};

}  // namespace kestrune::linux_platform
