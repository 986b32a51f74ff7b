#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/FileLocation.h"
#include "runtime/Cancellation.h"

namespace kestrune::platform {

struct DirectoryEntry {
  FileLocation location;
  std::optional<std::int64_t> size;  // logical bytes; absent: unknown, or no file
  bool isDirectory = false;
  bool isLink = false;  // a symbolic link, whatever it leads to
};

// What a subtree holds: the regular files with content in it, at any depth, hidden or not.
struct FolderMeasure {
  std::uint64_t bytes = 0;  // logical; a sum beyond the largest number stays at that
  std::uint64_t files = 0;

  friend bool operator==(const FolderMeasure&, const FolderMeasure&) = default;
};

// Directories and what they hold. Nothing is changed, and no file is opened.
class Folders {
 public:
  virtual ~Folders() = default;

  // Main thread.
  virtual FileLocation homeDirectory() = 0;
  // Whether the program sees the machine's whole file system: no sandbox hides a part of it. Main thread.
  virtual bool seesWholeFileSystem() = 0;

  // The entries of one directory, in the file system's order; nothing in them is followed. Absent: it can't
  // be read. May wait for the device. Any thread but the main one, several at a time.
  virtual std::optional<std::vector<DirectoryEntry>> contents(const FileLocation& folder,
                                                              bool skipsHidden) = 0;

  // Takes the index of the folder. Called on threads of the platform's own, several at a time.
  using MeasureDone = std::function<void(std::size_t index, const FolderMeasure& measure)>;

  // Measures each of the folders, beginning in this order, several at a time, and calls `done` once for each
  // as it is finished. Once the flag is set they end where they are, with what they have found so far. What
  // can't be read is left out in silence. Links aren't followed, and packages below a folder are left out
  // whole. One that waits for a device without end holds up itself alone. Returns at once. Any thread.
  virtual void measure(std::vector<FileLocation> folders, CancellationFlag isCancelled, MeasureDone done) = 0;
};

}  // namespace kestrune::platform
