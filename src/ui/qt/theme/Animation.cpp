#include "ui/qt/theme/Animation.h"

#include <algorithm>
#include <chrono>

#include <QStyle>
#include <QTimerEvent>
#include <QWidget>

namespace kestrune::ui::qt {

double easeInOut(double progress) {
  const double rest = 1 - progress;
  return progress < 0.5 ? 2 * progress * progress : 1 - 2 * rest * rest;
}

double AnimationDriver::now() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

void AnimationDriver::start(Animated& animated) {
  if (std::ranges::find(animated_, &animated) == animated_.end()) animated_.push_back(&animated);
  if (!timer_.isActive()) timer_.start(1000 / framesPerSecond, this);
}

void AnimationDriver::stop(Animated& animated) {
  std::erase(animated_, &animated);
  if (animated_.empty()) timer_.stop();
}

void AnimationDriver::advance(double now) {
  std::erase_if(animated_, [now](Animated* animated) { return !animated->advance(now); });
  if (animated_.empty()) timer_.stop();
}

void AnimationDriver::timerEvent(QTimerEvent* event) {
  if (event->timerId() == timer_.timerId()) advance(now());
}

EasedValue::EasedValue(AnimationDriver& driver, std::function<void()> moved)
    : driver_(driver), moved_(std::move(moved)) {}

EasedValue::~EasedValue() {
  driver_.stop(*this);
}

void EasedValue::set(double target, double seconds) {
  target_ = target;
  if (seconds <= 0) {
    value_ = target;
    driver_.stop(*this);
    return;
  }
  origin_ = value_;
  start_ = AnimationDriver::now();
  seconds_ = seconds;
  driver_.start(*this);
}

bool EasedValue::advance(double now) {
  const double progress = std::clamp((now - start_) / seconds_, 0.0, 1.0);
  value_ = progress < 1 ? origin_ + (target_ - origin_) * easeInOut(progress) : target_;
  moved_();
  return progress < 1;
}

bool areAnimationsWanted(const QWidget& widget) {
  return widget.style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, &widget) > 0;
}

bool canAnimate(const QWidget& widget) {
  return widget.isVisible() && areAnimationsWanted(widget) && !widget.visibleRegion().isEmpty();
}

}  // namespace kestrune::ui::qt
