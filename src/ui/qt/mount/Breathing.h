#pragma once

#include <functional>
#include <vector>

#include <QBasicTimer>
#include <QObject>

#include "ui/view/View.h"

namespace kestrune::ui::qt {

class Breath;

// The views of one window whose opacity swells and fades for as long as they are there, in few steps: they
// may do so for hours, and each step costs a round trip to the display. While it isn't active they stand
// still. Main thread only.
class Breathing final : public QObject {
 public:
  // Whether the window can be seen and the desktop has nothing against movement.
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

// One such view, for as long as this lives.
class Breath {
 public:
  // `apply` takes each opacity; it makes and ends no breath.
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
