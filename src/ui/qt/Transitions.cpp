#include "ui/qt/Transitions.h"

#include <QPainter>
#include <QPointer>
#include <QStyle>
#include <QTimer>

namespace kestrune::ui::qt {
namespace {

constexpr int milliseconds = 220;

class MovingPicture final : public QWidget {
 public:
  MovingPicture(const QWidget& of, QPixmap picture)
      : QWidget(of.parentWidget()), picture_(std::move(picture)), place_(of.geometry()) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
  }

  // `progress` 0: out of sight, one height below; 1: in place.
  void setProgress(double progress) {
    progress_ = progress;
    setGeometry(place_.translated(0, qRound((1 - progress) * place_.height())));
    update();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setOpacity(progress_);
    painter.drawPixmap(0, 0, picture_);
  }

 private:
  QPixmap picture_;
  QRect place_;
  double progress_ = 0;
};

bool canAnimate(const QWidget& widget) {
  return widget.isVisible() &&
         widget.style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, &widget) > 0;
}

void play(QWidget& widget, double from, double to, std::function<void()> finished) {
  auto* picture = new MovingPicture(widget, widget.grab());
  picture->setProgress(from);
  picture->show();
  auto* animation = new QVariantAnimation(picture);
  animation->setStartValue(from);
  animation->setEndValue(to);
  animation->setDuration(milliseconds);
  animation->setEasingCurve(QEasingCurve::InOutQuad);
  QObject::connect(animation, &QVariantAnimation::valueChanged, picture,
                   [picture](const QVariant& value) { picture->setProgress(value.toDouble()); });
  QObject::connect(animation, &QVariantAnimation::finished, picture,
                   [picture, finished = std::move(finished)] {
                     picture->hide();
                     picture->deleteLater();
                     if (finished) finished();
                   });
  animation->start();
}

}  // namespace

void playEntrance(QWidget& widget) {
  if (!canAnimate(widget)) return;
  const QPointer<QWidget> guarded(&widget);
  play(widget, 0, 1, [guarded] {
    if (guarded) guarded->show();
  });
  widget.hide();
}

void playExit(QWidget& widget) {
  if (canAnimate(widget)) play(widget, 1, 0, {});
}

std::unique_ptr<QVariantAnimation> makePulse(const Pulse& pulse, std::function<void(double)> apply) {
  // There and back as one round, so that it can repeat by itself.
  auto animation = std::make_unique<QVariantAnimation>();
  animation->setStartValue(pulse.from);
  animation->setKeyValueAt(0.5, pulse.to);
  animation->setEndValue(pulse.from);
  animation->setDuration(static_cast<int>(pulse.seconds * 2000));
  animation->setLoopCount(-1);
  // Each half eases in and out by itself.
  QEasingCurve ease;
  ease.setCustomType([](qreal t) -> qreal {
    static const QEasingCurve half(QEasingCurve::InOutQuad);
    return t < 0.5 ? half.valueForProgress(t * 2) / 2 : 0.5 + half.valueForProgress(t * 2 - 1) / 2;
  });
  animation->setEasingCurve(ease);
  QObject::connect(animation.get(), &QVariantAnimation::valueChanged, animation.get(),
                   [apply = std::move(apply)](const QVariant& value) { apply(value.toDouble()); });
  QTimer::singleShot(static_cast<int>(pulse.delay * 1000), animation.get(),
                     [running = animation.get()] { running->start(); });
  return animation;
}

}  // namespace kestrune::ui::qt
