#pragma once

#include "platform/desktop/DBusNotifications.h"
#include "platform/desktop/DesktopWorkspace.h"
#include "platform/desktop/SessionBus.h"
#include "platform/linux/LinuxPlatform.h"
#include "runtime/MainLoop.h"
#include "ui/qt/KestruneApp.h"
#include "ui/qt/LoopDriver.h"

namespace kestrune {

// The program on this computer: the real platform, the loop that Qt drives, and the app on top of both.
// Creating it starts sampling. Needs a QApplication. Main thread.
struct Assembly {
  platform::LinuxPlatform computer;
  desktop::DBusNotifications notifications{desktop::sessionBus()};
  desktop::DesktopWorkspace workspace;
  platform::Platform services = computer.platform(notifications, workspace);
  MainLoop loop{services.clock, computer.loopDescriptor()};
  ui::qt::LoopDriver driver{loop, computer.loopDescriptor().fd()};
  ui::qt::KestruneApp app{loop, services};
};

}  // namespace kestrune
