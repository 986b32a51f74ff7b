#include "ui/qt/MainWindow.h"

#include <QAction>
#include <QMenuBar>
#include <QScreen>

#include "ui/qt/AboutDialog.h"
#include "ui/qt/mount/ViewHost.h"
#include "ui/qt/theme/Theme.h"
#include "ui/window/MainTab.h"

namespace kestrune::ui::qt {
namespace {

constexpr QSize defaultSize(1100, 750);

}  // namespace

MainWindow::MainWindow(const ViewContext& context, Theme& theme, std::function<void()> quit)
    : context_(context),
      theme_(theme),
      content_(std::make_shared<MainWindowView>(context)),
      host_(new ViewHost(context.loop, theme, component<MainWindowView>([view = content_] { return view; }),
                         this)),
      title_(std::make_unique<Dependencies>([this] {
        context_.loop.post([window = QPointer<MainWindow>(this)] {
          if (window) window->followTitle();
        });
      })) {
  setObjectName(QStringLiteral("main"));
  setCentralWidget(host_);
  makeMenus(std::move(quit));
  followTitle();
  host_->setMinimumSize(qRound(MainWindowView::minimumWidth), qRound(MainWindowView::minimumHeight));
  // A screen may be smaller than that, above all a scaled one.
  resize(defaultSize.boundedTo(screen()->availableSize()));
}

MainWindow::~MainWindow() = default;

void MainWindow::bringForward() {
  setWindowState(windowState() & ~Qt::WindowMinimized);
  show();
  raise();
  activateWindow();
}

QString MainWindow::text(std::string_view key) const {
  return theme_.text(ui::key(std::string(key)));
}

void MainWindow::followTitle() {
  const std::string title = title_->track([this] { return content_->windowTitle(); });
  setWindowTitle(text(title));
}

void MainWindow::makeMenus(std::function<void()> quit) {
  QMenu* file = menuBar()->addMenu(text("File"));
  QAction* close = file->addAction(text("Close Window"), this, [this] { this->close(); });
  close->setShortcut(QKeySequence::Close);
  QAction* quitAction = file->addAction(text("Quit Kestrune"), this, std::move(quit));
  quitAction->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));

  QMenu* go = menuBar()->addMenu(text("Go"));
  for (const MainTabEntry& entry : mainTabs) {
    if (entry.separatorBefore) go->addSeparator();
    QAction* action = go->addAction(text(entry.title), this, [this, tab = entry.tab] {
      context_.notifications.post(switchTabNotification, tab);
    });
    action->setShortcut(QKeySequence(QStringLiteral("Ctrl+") + QLatin1Char(entry.key)));
  }

  QMenu* help = menuBar()->addMenu(text("Help"));
  help->addAction(text("About Kestrune"), this, [this] { showAbout(theme_, this); });
}

}  // namespace kestrune::ui::qt
