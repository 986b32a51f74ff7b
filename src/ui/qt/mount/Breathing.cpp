#include "ui/qt/mount/Breathing.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <QTimerEvent>

#include "ui/qt/theme/Animation.h"

namespace kestrune::ui::qt {
namespace {

// In; and the same number out.
constexpr int stepsPerBreath = 2;

}  // namespace

void Breathing::setActive(bool active) {
  isActive_ = active;
  follow();
}

void Breathing::timerEvent(QTimerEvent* event) {
  if (event->timerId() != timer_.timerId()) return;
  for (Breath* breath : breaths_) breath->advance(AnimationDriver::now());
}

void Breathing::follow() {
  if (!isActive_ || breaths_.empty()) {
    timer_.stop();
    return;
  }
  const auto* const quickest = std::ranges::min(breaths_, {}, &Breath::secondsPerStep);
  timer_.start(static_cast<int>(quickest->secondsPerStep() * 1000), this);
}

Breath::Breath(Breathing& all, const Pulse& pulse, std::function<void(double)> apply)
    : all_(all), pulse_(pulse), apply_(std::move(apply)), start_(AnimationDriver::now() + pulse.delay) {
  all_.breaths_.push_back(this);
  all_.follow();
}

Breath::~Breath() {
  std::erase(all_.breaths_, this);
  all_.follow();
}

double Breath::secondsPerStep() const {
  return pulse_.seconds / stepsPerBreath;
}

void Breath::advance(double now) {
  if (now < start_) return;
  const double phase = std::fmod((now - start_) / pulse_.seconds, 2);
  apply_(pulse_.from + (pulse_.to - pulse_.from) * easeInOut(phase < 1 ? phase : 2 - phase));
}

}  // namespace kestrune::ui::qt
