#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "runtime/Utf8.h"

namespace kestrune::platform {

// Where a file is: an absolute path in the file system's own bytes, of any length and in any encoding. It is
// never resolved: links and dots in it stay.
class FileLocation {
 public:
  FileLocation() = default;  // the root
  // Drops trailing slashes.
  explicit FileLocation(std::string path) : path_(std::move(path)) {
    path_.erase(path_.find_last_not_of('/') + 1);  // npos + 1 is 0
    if (path_.empty()) path_.push_back('/');
  }

  const std::string& path() const { return path_; }

  // The last component; "/" for the root.
  std::string_view name() const {
    const std::string_view path(path_);
    return isRoot() ? path : path.substr(path.rfind('/') + 1);
  }

  // The name as text, with U+FFFD for invalid UTF-8 and for control characters.
  std::string shownName() const {
    std::string visible;
    for (const char c : name()) {
      const bool isControl = (c >= 0 && c < ' ') || c == '\x7F';
      visible += isControl ? '\xFF' : c;
    }
    return repairedUtf8(visible);
  }

  // The root is its own parent.
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
