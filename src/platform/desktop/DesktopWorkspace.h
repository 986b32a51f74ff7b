#pragma once

#include "platform/Workspace.h"

namespace kestrune::desktop {

// Opens addresses with the desktop's programs, as far as they are installed. What it starts lives on by
// itself, without this program's signal settings and standard files, and leaves nothing behind when it ends.
class DesktopWorkspace final : public platform::Workspace {
 public:
  void openURL(const std::string& url) override;
  // By the file manager's service on the session bus, which is started if it isn't running; where there is
  // none, by what opens folders.
  void open(const platform::FileLocation& directory) override;
  void reveal(const platform::FileLocation& file) override;
};

}  // namespace kestrune::desktop
