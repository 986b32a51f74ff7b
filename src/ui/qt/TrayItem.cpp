#include "ui/qt/TrayItem.h"

#include <cmath>

#include <QMenu>
#include <QPainter>
#include <QPainterPath>

#include "platform/desktop/SessionBus.h"
#include "ui/window/MenuBarLabel.h"

namespace kestrune::ui::qt {
namespace {

// A panel may be light or dark, and there is no way to ask; a badge with its own background is legible on
// both.
const QColor badge(0x2b, 0x30, 0x38);
const QColor gauge(0x4a, 0x9e, 0xf5);
const QColor digits(0xff, 0xff, 0xff);

void paintPicture(QPainter& painter, double size, int percent) {
  painter.setRenderHint(QPainter::Antialiasing);
  QPainterPath outline;
  outline.addRoundedRect(QRectF(0, 0, size, size), size * 0.22, size * 0.22);
  painter.setClipPath(outline);
  painter.fillPath(outline, badge);
  const double line = size * 0.14;
  painter.fillRect(QRectF(0, size - line, size * percent / 100.0, line), gauge);

  const QString number = QString::number(percent);
  QFont font;
  font.setWeight(QFont::DemiBold);
  // Three digits are smaller, so that 100 fits the same square.
  font.setPixelSize(qRound(size * (number.size() > 2 ? 0.48 : 0.62)));
  painter.setFont(font);
  painter.setPen(digits);
  painter.drawText(QRectF(0, 0, size, size - line), Qt::AlignCenter, number);
}

}  // namespace

QIcon trayPicture(int percent) {
  QIcon icon;
  for (const int size : {16, 22, 24, 32, 48, 64}) {
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paintPicture(painter, size, percent);
    painter.end();
    icon.addPixmap(pixmap);
  }
  return icon;
}

TrayItem::TrayItem(const CPUProvider& cpu, LocaleFormats& formats, QMenu* menu,
                   std::function<void(const QRect& item)> onClick)
    : cpu_(cpu),
      formats_(formats),
      menu_(menu),
      onClick_(std::move(onClick)),
      embedding_([this] { appear(); }),
      dependencies_([this] {
        QMetaObject::invokeMethod(
            &pending_, [this] { show(); }, Qt::QueuedConnection);
      }) {
  if (auto bus = desktop::sessionBus()) hosts_.emplace(std::move(*bus), [this] { appear(); });
  if (embedding_.isPresent()) appear();
}

void TrayItem::appear() {
  if (icon_) return;
  icon_.emplace();
  icon_->setContextMenu(menu_);
  QObject::connect(&*icon_, &QSystemTrayIcon::activated, &*icon_,
                   [this](QSystemTrayIcon::ActivationReason reason) {
                     if (reason == QSystemTrayIcon::Trigger) onClick_(icon_->geometry());
                   });
  show();
  icon_->show();
}

void TrayItem::show() {
  const std::string load = dependencies_.track([this] { return MenuBarLabel{cpu_}.load(formats_); });
  const double usage = std::clamp(cpu_.menuBarUsagePercent.get(), 0.0, 100.0);
  if (std::exchange(shownLoad_, load) == load) return;
  icon_->setIcon(trayPicture(static_cast<int>(std::nearbyint(usage))));
  icon_->setToolTip(QStringLiteral("Kestrune · CPU ") + QString::fromStdString(load));
}

}  // namespace kestrune::ui::qt
