#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "folders/FolderItems.h"
#include "platform/Folders.h"
#include "runtime/Arrivals.h"
#include "runtime/Published.h"
#include "runtime/Task.h"
#include "runtime/WorkLane.h"

namespace kestrune {

// Shows one directory at a time: first its entries with the sizes of the files, then the sizes of its
// directories as they are measured, always sorted by size. Works on request only. A failure shows only as an
// empty or short list. To go to a directory, set `currentPath`, then call `updateBreadcrumbs` and `scan`.
// Main thread only.
class FolderProvider : public std::enable_shared_from_this<FolderProvider> {
 public:
  struct Services {
    platform::Folders& folders;  // shared with the lane
    WorkLane& lane;              // for listings, which may take long
  };

  // Starts at the home directory; scans nothing. Loop and services must outlive the provider and the lane's
  // work.
  FolderProvider(MainLoop& loop, const Services& services);
  // Cancels the scan.
  ~FolderProvider();
  FolderProvider(const FolderProvider&) = delete;
  FolderProvider& operator=(const FolderProvider&) = delete;

  // Checks again whether the program sees all files.
  void checkFullDiskAccess();
  // Cancels the scan that is running, lists `currentPath` and measures the directories in it. A cancelled
  // scan finishes once its measurements have stopped. It then clears `isComputingSizes`, even if a newer scan
  // is running, and changes nothing else.
  void scan();
  // Goes to the parent and scans it. Does nothing at the root.
  void goUp();
  // Sets `breadcrumbs` to the path from the home directory, or from the root, to `currentPath`; at most the 8
  // deepest levels.
  void updateBreadcrumbs();

  Published<platform::FileLocation> currentPath;
  Published<FolderItems> items;
  Published<bool> isScanning{false};        // listing
  Published<bool> isComputingSizes{false};  // measuring
  Published<std::vector<platform::FileLocation>> breadcrumbs;
  Published<bool> hasFullDiskAccess;
  Published<bool> showHidden{false};
  Published<std::optional<Task>> scanTask;

  const platform::FileLocation& homeDirectory() const { return home_; }
  // The number of the latest scan; each scan has its own.
  std::uint64_t scanNumber() const { return scanNumber_; }

 private:
  struct Scan {
    platform::FileLocation folder;
    bool showHidden = false;
    std::uint64_t number = 0;
  };
  struct Listing {
    FolderItems items;
    // The directories among the items, in the same order, and their ranks.
    std::vector<platform::FileLocation> directories;
    std::vector<FolderItems::Rank> ranks;
  };
  struct Measured {
    FolderItems::Rank rank = 0;
    platform::FolderMeasure measure;
  };

  static std::optional<Listing> list(platform::Folders& folders, const Scan& scan,
                                     const CancellationFlag& flag);
  static Task run(MainLoop& loop, std::weak_ptr<FolderProvider> provider, Services services, Scan scan);
  static void measure(platform::Folders& folders, Listing listing, const CancellationFlag& flag,
                      std::shared_ptr<Arrivals<Measured>> arrivals);
  bool showListing(const std::optional<Listing>& listing, const Scan& scan);
  void showMeasures(const std::vector<Measured>& measures);

  MainLoop& loop_;
  Services services_;
  platform::FileLocation home_;
  std::uint64_t scanNumber_ = 0;  // of the latest scan
};

}  // namespace kestrune
