#pragma once

#include <QSocketNotifier>

#include "runtime/MainLoop.h"

namespace kestrune::ui::qt {

// Lets Qt's event loop drive ours: runs it whenever its descriptor can be read. Main thread.
class LoopDriver {
 public:
  // `descriptor` is readable whenever the loop's waker was woken. Both must outlive the driver.
  LoopDriver(MainLoop& loop, int descriptor) : notifier_(descriptor, QSocketNotifier::Read) {
    QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_, [&loop] { loop.run(); });
  }

 private:
  QSocketNotifier notifier_;
};

}  // namespace kestrune::ui::qt
