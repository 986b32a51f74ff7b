#pragma once

#include <string>

#include "platform/LoginItem.h"

namespace kestrune::platform {

// An entry in the user's autostart folder, which sessions start programs from. One that says so itself, as
// the tools of desktops have it say, is off. Where it is on but its command doesn't name this program's file,
// the command is brought up to date at the next look; whatever else the entry says stays.
class LinuxLoginItem final : public LoginItem {
 public:
  // `configDirectory`: the user's folder for settings; empty: there is none. `program`: the path to start.
  LinuxLoginItem(const std::string& configDirectory, std::string program);

  bool isEnabled() override;
  std::optional<std::string> registerItem() override;
  std::optional<std::string> unregisterItem() override;

 private:
  bool canBeStarted() const;
  void bringUpToDate(const std::string& entry);

  std::string path_;
  std::string program_;
};

}  // namespace kestrune::platform
