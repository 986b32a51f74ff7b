#pragma once

#include <QClipboard>
#include <QGuiApplication>

#include "platform/Pasteboard.h"

namespace kestrune::ui::qt {

// The desktop's clipboard.
class Clipboard final : public platform::Pasteboard {
 public:
  void setText(const std::string& text) override {
    QGuiApplication::clipboard()->setText(QString::fromStdString(text));
  }
};

}  // namespace kestrune::ui::qt
