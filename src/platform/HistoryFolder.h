#pragma once

#include <optional>
#include <string>

namespace kestrune::platform {

// The folder "Kestrune/history" of the user's data. Names have no slash. Main thread.
class HistoryFolder {
 public:
  virtual ~HistoryFolder() = default;
  // The whole file. Absent: there is none, or it can't be read.
  virtual std::optional<std::string> read(const std::string& name) = 0;
  // Whether there is a file of that name, whatever is in it.
  virtual bool exists(const std::string& name) = 0;
  // Makes the folder if it isn't there, and puts the content in the place of the file. At any moment,
  // whatever happens, the file is the old one or the new one, whole. Yields what went wrong, in words, or
  // nothing.
  virtual std::optional<std::string> write(const std::string& name, const std::string& content) = 0;
};

}  // namespace kestrune::platform
