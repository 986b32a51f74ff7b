#pragma once

#include <cstdint>
#include <optional>

#include "platform/FileLocation.h"

namespace kestrune {

// One entry of a listed directory.
struct FolderItem {
  platform::FileLocation url;
  std::optional<std::uint64_t> sizeBytes;  // of a directory its whole tree; absent: not measured yet
  std::optional<std::int64_t>
      childCount;  // files in a directory's tree; of a file 0; absent: not measured yet
  bool isDirectory = false;
};

}  // namespace kestrune
