#include "ui/qt/AboutDialog.h"

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QVBoxLayout>

#include "ui/qt/theme/Theme.h"
#include "ui/window/AboutText.h"

namespace kestrune::ui::qt {
namespace {

const auto dialogName = QStringLiteral("about");
constexpr int iconSize = 72;
constexpr double smallFontSize = 11;

QLabel* centredText(const QString& text, QWidget* parent) {
  auto* label = new QLabel(text, parent);
  label->setTextFormat(Qt::PlainText);
  label->setAlignment(Qt::AlignHCenter);
  return label;
}

}  // namespace

void showAbout(const Theme& theme, QWidget* parent) {
  auto* dialog = parent->findChild<QDialog*>(dialogName);
  if (dialog == nullptr) {
    dialog = new QDialog(parent);
    dialog->setObjectName(dialogName);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(theme.text(key("About Kestrune")));

    auto* icon = new QLabel(dialog);
    icon->setPixmap(QApplication::windowIcon().pixmap(iconSize));
    icon->setAlignment(Qt::AlignHCenter);
    auto* name = centredText(QStringLiteral("Kestrune"), dialog);
    QFont bold = name->font();
    bold.setPixelSize(18);
    bold.setWeight(QFont::DemiBold);
    name->setFont(bold);
    auto* version = centredText(QApplication::applicationVersion(), dialog);
    auto* credits = centredText(theme.text(key(std::string(aboutText))), dialog);
    credits->setWordWrap(true);
    QFont small = credits->font();
    small.setPixelSize(qRound(smallFontSize));
    credits->setFont(small);
    QPalette secondary = credits->palette();
    secondary.setColor(QPalette::WindowText, theme.color(ColorRole::secondary));
    credits->setPalette(secondary);
    version->setPalette(secondary);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, dialog);
    buttons->setCenterButtons(true);
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::close);

    auto* column = new QVBoxLayout(dialog);
    column->setContentsMargins(28, 24, 28, 18);
    column->setSpacing(8);
    for (QWidget* part :
         {static_cast<QWidget*>(icon), static_cast<QWidget*>(name), static_cast<QWidget*>(version),
          static_cast<QWidget*>(credits), static_cast<QWidget*>(buttons)}) {
      column->addWidget(part);
    }
    dialog->setFixedWidth(340);
  }
  dialog->show();
  dialog->raise();
  dialog->activateWindow();
}

}  // namespace kestrune::ui::qt
