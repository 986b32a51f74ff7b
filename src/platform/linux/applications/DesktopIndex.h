#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/linux/applications/DesktopEntry.h"

namespace kestrune::platform {

// Where applications are told of. Paths are absolute, and those of the machine below `root`.
struct ApplicationPlaces {
  std::string root = "/";
  std::vector<std::string> dataDirectories;     // whose applications/ have desktop files; the first wins
  std::vector<std::string> programDirectories;  // in which commands without a path are found
  std::vector<std::string> localeNames;         // of the user's languages, the best first
};

// An application that a desktop file describes.
struct IndexedApplication {
  std::string id;           // the file's name without its end, its folders before it: "kde4-konsole"
  std::string desktopFile;  // path, the root included
  std::string name;         // in the user's language
  std::string icon;
  bool isTerminal = false;  // one in which other programs run
};

// The desktop files of the machine. They are read when first asked for, and again when a folder has changed;
// of all else only the folders' times are looked at. What is handed out stays valid until the next `refresh`.
// One thread at a time.
class DesktopIndex {
 public:
  explicit DesktopIndex(ApplicationPlaces places);

  // To be called before the others.
  void refresh();
  const IndexedApplication* byId(const std::string& id) const;
  // The application whose command starts the program at that path, or one beside it in a folder of the
  // application's own. `isScript`: the path is what an interpreter runs.
  const IndexedApplication* byProgram(const std::string& path, bool isScript) const;

 private:
  struct Folder {
    std::string path;
    std::chrono::nanoseconds changed{};  // zero: it isn't there
  };
  struct Application {
    IndexedApplication shown;
    bool isNoDisplay = false;
    std::size_t arguments = 0;  // that its command gives to the program
  };
  using Places = std::unordered_map<std::string, const Application*>;

  bool isCurrent() const;
  void readFolder(const std::string& path, const std::string& idPrefix);
  void addFile(const std::string& path, const std::string& id);
  void enter(Application& application, const DesktopEntry& entry);
  static void put(Places& places, const std::string& key, const Application& application);
  std::string resolved(std::string_view program) const;
  bool isProgramDirectory(std::string_view folder) const;

  ApplicationPlaces places_;
  bool isSettled_ = false;  // nothing was changing while it was read
  std::vector<Folder> folders_;
  std::map<std::string, Application, std::less<>> byId_;
  std::vector<std::string> hidden_;  // ids
  Places byPath_;                    // of the program or the script
  Places byFileName_;                // of a program in one of the common folders
  Places byFolder_;                  // of a program in a folder of its own
};

}  // namespace kestrune::platform
