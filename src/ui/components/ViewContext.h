#pragma once

#include "app/AppEnvironment.h"
#include "platform/Workspace.h"
#include "runtime/MainLoop.h"
#include "runtime/NotificationCenter.h"
#include "settings/Preferences.h"
#include "texts/LocaleFormats.h"
#include "ui/components/Shell.h"

namespace kestrune::ui {

// What the shell hands down the view tree. All of it outlives every view.
struct ViewContext {
  MainLoop& loop;
  AppEnvironment& env;
  Preferences& preferences;
  NotificationCenter& notifications;
  LocaleFormats& formats;
  platform::Workspace& workspace;
  Shell& shell;
  bool isSandboxed = false;
};

}  // namespace kestrune::ui
