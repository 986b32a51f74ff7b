#pragma once

#include "platform/HistoryFolder.h"

namespace kestrune::platform {

// Files in Kestrune/history in the user's data folder that only the user can read. A file is on the disk when
// its write returns. Only regular files of at most 64 MiB are read, so that reading never blocks.
class LinuxHistoryFolder final : public HistoryFolder {
 public:
  // If `dataDirectory` is empty, nothing can be read or written.
  explicit LinuxHistoryFolder(const std::string& dataDirectory);

  std::optional<std::string> read(const std::string& name) override;
  bool exists(const std::string& name) override;
  std::optional<std::string> write(const std::string& name, const std::string& content) override;

 private:
  std::string folder_;  // empty: none
};

}  // namespace kestrune::platform
