#include "ui/qt/mount/Dialogs.h"

#include <algorithm>
#include <optional>
#include <utility>

#include <QFileDialog>
#include <QHash>
#include <QIcon>
#include <QMessageBox>
#include <QPushButton>
#include <QSaveFile>

#include "ui/qt/theme/Theme.h"

namespace kestrune::ui::qt {
namespace {

using Current = std::function<const Content*()>;

// Runs the action that the choice has now.
void choose(const Current& current, std::size_t index) {
  const Content* content = current();
  const auto* alert = content == nullptr ? nullptr : std::get_if<AlertContent>(content);
  if (alert == nullptr || index >= alert->choices.size()) return;
  const auto action = alert->choices[index].action;  // the call may end the alert
  if (action) action();
}

QDialog* openAlert(const AlertContent& alert, const Current& current, const Theme& theme, QWidget& parent) {
  auto* box = new QMessageBox(QMessageBox::Question, theme.text(alert.title), theme.text(alert.title),
                              QMessageBox::NoButton, parent.window());
  box->setInformativeText(theme.text(alert.message));
  box->setTextFormat(Qt::PlainText);
  QHash<QAbstractButton*, std::size_t> choiceOf;
  std::optional<std::size_t> cancel;
  for (std::size_t i = 0; i < alert.choices.size(); ++i) {
    const auto& choice = alert.choices[i];
    auto role = QMessageBox::AcceptRole;
    if (choice.isDestructive) role = QMessageBox::DestructiveRole;
    if (choice.isCancel) role = QMessageBox::RejectRole;
    auto* button = box->addButton(withoutMnemonic(theme.text(choice.title)), role);
    choiceOf.insert(button, i);
    if (!choice.isCancel) continue;
    cancel = i;
    box->setEscapeButton(button);
    box->setDefaultButton(button);
  }
  QObject::connect(box, &QMessageBox::finished, box, [box, current, choiceOf, cancel] {
    const auto clicked = choiceOf.constFind(box->clickedButton());
    if (clicked != choiceOf.constEnd()) {
      choose(current, *clicked);
    } else if (cancel) {  // closed without a click
      choose(current, *cancel);
    }
  });
  box->open();
  return box;
}

// Writes the whole file or nothing: an existing file stays until all of the new one is on disk.
void writeFile(const QString& path, const std::string& content) {
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly)) return;
  const auto length = static_cast<qint64>(content.size());
  if (file.write(content.data(), length) == length) file.commit();
}

QDialog* openExport(const FileExportContent& wanted, Current current, const Theme& theme, QWidget& parent) {
  auto* dialog = new QFileDialog(parent.window());
  dialog->setAcceptMode(QFileDialog::AcceptSave);
  dialog->setFileMode(QFileDialog::AnyFile);
  const QString extension = QString::fromStdString(wanted.extension);
  dialog->setDefaultSuffix(extension);
  dialog->setNameFilter(QStringLiteral("%1 (*.%2)").arg(theme.text(wanted.fileKind), extension));
  dialog->selectFile(QString::fromStdString(wanted.fileName));
  QObject::connect(
      dialog, &QFileDialog::finished, dialog, [dialog, current = std::move(current)](int result) {
        const Content* content = current();
        const auto* file = content == nullptr ? nullptr : std::get_if<FileExportContent>(content);
        if (file == nullptr) return;
        const auto paths = dialog->selectedFiles();
        if (result == QDialog::Accepted && !paths.isEmpty()) writeFile(paths.first(), file->content);
        const auto onEnd = file->onEnd;  // the call may end the export
        if (onEnd) onEnd();
      });
  dialog->open();
  return dialog;
}

constexpr int symbolSize = 16;

QIcon icon(const std::string& symbolName, Theme& theme, double devicePixelRatio) {
  if (symbolName.empty()) return {};
  return {theme.symbol(symbolName, symbolSize, theme.color(ColorRole::primary), devicePixelRatio)};
}

void choose(const std::vector<MenuItem>& items, const TextContent& title) {
  const auto item = std::ranges::find_if(
      items, [&](const MenuItem& each) { return !each.isSeparator && each.title == title; });
  if (item == items.end() || !item->action) return;
  const auto action = item->action;  // the call may replace the items
  action();
}

}  // namespace

QDialog* openDialog(const Content& content, Current current, const Theme& theme, QWidget& parent) {
  QDialog* dialog = nullptr;
  if (const auto* alert = std::get_if<AlertContent>(&content)) {
    dialog = openAlert(*alert, current, theme, parent);
  } else if (const auto* file = std::get_if<FileExportContent>(&content)) {
    dialog = openExport(*file, std::move(current), theme, parent);
  }
  if (dialog != nullptr) dialog->setAttribute(Qt::WA_DeleteOnClose);
  return dialog;
}

QMenu* openMenu(std::function<const std::vector<MenuItem>&()> items, Theme& theme, QWidget& parent,
                QPoint place) {
  auto* menu = new QMenu(&parent);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  for (const MenuItem& item : items()) {
    if (item.isSeparator) {
      menu->addSeparator();
      continue;
    }
    menu->addAction(icon(item.symbol, theme, parent.devicePixelRatioF()),
                    withoutMnemonic(theme.text(item.title)), &parent,
                    [items, title = item.title] { choose(items(), title); });
  }
  // An assistive tool chooses without a click, and the menu would stay.
  QObject::connect(menu, &QMenu::triggered, menu, &QMenu::close);
  menu->popup(place);
  return menu;
}

}  // namespace kestrune::ui::qt
