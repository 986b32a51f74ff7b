#pragma once

#include <functional>
#include <vector>

#include <QBasicTimer>
#include <QObject>

class QWidget;

namespace kestrune::ui::qt {

// Something that changes over time.
class Animated {
 public:
  virtual ~Animated() = default;
  // Moves to its state at `now`, in the driver's seconds. Returns false once it has arrived.
  virtual bool advance(double now) = 0;
};

// Moves all gauges and knobs with one timer, which runs only while one of them is moving. Main thread only.
class AnimationDriver final : public QObject {
 public:
  // Enough for gauges that move by a few pixels; each frame costs a round trip to the display.
  static constexpr int framesPerSecond = 15;

  // Seconds of a monotonic clock.
  static double now();
  // `animated` must be stopped before it is destroyed.
  void start(Animated& animated);
  void stop(Animated& animated);
  bool isRunning() const { return timer_.isActive(); }
  // Draws one frame as of `now`.
  void advance(double now);

 protected:
  void timerEvent(QTimerEvent* event) override;

 private:
  std::vector<Animated*> animated_;
  QBasicTimer timer_;
};

// From 0 to 1, slow at both ends.
double easeInOut(double progress);

// A number that eases from one value to the next.
class EasedValue final : public Animated {
 public:
  // `moved` is called at each frame; it must not start or stop animations. The driver must outlive the value.
  EasedValue(AnimationDriver& driver, std::function<void()> moved);
  ~EasedValue() override;
  EasedValue(const EasedValue&) = delete;
  EasedValue& operator=(const EasedValue&) = delete;

  double value() const { return value_; }
  double target() const { return target_; }
  // Starts moving to `target` from the current value. If `seconds` is 0 it arrives at once, and `moved` isn't
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

// True unless the desktop asks for reduced motion.
bool areAnimationsWanted(const QWidget& widget);
// True if animations are wanted and the widget can be seen.
bool canAnimate(const QWidget& widget);

}  // namespace kestrune::ui::qt
