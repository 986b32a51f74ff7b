#pragma once

#include <optional>
#include <string>

namespace kestrune::platform {

// Finds the name of a Wi-Fi network by running the command-line tools that report it, where they are
// installed below `root`. They are looked for once, when this is made. Any thread; several at a time.
class NetworkNameTools {
 public:
  explicit NetworkNameTools(const std::string& root);

  // The first name that a tool reports: for the interface, for en0, for en1, or for the radio. UTF-8. Waits
  // for the tools without a timeout. Absent: no tool is installed, or none reports a name.
  std::optional<std::string> find(const std::string& interfaceName) const;

 private:
  // Paths; empty if the tool isn't installed.
  std::string networkSetup_;
  std::string airport_;
};

}  // namespace kestrune::platform
