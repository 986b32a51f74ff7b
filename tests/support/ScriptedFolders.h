#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/Folders.h"

namespace kestrune::test {

// Directories that a test makes up, and measures that end when it says so.
class ScriptedFolders final : public platform::Folders {
 public:
  // A measure that has been asked for, and has no result yet.
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

  // Make the directory above too, if it isn't there.
  void addFile(const std::string& path, std::optional<std::int64_t> size);
  void addDirectory(const std::string& path);
  void addLink(const std::string& path, bool toDirectory);

  // The paths of the pending measures.
  std::vector<std::string> pendingPaths() const;
  // Ends a measure. False: none is pending for that folder.
  bool complete(const std::string& path, const platform::FolderMeasure& measure);
  // Ends all that are no longer wanted, with nothing, as they do by themselves; says how many they were.
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
