#pragma once

#include "platform/Workspace.h"

namespace kestrune::desktop {

// Starts the desktop's programs, as far as they are installed. They outlive this program, inherit neither its
// signal settings nor its standard files, and leave no zombie behind.
class DesktopWorkspace final : public platform::Workspace {
 public:
  void openSettings(platform::SettingsPanel panel) override;
  // Both ask the file manager on the session bus, which starts it if need be. Without one, the folder is
  // opened with the program registered for folders.
  void open(const platform::FileLocation& directory) override;
  void reveal(const platform::FileLocation& file) override;
};

}  // namespace kestrune::desktop
