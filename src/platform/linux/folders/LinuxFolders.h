#pragma once

#include <string>

#include "platform/Folders.h"
#include "platform/ProcessEnvironment.h"
#include "platform/linux/folders/MeasurePool.h"

namespace kestrune::platform {

// The machine's directories. Only the facts about a sandbox are read below `root`.
class LinuxFolders final : public Folders {
 public:
  explicit LinuxFolders(ProcessEnvironment& environment, std::string root = "/");

  // HOME where that is an absolute path, else what the user database says, else the root.
  FileLocation homeDirectory() override;
  bool seesWholeFileSystem() override;
  std::optional<std::vector<DirectoryEntry>> contents(const FileLocation& folder, bool skipsHidden) override;
  void measure(std::vector<FileLocation> folders, CancellationFlag isCancelled, MeasureDone done) override;

 private:
  ProcessEnvironment& environment_;
  std::string root_;
  MeasurePool pool_;
};

}  // namespace kestrune::platform
