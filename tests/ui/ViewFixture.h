#pragma once

#include <any>
#include <chrono>
#include <optional>
#include <vector>

#include "support/ScriptedPlatform.h"
#include "support/ViewInspector.h"
#include "ui/components/ViewContext.h"
#include "ui/pages/CPUTab.h"
#include "ui/window/MainWindowView.h"

namespace kestrune::test {

// The running system over a scripted computer, for views to look at.
class ViewFixture : public testing::Test {
 public:
  ScriptedPlatform computer;
  Preferences preferences{computer.preferences};
  NotificationCenter notifications;
  Catalogue texts;
  LocaleFormats formats{"en_US"};
  std::optional<AppEnvironment> env;
  ScriptedApplication application;
  ScriptedPasteboard pasteboard;
  ui::Shell shell{.application = application,
                  .loginItem = computer.loginItem,
                  .pasteboard = pasteboard,
                  .language = "en",
                  .version = "1.2 (3)",
                  .systemVersion = "Test System 1"};
  bool isSandboxed = false;

  // Starts the system, so late that a test can set up the computer before.
  ui::ViewContext context() {
    if (!env) {
      env.emplace(computer.loop, computer.platform,
                  AppEnvironment::Surroundings{preferences, texts, formats});
    }
    return {computer.loop, *env, preferences, notifications, formats, computer.workspace, shell, isSandboxed};
  }

  template <class Tab>
  MountedViews tab() {
    return MountedViews(ui::component<Tab>([given = context()] { return std::make_shared<Tab>(given); }));
  }
  MountedViews cpuTab() { return tab<ui::CPUTab>(); }
  MountedViews mainWindow() {
    return MountedViews(ui::component<ui::MainWindowView>(
        [given = context()] { return std::make_shared<ui::MainWindowView>(given); }));
  }

  // One second with the processors busy for so many of their 100 ticks.
  void second(const std::vector<std::int32_t>& busy) {
    computer.processors.pass(100, busy);
    computer.advance(std::chrono::seconds(1));
  }

  void update(MountedViews& views) {
    computer.settle();
    views.update();
  }
};

}  // namespace kestrune::test
