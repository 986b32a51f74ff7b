#pragma once

namespace kestrune::ui {

struct View;

// A part of the interface with state of its own: made when it comes on screen, dropped when it leaves. Its
// body is evaluated again when a published property that the last evaluation read has changed; what lies
// around it is not.
class Component {
 public:
  Component() = default;
  virtual ~Component() = default;
  Component(const Component&) = delete;
  Component& operator=(const Component&) = delete;

  virtual View body() = 0;
};

}  // namespace kestrune::ui
