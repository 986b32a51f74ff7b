#include "ui/qt/mount/Dialogs.h"

#include <optional>
#include <utility>

#include <QFileDialog>
#include <QHash>
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

}  // namespace kestrune::ui::qt
