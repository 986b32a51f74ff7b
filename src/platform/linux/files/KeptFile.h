#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/files/UniqueFd.h"

namespace kestrune::platform {

// A file of the kernel that is read repeatedly. It stays open, and every read starts at its beginning. One
// thread.
class KeptFile {
 public:
  explicit KeptFile(std::string path) : path_(std::move(path)) {}

  // The whole text as it is now, up to 4 MiB, valid until the next call. Absent: it can't be read. If a read
  // fails the file is opened again, as its device may have been replaced.
  std::optional<std::string_view> read();
  const std::string& path() const { return path_; }

 private:
  std::optional<std::string_view> readOnce();

  std::string path_;
  UniqueFd file_;
  std::vector<char> buffer_;
};

}  // namespace kestrune::platform
