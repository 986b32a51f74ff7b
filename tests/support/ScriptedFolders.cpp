#include "support/ScriptedFolders.h"

#include <algorithm>
#include <utility>

namespace kestrune::test {

using platform::FileLocation;

void ScriptedFolders::add(platform::DirectoryEntry entry) {
  directories[entry.location.parent().path()].push_back(std::move(entry));
}

void ScriptedFolders::addFile(const std::string& path, std::optional<std::int64_t> size) {
  add({.location = FileLocation(path), .size = size});
}

void ScriptedFolders::addDirectory(const std::string& path) {
  add({.location = FileLocation(path), .size = {}, .isDirectory = true});
  directories.try_emplace(path);
}

void ScriptedFolders::addLink(const std::string& path, bool toDirectory) {
  add({.location = FileLocation(path), .size = 7, .isDirectory = toDirectory, .isLink = true});
}

std::vector<std::string> ScriptedFolders::pendingPaths() const {
  std::vector<std::string> paths;
  paths.reserve(pending.size());
  for (const auto& measure : pending) paths.push_back(measure.folder.path());
  return paths;
}

bool ScriptedFolders::complete(const std::string& path, const platform::FolderMeasure& measure) {
  const auto found = std::ranges::find(pending, FileLocation(path), &Pending::folder);
  if (found == pending.end()) return false;
  const auto done = std::move(found->done);
  pending.erase(found);
  done(measure);
  return true;
}

std::size_t ScriptedFolders::endCancelled() {
  const auto unwanted = std::ranges::stable_partition(
      pending, [](const Pending& measure) { return !measure.isCancelled->load(); });
  const std::vector<Pending> ended(std::make_move_iterator(unwanted.begin()),
                                   std::make_move_iterator(unwanted.end()));
  pending.erase(unwanted.begin(), unwanted.end());
  for (const auto& measure : ended) measure.done({});
  return ended.size();
}

std::optional<std::vector<platform::DirectoryEntry>> ScriptedFolders::contents(const FileLocation& folder,
                                                                               bool skipsHidden) {
  ++listings;
  const auto found = directories.find(folder.path());
  if (found == directories.end()) return std::nullopt;
  auto entries = found->second;
  if (skipsHidden) {
    std::erase_if(entries, [](const auto& entry) { return entry.location.name().starts_with('.'); });
  }
  return entries;
}

void ScriptedFolders::measure(std::vector<FileLocation> folders, CancellationFlag isCancelled,
                              MeasureDone done) {
  for (std::size_t i = 0; i < folders.size(); ++i) {
    pending.push_back(
        {folders[i], isCancelled, [done, i](const platform::FolderMeasure& measure) { done(i, measure); }});
  }
}

}  // namespace kestrune::test
