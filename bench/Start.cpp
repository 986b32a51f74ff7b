// Starts the parts of the program as main.cpp does and prints the microseconds until the end of the first
// painted frame. The argument is the start on the continuous clock, in nanoseconds.

#include <cinttypes>
#include <cstdio>
#include <cstdlib>

#include <QApplication>
#include <QTimer>
#include <QWindow>

#include "Assembly.h"
#include "platform/desktop/SingleInstance.h"

namespace {

class FirstFrame final : public QObject {
 public:
  explicit FirstFrame(std::function<void()> painted) : painted_(std::move(painted)) {}

  bool eventFilter(QObject*, QEvent* event) override {
    // The window paints while it handles the event, so the timer fires after the frame.
    if (event->type() == QEvent::Expose) QTimer::singleShot(0, this, [this] { painted_(); });
    return false;
  }

 private:
  std::function<void()> painted_;
};

}  // namespace

int main(int argc, char** argv) {
  using namespace kestrune;
  const ContinuousTime started(argc > 1 ? std::strtoll(argv[1], nullptr, 10) : 0);
  QApplication application(argc, argv);
  desktop::SingleInstance instance([](desktop::SingleInstance::Request, const QString&) {}, [] {});
  if (instance.claim(desktop::SingleInstance::Start::window) != desktop::SingleInstance::Outcome::first)
    return EXIT_FAILURE;
  Assembly assembly;
  ui::qt::KestruneApp& app = assembly.app;
  FirstFrame firstFrame([&] {
    std::printf("%" PRId64 "\n", (assembly.services.clock.continuousNow() - started).count() / 1000);
    std::fflush(nullptr);
    std::_Exit(EXIT_SUCCESS);
  });
  app.window().winId();
  app.window().windowHandle()->installEventFilter(&firstFrame);
  app.openMainWindow();
  return QApplication::exec();
}
