#pragma once

#include <QSocketNotifier>

#include "runtime/MainLoop.h"

namespace kestrune::ui::qt {

// Runs our loop from Qt's, whenever its descriptor is readable. Main thread.
class LoopDriver {
 public:
  // `descriptor` is readable whenever the loop has been woken. Both must outlive the driver.
  LoopDriver(MainLoop& loop, int descriptor) : notifier_(descriptor, QSocketNotifier::Read) {
    QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_, [&loop] { loop.run(); });
  }

 private:
  QSocketNotifier notifier_;
};

}  // namespace kestrune::ui::qt
