#pragma once

#include <cstdint>
#include <optional>

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

}  // namespace kestrune
