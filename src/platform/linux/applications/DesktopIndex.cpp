#include "platform/linux/applications/DesktopIndex.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>
#include <optional>
#include <tuple>

#include "platform/linux/files/Directory.h"
#include "platform/linux/files/Files.h"
#include "platform/linux/processes/ProgramName.h"

namespace kestrune::platform {
namespace {

constexpr std::string_view desktopSuffix = ".desktop";
constexpr std::size_t desktopFileLimit = std::size_t{256} << 10U;
// Deeper nesting means that a link leads back up.
constexpr std::size_t maxDepth = 8;
// The coarsest timestamps of common file systems.
constexpr std::chrono::seconds timeGranularity(2);

std::string_view folderOf(std::string_view path) {
  return path.substr(0, path.rfind('/'));
}

// Whether the folder belongs to one application, judged by where packages put such folders.
bool isApplicationFolder(std::string_view folder) {
  constexpr auto parents =
      std::to_array<std::string_view>({"/usr/lib/", "/usr/lib64/", "/usr/libexec/", "/usr/share/",
                                       "/usr/local/lib/", "/usr/local/share/", "/opt/"});
  const bool isBelow = std::ranges::any_of(parents, [&](auto parent) { return folder.starts_with(parent); });
  return isBelow && baseName(folder).find("-linux-gnu") == std::string_view::npos;
}

}  // namespace

DesktopIndex::DesktopIndex(ApplicationPlaces places) : places_(std::move(places)) {}

void DesktopIndex::refresh() {
  if (isCurrent()) return;
  folders_.clear();
  byId_.clear();
  hidden_.clear();
  byPath_.clear();
  byFileName_.clear();
  byFolder_.clear();
  const std::chrono::seconds start(std::time(nullptr));
  for (const std::string& directory : places_.dataDirectories) {
    readFolder(below(places_.root, directory.substr(1)) + "/applications", "");
  }
  // A later change might get the same timestamp as one just seen.
  isSettled_ = std::ranges::none_of(folders_, [&](const Folder& folder) {
    return std::chrono::abs(std::chrono::floor<std::chrono::seconds>(folder.changed) - start) <=
           timeGranularity;
  });
}

bool DesktopIndex::isCurrent() const {
  return isSettled_ && std::ranges::all_of(folders_, [](const Folder& folder) {
           return changeTime(folder.path) == folder.changed;
         });
}

void DesktopIndex::readFolder(const std::string& path, const std::string& idPrefix) {
  folders_.push_back({path, changeTime(path)});
  const bool isTooDeep = std::ranges::count(idPrefix, '-') >= static_cast<std::ptrdiff_t>(maxDepth);
  for (const std::string& name : entryNames(path)) {
    const std::string entry = below(path, name);
    if (name.ends_with(desktopSuffix)) {
      addFile(entry, idPrefix + name.substr(0, name.size() - desktopSuffix.size()));
    } else if (!isTooDeep && isDirectory(entry)) {
      readFolder(entry, std::string(idPrefix).append(name).append("-"));
    }
  }
}

void DesktopIndex::addFile(const std::string& path, const std::string& id) {
  const bool isKnown = byId_.contains(id) || std::ranges::find(hidden_, id) != hidden_.end();
  if (isKnown) return;
  const auto text = readFile(path, desktopFileLimit);
  const auto entry = text ? parseDesktopEntry(*text, places_.localeNames) : std::nullopt;
  if (!entry) return;
  if (entry->isHidden) {
    hidden_.push_back(id);
    return;
  }
  Application& application = byId_[id];
  application.shown = {.id = id,
                       .desktopFile = path,
                       .name = entry->name,
                       .icon = entry->icon,
                       .isTerminal = entry->isTerminal};
  application.isNoDisplay = entry->isNoDisplay;
  addPlaces(application, *entry);
}

// Adds the application under the program that its command starts.
void DesktopIndex::addPlaces(Application& application, const DesktopEntry& entry) {
  std::vector<std::string> arguments = execArguments(entry.exec);
  std::string_view program = programIn(arguments);
  if (program.empty()) {
    arguments = {entry.tryExec};
    program = programIn(arguments);
  }
  application.arguments = arguments.size();
  const std::string path = resolved(program);
  const std::string_view fileName = baseName(program);
  // A link may lead to an interpreter, or to a launcher shared by many applications.
  if (path.empty() || programIn(std::array{path}).empty()) return;
  put(byPath_, path, application);
  const bool isCommon = program == fileName || isProgramDirectory(folderOf(program));
  if (isCommon) put(byFileName_, std::string(fileName), application);
  if (isApplicationFolder(folderOf(path))) put(byFolder_, std::string(folderOf(path)), application);
}

// If several applications start the same program, the most likely to be the program itself wins: listed
// in menus and with the fewest arguments.
void DesktopIndex::put(Places& places, const std::string& key, const Application& application) {
  const auto rank = [](const Application& it) {
    return std::tuple(it.isNoDisplay, it.arguments, std::string_view(it.shown.id));
  };
  const auto [place, isNew] = places.try_emplace(key, &application);
  if (!isNew && rank(application) < rank(*place->second)) place->second = &application;
}

const IndexedApplication* DesktopIndex::byId(const std::string& id) const {
  const auto found = byId_.find(id);
  return found == byId_.end() ? nullptr : &found->second.shown;
}

const IndexedApplication* DesktopIndex::byProgram(const std::string& path, bool isScript) const {
  const auto found = [](const Places& places, std::string_view key) -> const IndexedApplication* {
    const auto place = places.find(std::string(key));
    return place == places.end() ? nullptr : &place->second->shown;
  };
  if (isScript) {
    const std::string real = resolved(path);
    return real.empty() ? nullptr : found(byPath_, real);
  }
  if (const auto* application = found(byPath_, path)) return application;
  if (const auto* application = found(byFileName_, baseName(path))) return application;
  return found(byFolder_, folderOf(path));
}

// The file that a command's name or path leads to, with links resolved and without the root. Empty: there is
// no such file.
std::string DesktopIndex::resolved(std::string_view program) const {
  std::vector<std::string> candidates;
  if (program.starts_with('/')) {
    candidates.emplace_back(program);
  } else if (!program.empty() && program.find('/') == std::string_view::npos) {
    for (const std::string& folder : places_.programDirectories) candidates.push_back(below(folder, program));
  }
  for (const std::string& candidate : candidates) {
    const std::string path = below(places_.root, candidate.substr(1));
    const std::unique_ptr<char, void (*)(void*)> real(realpath(path.c_str(), nullptr), std::free);
    if (!real) continue;
    const std::string_view found(real.get());
    return std::string(places_.root == "/" ? found
                                           : found.substr(std::min(places_.root.size(), found.size())));
  }
  return {};
}

bool DesktopIndex::isProgramDirectory(std::string_view folder) const {
  return std::ranges::find(places_.programDirectories, folder) != places_.programDirectories.end();
}

}  // namespace kestrune::platform
