#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "platform/FileLocation.h"
#include "runtime/Cancellation.h"

namespace kestrune::platform {

struct DirectoryEntry {
  FileLocation location;
  std::optional<std::int64_t> size;  // logical bytes; absent: unknown, or not a regular file
  bool isDirectory = false;
  bool isLink = false;  // a symbolic link, to anything
};

// The size of a subtree: its regular files that aren't empty, at any depth, hidden ones included.
struct FolderMeasure {
  std::uint64_t bytes = 0;  // logical; the sum saturates
  std::uint64_t files = 0;

  friend bool operator==(const FolderMeasure&, const FolderMeasure&) = default;
};

// Lists and measures directories. Changes nothing and opens no file.
class Folders {
 public:
  virtual ~Folders() = default;

  // Main thread.
  virtual FileLocation homeDirectory() = 0;
  // Whether the program sees the machine's whole file system: no sandbox hides a part of it. Main thread.
  virtual bool seesWholeFileSystem() = 0;

  // The entries of one directory, in the file system's order; links are not followed. Absent: the directory
  // can't be read. May wait for the device. Any thread but the main one, several at a time.
  virtual std::optional<std::vector<DirectoryEntry>> contents(const FileLocation& folder,
                                                              bool skipsHidden) = 0;

  // Gets the index of the folder. Called on the platform's own threads, several at a time.
  using MeasureDone = std::function<void(std::size_t index, const FolderMeasure& measure)>;

  // Measures the folders, starting them in this order, several at a time, and calls `done` once for each when
  // it is finished. Once the flag is set, measures stop and report what they have found so far. What can't be
  // read is silently left out. Links aren't followed, and packages inside a folder don't count. A device that
  // hangs delays only the folders on it. Returns at once. Any thread.
  virtual void measure(std::vector<FileLocation> folders, CancellationFlag isCancelled, MeasureDone done) = 0;
};

}  // namespace kestrune::platform
