#pragma once

#include "platform/DayFileStorage.h"

namespace kestrune::platform {

// Files in Kestrune/history below the folder for the user's data, for the user's eyes only. A file is on the
// disk when its write returns. Only regular files of at most 64 MiB are read, so that no reading waits.
class LinuxDayFiles final : public DayFileStorage {
 public:
  // An empty `dataDirectory`: nothing can be read or written.
  explicit LinuxDayFiles(const std::string& dataDirectory);

  std::optional<std::string> read(const std::string& name) override;
  bool exists(const std::string& name) override;
  std::optional<std::string> write(const std::string& name, const std::string& content) override;

 private:
  std::string folder_;  // empty: there is none
};

}  // namespace kestrune::platform
