#pragma once

#include <string>

#include "platform/FileLocation.h"

namespace kestrune::platform {

// What the desktop does on behalf of a program. No call waits. Main thread.
class Workspace {
 public:
  virtual ~Workspace() = default;
  // Opens an address with what the desktop has for it. Addresses of settings panels lead to the panel of this
  // desktop; where there is none nothing happens.
  virtual void openURL(const std::string& url) = 0;
  // Shows the directory in the desktop's file manager.
  virtual void open(const FileLocation& directory) = 0;
  // Shows the file among its neighbours there.
  virtual void reveal(const FileLocation& file) = 0;
};

}  // namespace kestrune::platform
