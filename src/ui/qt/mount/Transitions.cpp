#include "ui/qt/mount/Transitions.h"

#include <QPainter>
#include <QVariantAnimation>

#include "ui/qt/theme/Animation.h"

namespace kestrune::ui::qt {
namespace {

constexpr int milliseconds = 220;

class MovingPicture final : public QWidget {
 public:
  MovingPicture(const QWidget& of, QPixmap picture)
      : QWidget(of.parentWidget()), picture_(std::move(picture)), place_(of.geometry()) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
  }

  // `progress` 0 is invisible and one height below; 1 is in place.
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

QWidget* play(QWidget& widget, double from, double to, std::function<void()> finished) {
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
  return picture;
}

}  // namespace

QWidget* playEntrance(QWidget& widget, std::function<void()> finished) {
  if (!canAnimate(widget)) return nullptr;
  QWidget* picture = play(widget, 0, 1, std::move(finished));
  widget.hide();
  return picture;
}

void playExit(QWidget& widget) {
  if (canAnimate(widget)) play(widget, 1, 0, {});
}

}  // namespace kestrune::ui::qt
