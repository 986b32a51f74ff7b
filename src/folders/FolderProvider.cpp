#include "folders/FolderProvider.h"

#include <algorithm>
#include <utility>

namespace kestrune {
namespace {

using platform::FileLocation;

constexpr int maxBreadcrumbs = 8;

FolderItem itemOf(platform::DirectoryEntry entry) {
  FolderItem item{.url = std::move(entry.location), .isDirectory = entry.isDirectory};
  if (item.isDirectory) return item;
  item.sizeBytes = static_cast<std::uint64_t>(std::max<std::int64_t>(entry.size.value_or(0), 0));
  item.childCount = 0;
  return item;
}

}  // namespace

FolderProvider::FolderProvider(MainLoop& loop, const Services& services)
    : currentPath(services.folders.homeDirectory()),
      loop_(loop),
      services_(services),
      home_(currentPath.get()) {
  breadcrumbs.set({home_});
  checkFullDiskAccess();
}

FolderProvider::~FolderProvider() {
  if (scanTask.get()) scanTask.get()->cancel();
}

void FolderProvider::checkFullDiskAccess() {
  hasFullDiskAccess.set(services_.folders.seesWholeFileSystem());
}

void FolderProvider::scan() {
  if (scanTask.get()) scanTask.get()->cancel();
  isScanning.set(true);
  isComputingSizes.set(false);
  items.set({});
  const Scan scan{.folder = *currentPath, .showHidden = *showHidden, .number = ++scanNumber_};
  scanTask.set(run(loop_, weak_from_this(), services_, scan));
}

void FolderProvider::goUp() {
  FileLocation parent = currentPath->parent();
  if (parent == *currentPath) return;
  currentPath.set(std::move(parent));
  updateBreadcrumbs();
  scan();
}

void FolderProvider::updateBreadcrumbs() {
  std::vector<FileLocation> trail;
  FileLocation cursor = *currentPath;
  for (int level = 0; level < maxBreadcrumbs; ++level) {
    trail.push_back(cursor);
    FileLocation parent = cursor.parent();
    if (parent == cursor || cursor == home_) break;
    cursor = std::move(parent);
  }
  std::ranges::reverse(trail);
  breadcrumbs.set(std::move(trail));
}

// Runs in the lane, so that a hung device or the sorting of a large list never blocks the window.
std::optional<FolderProvider::Listing> FolderProvider::list(platform::Folders& folders, const Scan& scan,
                                                            const CancellationFlag& flag) {
  if (flag->load()) return Listing{};
  auto entries = folders.contents(scan.folder, !scan.showHidden);
  if (!entries) return std::nullopt;
  std::vector<FolderItem> listed;
  listed.reserve(entries->size());
  for (auto& entry : *entries) {
    if (flag->load()) break;
    if (!entry.isLink) listed.push_back(itemOf(std::move(entry)));
  }
  Listing listing{.items = FolderItems(std::move(listed)), .directories = {}, .ranks = {}};
  FolderItems::Rank rank = 0;
  for (const FolderItem& item : listing.items) {
    if (item.isDirectory) {
      listing.directories.push_back(item.url);
      listing.ranks.push_back(rank);
    }
    ++rank;
  }
  return listing;
}

Task FolderProvider::run(MainLoop& loop, std::weak_ptr<FolderProvider> provider, Services services,
                         Scan scan) {
  if (provider.expired()) co_return;
  const CancellationFlag flag = co_await cancellationFlag();
  const auto work = [&folders = services.folders, scan, flag] { return list(folders, scan, flag); };
  std::optional<Listing> listing = co_await background(services.lane, work);
  if (const auto strong = provider.lock(); !strong || !strong->showListing(listing, scan)) co_return;
  if (!listing || flag->load() || listing->directories.empty()) co_return;

  if (const auto strong = provider.lock()) strong->isComputingSizes.set(true);
  const std::size_t expected = listing->directories.size();
  const auto arrivals = std::make_shared<Arrivals<Measured>>(loop);
  measure(services.folders, *std::move(listing), flag, arrivals);
  for (std::size_t received = 0; received < expected;) {
    const std::vector<Measured> measures = co_await arrivals->take();
    received += measures.size();
    const auto strong = provider.lock();
    if (strong && !flag->load()) strong->showMeasures(measures);
  }
  if (const auto strong = provider.lock()) strong->isComputingSizes.set(false);
}

void FolderProvider::measure(platform::Folders& folders, Listing listing, const CancellationFlag& flag,
                             std::shared_ptr<Arrivals<Measured>> arrivals) {
  auto done = [arrivals = std::move(arrivals), ranks = std::move(listing.ranks)](
                  std::size_t index, const platform::FolderMeasure& measure) {
    arrivals->add({ranks[index], measure});
  };
  folders.measure(std::move(listing.directories), flag, std::move(done));
}

// False: a newer scan has started, and the list is its own.
bool FolderProvider::showListing(const std::optional<Listing>& listing, const Scan& scan) {
  if (scan.number != scanNumber_) return false;
  if (listing) items.set(listing->items);
  isScanning.set(false);
  return true;
}

void FolderProvider::showMeasures(const std::vector<Measured>& measures) {
  items.modify([&](FolderItems& list) {
    for (const auto& [rank, measure] : measures) {
      list.setMeasure(rank, measure.bytes, static_cast<std::int64_t>(measure.files));
    }
  });
}

}  // namespace kestrune
