#include "folders/FolderItems.h"

#include <algorithm>
#include <utility>

namespace kestrune {
namespace {

constexpr std::size_t blockRows = 512;

std::uint64_t sizeOf(const FolderItem& item) {
  return item.sizeBytes.value_or(0);
}

}  // namespace

FolderItems::const_iterator::reference FolderItems::const_iterator::operator*() const {
  return *(*items_->blocks_[block_])[row_].item;
}

FolderItems::const_iterator& FolderItems::const_iterator::operator++() {
  if (++row_ == items_->blocks_[block_]->size()) {
    ++block_;
    row_ = 0;
  }
  return *this;
}

FolderItems::const_iterator FolderItems::const_iterator::operator++(int) {
  const const_iterator before = *this;
  ++*this;
  return before;
}

FolderItems::FolderItems(std::vector<FolderItem> listed) : size_(listed.size()) {
  std::ranges::stable_sort(listed, std::greater(), sizeOf);
  for (FolderItem& item : listed) {
    if (nextTie_ % blockRows == 0) {
      starts_.push_back(nextTie_);
      blocks_.push_back(std::make_shared<Block>());
      blocks_.back()->reserve(blockRows);
    }
    directoryCount_ += item.isDirectory ? 1 : 0;
    measuredCount_ += item.isDirectory && item.sizeBytes ? 1 : 0;
    const std::uint64_t size = sizeOf(item);
    blocks_.back()->push_back({std::make_shared<const FolderItem>(std::move(item)), size, nextTie_++});
  }
}

const FolderItem& FolderItems::operator[](std::size_t row) const {
  const auto after = std::ranges::upper_bound(starts_, row);
  const auto block = static_cast<std::size_t>(after - starts_.begin()) - 1;
  return *(*blocks_[block])[row - starts_[block]].item;
}

// An unmeasured directory has size 0, and its tie is still its rank. If it is empty it stays where it is;
// otherwise it goes behind all entries of its size, where a stable sort would put it.
void FolderItems::setMeasure(Rank rank, std::uint64_t bytes, std::int64_t files) {
  const Row key{.item = nullptr, .size = 0, .tie = rank};
  const Position position = lowerBound(key);
  if (position.block == blocks_.size()) return;
  const Row& old = (*blocks_[position.block])[position.row];
  if (old.size != 0 || old.tie != rank || !old.item->isDirectory || old.item->sizeBytes) return;

  FolderItem item = *old.item;
  item.sizeBytes = bytes;
  item.childCount = files;
  ++measuredCount_;
  const auto measured = std::make_shared<const FolderItem>(std::move(item));
  if (bytes == 0) {
    changeable(position.block)[position.row].item = measured;
    return;
  }
  erase(position);
  insert({measured, bytes, nextTie_++});
}

bool FolderItems::precedes(const Row& a, const Row& b) {
  return a.size != b.size ? a.size > b.size : a.tie < b.tie;
}

// The first row that doesn't precede the key.
FolderItems::Position FolderItems::lowerBound(const Row& key) const {
  const auto block =
      std::ranges::partition_point(blocks_, [&](const auto& rows) { return precedes(rows->back(), key); });
  Position position{.block = static_cast<std::size_t>(block - blocks_.begin())};
  if (block != blocks_.end()) {
    const auto row = std::ranges::lower_bound(**block, key, precedes);
    position.row = static_cast<std::size_t>(row - (*block)->begin());
  }
  return position;
}

FolderItems::Block& FolderItems::changeable(std::size_t block) {
  auto& rows = blocks_[block];
  if (rows.use_count() > 1) rows = std::make_shared<Block>(*rows);
  return *rows;
}

void FolderItems::insert(Row row) {
  Position position = lowerBound(row);
  if (blocks_.empty()) blocks_.push_back(std::make_shared<Block>());
  if (position.block == blocks_.size()) position = {blocks_.size() - 1, blocks_.back()->size()};
  Block& rows = changeable(position.block);
  rows.insert(rows.begin() + static_cast<std::ptrdiff_t>(position.row), std::move(row));
  if (rows.size() > 2 * blockRows) {
    const auto middle = rows.begin() + static_cast<std::ptrdiff_t>(blockRows);
    auto upper =
        std::make_shared<Block>(std::make_move_iterator(middle), std::make_move_iterator(rows.end()));
    rows.erase(middle, rows.end());
    blocks_.insert(blocks_.begin() + static_cast<std::ptrdiff_t>(position.block) + 1, std::move(upper));
  }
  ++size_;
  renumberFrom(position.block);
}

void FolderItems::erase(const Position& position) {
  Block& rows = changeable(position.block);
  rows.erase(rows.begin() + static_cast<std::ptrdiff_t>(position.row));
  if (rows.empty()) blocks_.erase(blocks_.begin() + static_cast<std::ptrdiff_t>(position.block));
  --size_;
  renumberFrom(position.block);
}

void FolderItems::renumberFrom(std::size_t block) {
  starts_.resize(blocks_.size());
  for (; block < blocks_.size(); ++block) {
    starts_[block] = block == 0 ? 0 : starts_[block - 1] + blocks_[block - 1]->size();
  }
}

}  // namespace kestrune
