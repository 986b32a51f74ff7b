#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/Folders.h"

namespace kestrune::test {

// Directories that a test defines, and measurements that the test completes.
class ScriptedFolders final : public platform::Folders {
 public:
  // A measurement without a result yet.
  struct Pending {
    platform::FileLocation folder;
    CancellationFlag isCancelled;
    std::function<void(const platform::FolderMeasure& measure)> done;
  };

  std::string home = "/home/test";
  bool seesEverything = true;
  std::map<std::string, std::vector<platform::DirectoryEntry>> directories;  // others can't be read
  std::vector<Pending> pending;                                              // in the order of the requests
  int listings = 0;

  // These also create the parent directory if it is missing.
  void addFile(const std::string& path, std::optional<std::int64_t> size);
  void addDirectory(const std::string& path);
  void addLink(const std::string& path, bool toDirectory);

  std::vector<std::string> pendingPaths() const;
  // Completes a measurement. False if none is pending for the folder.
  bool complete(const std::string& path, const platform::FolderMeasure& measure);
  // Completes all cancelled measurements with zeros, as they do by themselves. Returns their number.
  std::size_t endCancelled();

  platform::FileLocation homeDirectory() override { return platform::FileLocation(home); }
  bool seesWholeFileSystem() override { return seesEverything; }
  std::optional<std::vector<platform::DirectoryEntry>> contents(const platform::FileLocation& folder,
                                                                bool skipsHidden) override;
  void measure(std::vector<platform::FileLocation> folders, CancellationFlag isCancelled,
               MeasureDone done) override;

 private:
  void add(platform::DirectoryEntry entry);
};

}  // namespace kestrune::test
