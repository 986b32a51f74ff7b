#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <optional>
#include <vector>

#include "platform/FileLocation.h"

namespace kestrune {

// One entry of a listed directory.
struct FolderItem {
  platform::FileLocation url;
  // A directory's figures cover its whole tree, and are absent until it is measured.
  std::optional<std::uint64_t> sizeBytes;
  std::optional<std::int64_t> childCount;  // number of files; 0 for a file
  bool isDirectory = false;
};

// The entries of a directory, largest first. An unmeasured entry counts as 0; equal sizes keep their order. A
// copy is a cheap snapshot. The rows are stored in blocks, which snapshots share until one is changed, so a
// change moves one entry without touching the others or any snapshot.
class FolderItems {
 public:
  // The row of an entry when the list was made. Identifies the entry after it has moved.
  using Rank = std::uint32_t;

  class const_iterator {
   public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = FolderItem;
    using difference_type = std::ptrdiff_t;
    using pointer = const FolderItem*;
    using reference = const FolderItem&;

    const_iterator() = default;
    reference operator*() const;
    pointer operator->() const { return &**this; }
    const_iterator& operator++();
    const_iterator operator++(int);
    friend bool operator==(const const_iterator&, const const_iterator&) = default;

   private:
    friend class FolderItems;
    const_iterator(const FolderItems& items, std::size_t block) : items_(&items), block_(block) {}
    const FolderItems* items_ = nullptr;
    std::size_t block_ = 0;
    std::size_t row_ = 0;
  };

  FolderItems() = default;
  // Takes the entries in any order.
  explicit FolderItems(std::vector<FolderItem> listed);

  std::size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }
  // The row must exist. The reference is valid until the list changes.
  const FolderItem& operator[](std::size_t row) const;
  const_iterator begin() const { return {*this, 0}; }
  const_iterator end() const { return {*this, blocks_.size()}; }

  std::size_t directoryCount() const { return directoryCount_; }
  std::size_t measuredDirectoryCount() const { return measuredCount_; }

  // Sets the figures of the directory with this rank and moves it to its place. Does nothing if there is no
  // such directory or it has been measured.
  void setMeasure(Rank rank, std::uint64_t bytes, std::int64_t files);

 private:
  struct Row {
    std::shared_ptr<const FolderItem> item;
    std::uint64_t size = 0;
    std::uint32_t tie = 0;  // among equal sizes the lower one comes first
  };
  using Block = std::vector<Row>;
  struct Position {
    std::size_t block = 0;
    std::size_t row = 0;
  };

  static bool precedes(const Row& a, const Row& b);
  Position lowerBound(const Row& key) const;
  Block& changeable(std::size_t block);
  void insert(Row row);
  void erase(const Position& position);
  void renumberFrom(std::size_t block);

  std::vector<std::shared_ptr<Block>> blocks_;  // none is empty
  std::vector<std::size_t> starts_;             // the first row of each block
  std::size_t size_ = 0;
  std::size_t directoryCount_ = 0;
  std::size_t measuredCount_ = 0;
  std::uint32_t nextTie_ = 0;  // for the next entry that moves behind its equals
};

}  // namespace kestrune
