#pragma once

#include <string>

#include "platform/LoginItem.h"

namespace kestrune::platform {

// An entry in the user's autostart folder, from which sessions start programs. An entry with Hidden=true or
// X-GNOME-Autostart-enabled=false counts as off. If the entry is on but its command doesn't name this
// program's file, `isEnabled` updates the command and leaves the rest of the entry as it is.
class LinuxLoginItem final : public LoginItem {
 public:
  // `configDirectory`: the user's folder for settings, empty if unknown. `program`: the path to start.
  LinuxLoginItem(const std::string& configDirectory, std::string program);

  bool isEnabled() override;
  std::optional<std::string> registerItem() override;
  std::optional<std::string> unregisterItem() override;

 private:
  bool canBeStarted() const;
  void updateCommand(const std::string& entry);

  std::string path_;
  std::string program_;
};

}  // namespace kestrune::platform
