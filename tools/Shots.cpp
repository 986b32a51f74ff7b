// Writes a picture of each page with live data of this machine.

#include <cstdio>
#include <cstdlib>

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QEventLoop>
#include <QTimer>

#include "Assembly.h"
#include "ui/qt/mount/ViewHost.h"
#include "ui/qt/theme/DesktopPalette.h"

namespace {

using namespace kestrune;

struct Options {
  QDir folder;
  QSize size;
  int seconds = 0;
  int daysAgo = 0;
  bool dark = false;
};

Options parse(const QApplication& application) {
  QCommandLineParser parser;
  parser.setApplicationDescription(QStringLiteral("Writes a picture of each page with live data."));
  parser.addHelpOption();
  parser.addPositionalArgument(QStringLiteral("DIR"),
                               QStringLiteral("where to write; build/shots by default"));
  const QCommandLineOption dark(QStringLiteral("dark"), QStringLiteral("as on a dark desktop"));
  const QCommandLineOption size(QStringLiteral("size"), QStringLiteral("size of the window"),
                                QStringLiteral("WxH"), QStringLiteral("1100x750"));
  const QCommandLineOption seconds(QStringLiteral("seconds"), QStringLiteral("how long to sample before"),
                                   QStringLiteral("N"), QStringLiteral("8"));
  const QCommandLineOption daysAgo(QStringLiteral("days-ago"),
                                   QStringLiteral("which day the overview shows; 0: it is live"),
                                   QStringLiteral("N"), QStringLiteral("0"));
  parser.addOptions({dark, size, seconds, daysAgo});
  parser.process(application);

  const QStringList arguments = parser.positionalArguments();
  const QStringList sides = parser.value(size).split(QLatin1Char('x'));
  return {QDir(arguments.isEmpty() ? QStringLiteral("build/shots") : arguments.first()),
          QSize(sides.value(0).toInt(), sides.value(1).toInt()), parser.value(seconds).toInt(),
          parser.value(daysAgo).toInt(), parser.isSet(dark)};
}

void letPass(int milliseconds) {
  QEventLoop loop;
  QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
  loop.exec();
}

bool writeTabs(ui::qt::KestruneApp& app, const Options& options) {
  ui::qt::MainWindow& window = app.window();
  for (const ui::MainTabEntry& entry : ui::mainTabs) {
    app.notifications().post(ui::switchTabNotification, entry.tab);
    letPass(700);  // longer than any animation
    const QString name = QString::fromUtf8(entry.title.data()).toLower() + QStringLiteral(".png");
    if (!window.grab().save(options.folder.filePath(name))) {
      std::fprintf(stderr, "shots: can't write %s\n", qPrintable(options.folder.filePath(name)));
      return false;
    }
  }
  return true;
}

bool writePopover(ui::qt::KestruneApp& app, const Options& options) {
  app.popover().toggle(QRect(200, 10, 22, 22));
  letPass(300);
  const QString file = options.folder.filePath(QStringLiteral("popover.png"));
  if (app.popover().grab().save(file)) return true;
  std::fprintf(stderr, "shots: can't write %s\n", qPrintable(file));
  return false;
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  const Options options = parse(application);
  if (!options.size.isValid() || options.size.isEmpty() || !options.folder.mkpath(QStringLiteral("."))) {
    std::fputs("shots: no such size, or the folder can't be made\n", stderr);
    return EXIT_FAILURE;
  }
  if (options.dark) QApplication::setPalette(ui::qt::darkPalette());

  Assembly assembly;
  ui::qt::KestruneApp& app = assembly.app;
  app.window().resize(options.size);
  app.openMainWindow();
  letPass(options.seconds * 1000);
  if (options.daysAgo > 0) app.environment().shiftSelectedDate(-options.daysAgo);
  const bool written = writeTabs(app, options) && writePopover(app, options);
  std::fflush(nullptr);
  std::_Exit(written ? EXIT_SUCCESS : EXIT_FAILURE);
}
