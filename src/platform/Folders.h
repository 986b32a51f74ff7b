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
  std::optional<std::int64_t> size;  // logical bytes; absent: unknown, or not a file
  bool isDirectory = false;
  bool isLink = false;  // a symbolic link, no matter to what
};

// The content of a subtree: its regular files that aren't empty, at any depth, hidden or not.
struct FolderMeasure {
  std::uint64_t bytes = 0;  // logical; the sum saturates
  std::uint64_t files = 0;

  friend bool operator==(const FolderMeasure&, const FolderMeasure&) = default;
};

// Directories and their content. Nothing is changed, and no file is opened.
class Folders {
 public:
  virtual ~Folders() = default;

  // Main thread.
  virtual FileLocation homeDirectory() = 0;
  // Whether the program may read what is at the path. The file that some systems keep behind their permission
  // to see everything is readable wherever the program sees the whole file system. Main thread.
  virtual bool isReadable(const std::string& path) = 0;

  // The entries of one directory, in the file system's order; links aren't followed. Absent: it can't be
  // read. May wait for the device. Any thread but the main one, several at a time.
  virtual std::optional<std::vector<DirectoryEntry>> contents(const FileLocation& folder,
                                                              bool skipsHidden) = 0;

  // Called on the platform's own threads, several at a time.
  using MeasureDone = std::function<void(std::size_t index, const FolderMeasure& measure)>;

  // Measures the folders, several at a time and starting in this order, and calls `done` once for each as it
  // finishes. Once the flag is set, each ends where it is, with what it has found so far. Links aren't
  // followed; packages below a folder and anything unreadable are left out. A folder that waits for a hung
  // device delays no other. Returns at once. Any thread.
  virtual void measure(std::vector<FileLocation> folders, CancellationFlag isCancelled, MeasureDone done) = 0;
};

}  // namespace kestrune::platform
