#pragma once

#include <cstdint>

#include "platform/FileLocation.h"

namespace kestrune::platform {

// A page of the desktop's settings.
enum class SettingsPanel : std::uint8_t {
  notifications,
  location,    // which programs may learn where the machine is
  fileAccess,  // which files programs may read
};

// What the desktop does on behalf of a program. No call waits. Main thread.
class Workspace {
 public:
  virtual ~Workspace() = default;
  // Shows the panel; does nothing if the desktop has no such panel.
  virtual void openSettings(SettingsPanel panel) = 0;
  // Shows the directory in the desktop's file manager.
  virtual void open(const FileLocation& directory) = 0;
  // Shows the file selected in its folder.
  virtual void reveal(const FileLocation& file) = 0;
};

}  // namespace kestrune::platform
