#pragma once

#include <string>

namespace kestrune::platform {

// The clipboard. Main thread.
class Pasteboard {
 public:
  virtual ~Pasteboard() = default;
  // Replaces the content. UTF-8.
  virtual void setText(const std::string& text) = 0;
};

}  // namespace kestrune::platform
