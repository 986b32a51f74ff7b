#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "runtime/Utf8.h"

namespace kestrune::platform {

// Where a file is: an absolute path of bytes as the file system has them, of any length, in any encoding or
// none. It is never resolved: links and dots in it stay.
class FileLocation {
 public:
  FileLocation() = default;  // the root
  // Slashes at the end are dropped.
  explicit FileLocation(std::string path) : path_(std::move(path)) {
    path_.erase(path_.find_last_not_of('/') + 1);  // npos + 1 is 0
    if (path_.empty()) path_.push_back('/');
  }

  const std::string& path() const { return path_; }

  // The last component; of the root "/".
  std::string_view name() const {
    const std::string_view path(path_);
    return isRoot() ? path : path.substr(path.rfind('/') + 1);
  }

  // The name as text: what is no UTF-8, and what would break a line, shows as U+FFFD.
  std::string shownName() const {
    std::string visible;
    for (const char c : name()) {
      const bool isControl = (c >= 0 && c < ' ') || c == '\x7F';
      visible += isControl ? '\xFF' : c;
    }
    return repairedUtf8(visible);
  }

  // Of the root the root itself.
  FileLocation parent() const {
    const auto slash = path_.rfind('/');
    return slash == std::string::npos ? FileLocation() : FileLocation(path_.substr(0, slash));
  }

  FileLocation child(std::string_view name) const {
    FileLocation location;
    location.path_.reserve(path_.size() + 1 + name.size());
    if (!isRoot()) (location.path_ = path_) += '/';
    location.path_ += name;
    return location;
  }

  friend bool operator==(const FileLocation&, const FileLocation&) = default;

 private:
  bool isRoot() const { return path_.size() == 1; }

  std::string path_ = "/";
};

}  // namespace kestrune::platform
