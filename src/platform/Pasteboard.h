#pragma once

#include <string>

namespace kestrune::platform {

// What the user copies to paste elsewhere. Main thread.
class Pasteboard {
 public:
  virtual ~Pasteboard() = default;
  // Replaces what is there. UTF-8.
  virtual void setText(const std::string& text) = 0;
};

}  // namespace kestrune::platform
