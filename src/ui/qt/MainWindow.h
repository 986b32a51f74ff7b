#pragma once

#include <memory>

#include <QMainWindow>

#include "runtime/Published.h"
#include "ui/components/ViewContext.h"
#include "ui/window/MainWindowView.h"

namespace kestrune::ui::qt {

class Theme;
class ViewHost;

// The main window with its menus. Closing it only hides it, so the selected tab is kept. Main thread.
class MainWindow final : public QMainWindow {
 public:
  // All must outlive the window. `quit` ends the program.
  MainWindow(const ViewContext& context, Theme& theme, std::function<void()> quit);
  ~MainWindow() override;

  // Shows the window, restored and in front of others as far as the desktop allows.
  void bringForward();

  const MainWindowView& content() const { return *content_; }
  ViewHost& host() { return *host_; }

 private:
  void makeMenus(std::function<void()> quit);
  void followTitle();
  QString text(std::string_view key) const;

  ViewContext context_;
  Theme& theme_;
  std::shared_ptr<MainWindowView> content_;
  ViewHost* host_;
  std::unique_ptr<Dependencies> title_;
};

}  // namespace kestrune::ui::qt
