#pragma once

#include <optional>
#include <string>

namespace kestrune::platform {

// The folder "Kestrune/history" of the user's data. Names have no slash. Main thread.
class HistoryFolder {
 public:
  virtual ~HistoryFolder() = default;
  // The whole file. Absent: it doesn't exist or can't be read.
  virtual std::optional<std::string> read(const std::string& name) = 0;
  // True if there is a file of that name, even an invalid one.
  virtual bool exists(const std::string& name) = 0;
  // Replaces the file, and creates the folder if necessary. At any moment, even after a crash, the file is
  // either the old one or the new one, complete. Returns an error message, or nothing on success.
  virtual std::optional<std::string> write(const std::string& name, const std::string& content) = 0;
};

}  // namespace kestrune::platform
