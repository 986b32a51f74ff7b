#pragma once

#include <algorithm>
#include <map>
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
  void addFile(const std::string& path, std::optional<std::int64_t> size) {
    add({.location = platform::FileLocation(path), .size = size});
  }
  void addDirectory(const std::string& path) {
    add({.location = platform::FileLocation(path), .size = {}, .isDirectory = true});
    directories.try_emplace(path);
  }
  void addLink(const std::string& path, bool toDirectory) {
    add({.location = platform::FileLocation(path), .size = 7, .isDirectory = toDirectory, .isLink = true});
  }

  std::vector<std::string> pendingPaths() const {
    std::vector<std::string> paths;
    for (const auto& measure : pending) paths.emplace_back(measure.folder.path());
    return paths;
  }
  // Completes a measurement. False if none is pending for the folder.
  bool complete(const std::string& path, const platform::FolderMeasure& measure) {
    const auto found = std::ranges::find(pending, platform::FileLocation(path), &Pending::folder);
    if (found == pending.end()) return false;
    const auto done = std::move(found->done);
    pending.erase(found);
    done(measure);
    return true;
  }
  // Completes all cancelled measurements with zeros, as they do by themselves. Returns their number.
  std::size_t endCancelled() {
    std::vector<Pending> ended;
    for (auto& measure : std::exchange(pending, {})) {
      (measure.isCancelled->load() ? ended : pending).push_back(std::move(measure));
    }
    for (const auto& measure : ended) measure.done({});
    return ended.size();
  }

  platform::FileLocation homeDirectory() override { return platform::FileLocation(home); }
  bool seesWholeFileSystem() override { return seesEverything; }
  std::optional<std::vector<platform::DirectoryEntry>> contents(const platform::FileLocation& folder,
                                                                bool skipsHidden) override {
    ++listings;
    const auto found = directories.find(folder.path());
    if (found == directories.end()) return std::nullopt;
    auto entries = found->second;
    if (skipsHidden) {
      std::erase_if(entries, [](const auto& entry) { return entry.location.name().starts_with('.'); });
    }
    return entries;
  }
  void measure(std::vector<platform::FileLocation> folders, CancellationFlag isCancelled,
               MeasureDone done) override {
    for (std::size_t i = 0; i < folders.size(); ++i) {
      pending.push_back({folders[i], isCancelled, [done, i](const auto& measure) { done(i, measure); }});
    }
  }

 private:
  void add(platform::DirectoryEntry entry) {
    directories[entry.location.parent().path()].push_back(std::move(entry));
  }
};

}  // namespace kestrune::test
