#pragma once

#include <functional>
#include <vector>

#include <QBasicTimer>
#include <QObject>

class QWidget;

namespace kestrune::ui::qt {

// Something that moves with time.
class Animated {
 public:
  virtual ~Animated() = default;
  // Moves to where it is at `now`, in the driver's seconds. False once it has arrived.
  virtual bool advance(double now) = 0;
};

// Moves all that is under way with one timer, which runs only while something is. Main thread only.
class AnimationDriver final : public QObject {
 public:
  // Enough for gauges that move by a few pixels, and each frame costs a round trip to the display.
  static constexpr int framesPerSecond = 15;

  // Seconds of a clock that never goes back.
  static double now();
  // `animated` must be stopped before it goes.
  void start(Animated& animated);
  void stop(Animated& animated);
  bool isRunning() const { return timer_.isActive(); }
  // One frame, as at that time.
  void advance(double now);

 protected:
  void timerEvent(QTimerEvent* event) override;

 private:
  std::vector<Animated*> animated_;
  QBasicTimer timer_;
};

// From 0 to 1, slow at both ends.
double easeInOut(double progress);

// A figure that eases in and out from one value to the next.
class EasedValue final : public Animated {
 public:
  // `moved` is called at each frame; it starts and stops nothing. The driver must outlive the value.
  EasedValue(AnimationDriver& driver, std::function<void()> moved);
  ~EasedValue() override;
  EasedValue(const EasedValue&) = delete;
  EasedValue& operator=(const EasedValue&) = delete;

  double value() const { return value_; }
  double target() const { return target_; }
  // Sets out for `target`, from wherever it is now; without `seconds` it is there at once, and `moved` isn't
  // called.
  void set(double target, double seconds);
  bool advance(double now) override;

 private:
  AnimationDriver& driver_;
  std::function<void()> moved_;
  double origin_ = 0;
  double target_ = 0;
  double value_ = 0;
  double start_ = 0;
  double seconds_ = 0;
};

// Whether the desktop doesn't ask for none.
bool areAnimationsWanted(const QWidget& widget);
// … and a movement of the widget would be seen.
bool canAnimate(const QWidget& widget);

}  // namespace kestrune::ui::qt
