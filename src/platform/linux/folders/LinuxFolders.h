#pragma once

#include <string>

#include "platform/Folders.h"
#include "platform/ProcessEnvironment.h"
#include "platform/linux/folders/MeasurePool.h"

namespace kestrune::platform {

// The machine's directories. `root` applies to the detection of sandboxes only.
class LinuxFolders final : public Folders {
 public:
  explicit LinuxFolders(ProcessEnvironment& environment, std::string root = "/");

  // HOME if that is an absolute path, else the user database's entry, else the root.
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
