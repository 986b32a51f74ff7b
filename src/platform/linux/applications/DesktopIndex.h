#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/linux/applications/DesktopEntry.h"

namespace kestrune::platform {

// Where to look for applications. All paths are absolute and are looked up below `root`.
struct ApplicationPlaces {
  std::string root = "/";
  std::vector<std::string> dataDirectories;     // desktop files are in applications/; the first match wins
  std::vector<std::string> programDirectories;  // searched for commands without a path
  std::vector<std::string> localeNames;         // the user's languages, best first
};

// An application described by a desktop file.
struct IndexedApplication {
  std::string id;           // the file's name without its suffix, after those of its folders: "kde4-konsole"
  std::string desktopFile;  // path, including the root
  std::string name;         // in the user's language
  std::string icon;
  bool isTerminal = false;  // a terminal emulator, which runs other programs
};

// The machine's desktop files. `refresh` reads them the first time, and again only if the modification time
// of a folder has changed. Returned pointers stay valid until the next `refresh`. One thread at a time.
class DesktopIndex {
 public:
  explicit DesktopIndex(ApplicationPlaces places);

  // To be called before the lookups.
  void refresh();
  const IndexedApplication* byId(const std::string& id) const;
  // The application whose command starts the program at that path, or another program in the same folder if
  // that folder is the application's own. `isScript`: the path is a script that an interpreter runs.
  const IndexedApplication* byProgram(const std::string& path, bool isScript) const;

 private:
  struct Folder {
    std::string path;
    std::chrono::nanoseconds changed{};  // zero: the folder doesn't exist
  };
  struct Application {
    IndexedApplication shown;
    bool isNoDisplay = false;
    std::size_t arguments = 0;  // number in its command
  };
  using Places = std::unordered_map<std::string, const Application*>;

  bool isCurrent() const;
  void readFolder(const std::string& path, const std::string& idPrefix);
  void addFile(const std::string& path, const std::string& id);
  void addPlaces(Application& application, const DesktopEntry& entry);
  static void put(Places& places, const std::string& key, const Application& application);
  std::string resolved(std::string_view program) const;
  bool isProgramDirectory(std::string_view folder) const;

  ApplicationPlaces places_;
  bool isSettled_ = false;  // no folder was changing while it was read
  std::vector<Folder> folders_;
  std::map<std::string, Application, std::less<>> byId_;
  std::vector<std::string> hidden_;  // ids
  Places byPath_;                    // of the program or the script
  Places byFileName_;                // for programs in a program directory
  Places byFolder_;                  // for programs in a folder of the application's own
};

}  // namespace kestrune::platform
