#pragma once

#include <functional>
#include <vector>

#include <QBasicTimer>
#include <QObject>

#include "ui/view/View.h"

namespace kestrune::ui::qt {

class Breath;

// Pulses the opacity of one window's views, in few steps: a pulse may last for hours, and each step costs a
// round trip to the display. One timer serves all of them; while inactive they keep still. Main thread only.
class Breathing final : public QObject {
 public:
  // Active while the window can be seen and animations are wanted.
  void setActive(bool active);
  bool isActive() const { return isActive_; }
  bool isRunning() const { return timer_.isActive(); }

 protected:
  void timerEvent(QTimerEvent* event) override;

 private:
  friend class Breath;
  void follow();

  std::vector<Breath*> breaths_;
  QBasicTimer timer_;
  bool isActive_ = false;
};

// The pulse of one view; it ends when this is destroyed.
class Breath {
 public:
  // `apply` is called with each opacity; it must not create or destroy breaths.
  Breath(Breathing& all, const Pulse& pulse, std::function<void(double opacity)> apply);
  ~Breath();
  Breath(const Breath&) = delete;
  Breath& operator=(const Breath&) = delete;

  void advance(double now);
  double secondsPerStep() const;

 private:
  Breathing& all_;
  const Pulse pulse_;
  std::function<void(double)> apply_;
  const double start_;
};

}  // namespace kestrune::ui::qt
