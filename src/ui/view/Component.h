#pragma once

namespace kestrune::ui {

struct View;

// A part of the interface with state of its own: created when it appears on screen, destroyed when it leaves.
// Its body is evaluated again when a published property that the last evaluation read has changed; the views
// around it are not.
class Component {
 public:
  Component() = default;
  virtual ~Component() = default;
  Component(const Component&) = delete;
  Component& operator=(const Component&) = delete;

  virtual View body() = 0;
};

}  // namespace kestrune::ui
