#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "folders/FolderItem.h"
#include "folders/FolderItems.h"
#include "platform/Folders.h"
#include "runtime/Arrivals.h"
#include "runtime/Published.h"
#include "runtime/Task.h"
#include "runtime/WorkLane.h"

namespace kestrune {

// Shows one directory at a time: first its entries with the files' sizes, then the sizes of the directories
// in it as they are measured, largest first at any moment. It works on request only. No failure shows but as
// an empty or a short list. To go to a directory set `currentPath`, then call `updateBreadcrumbs` and `scan`.
// Main thread only.
class FolderProvider : public std::enable_shared_from_this<FolderProvider> {
 public:
  struct Services {
    platform::Folders& folders;  // shared with the lane
    WorkLane& lane;              // for listings, which may take long
  };

  // Begins at home, and scans nothing. Loop and services must outlive the provider and the lane's work.
  FolderProvider(MainLoop& loop, const Services& services);
  // Ends the scan.
  ~FolderProvider();
  FolderProvider(const FolderProvider&) = delete;
  FolderProvider& operator=(const FolderProvider&) = delete;

  // Asks anew whether the program sees all files.
  void checkFullDiskAccess();
  // Lists `currentPath` and measures the directories in it, instead of what is under way. One that is called
  // off ends as soon as its measures have stopped, and then clears `isComputingSizes` whatever a newer one is
  // at; otherwise it touches nothing any more.
  void scan();
  // Goes to the parent and scans it; at the root nothing happens.
  void goUp();
  // Makes `breadcrumbs` the way from home, or from the root, to `currentPath`, of which at most the 8
  // deepest.
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
  // Of the latest scan; another one for each.
  std::uint64_t scanNumber() const { return scanNumber_; }

 private:
  struct Scan {
    platform::FileLocation folder;
    bool showHidden = false;
    std::uint64_t number = 0;
  };
  struct Listing {
    FolderItems items;
    // The directories in it, in its order, and their ranks.
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
