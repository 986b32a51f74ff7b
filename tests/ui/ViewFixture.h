#pragma once

#include <any>
#include <chrono>
#include <optional>
#include <vector>

#include <gmock/gmock.h>

#include "history/DailySummaryJson.h"
#include "support/ScriptedPlatform.h"
#include "ui/Transcript.h"
#include "ui/components/ViewContext.h"
#include "ui/window/MainWindowView.h"
#include "ui/window/MenuBarPopover.h"

namespace kestrune::test {

// The running system over a scripted computer, with views that look at it.
class ViewFixture : public testing::Test {
 public:
  // Every text that a test looked at must be in the catalogue.
  void TearDown() override {
    const Catalogue spanish("es");
    for (const std::string& key : std::exchange(shownKeys(), {}))
      EXPECT_TRUE(spanish.text(key).data() != key.data()) << '"' << key << "\" has no translation";
  }

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
  int timesOpened = 0;
  int timesQuit = 0;

  // Starts the system at the first call, so that a test can set up the computer before.
  ui::ViewContext context() {
    if (!env) {
      env.emplace(computer.loop, computer.platform,
                  AppEnvironment::Surroundings{preferences, texts, formats});
      computer.settle();
    }
    return {computer.loop, *env, preferences, notifications, formats, computer.workspace, shell, isSandboxed};
  }

  template <class Tab>
  MountedViews tab() {
    return MountedViews(ui::component<Tab>([given = context()] { return std::make_shared<Tab>(given); }));
  }
  MountedViews mainWindow() { return tab<ui::MainWindowView>(); }
  MountedViews popover() {
    return MountedViews(ui::component<ui::MenuBarPopover>([this, given = context()] {
      return std::make_shared<ui::MenuBarPopover>(
          given, ui::MenuBarPopover::Commands{[this] { ++timesOpened; }, [this] { ++timesQuit; }});
    }));
  }
  // The page as text, as soon as it has all that it waits for.
  template <class Tab>
  std::string page() {
    auto views = tab<Tab>();
    update(views);
    return transcriptOf(views);
  }

  // Each change of the state makes the page show a text.
  struct State {
    std::function<void()> change;
    const char* shown;
  };
  template <class Snapshot>
  static std::function<void()> becomes(Published<Snapshot>& figure,
                                       const std::type_identity_t<Snapshot>& now) {
    return [&figure, now] { figure.set(now); };
  }
  template <class Tab>
  void expectStates(const std::vector<State>& states) {
    for (const auto& [change, shown] : states) {
      change();
      EXPECT_THAT(page<Tab>(), testing::HasSubstr(shown));
    }
  }

  // One second with the processors busy for that many of 100 ticks.
  void second(const std::vector<std::int32_t>& busy) {
    computer.processors.pass(100, busy);
    computer.advance(std::chrono::seconds(1));
  }

  void update(MountedViews& views) {
    computer.settle();
    views.update();
  }

  Date midnight(int daysAgo) {
    return *computer.calendar.addingDays(computer.calendar.startOfDay(computer.clock.now()), -daysAgo);
  }
  void keepDayFile(int daysAgo, const std::string& content) {
    computer.historyFolder.files[computer.calendar.dayFormatter()(midnight(daysAgo)) + ".json"] = content;
  }
  void keepDay(int daysAgo, DailySummary record) {
    record.date = midnight(daysAgo);
    keepDayFile(daysAgo, encodeDay(record).text);
  }

  // A machine each of whose figures is another number, and a minute of two samples.
  void showSample();

 private:
  template <class Provider, class Snapshot>
  void publish(Provider& provider, const std::type_identity_t<Snapshot>& before, const Snapshot& now) {
    HistoryRing<Snapshot> ring(60);
    ring.append({computer.clock.now(), before});
    ring.append({computer.clock.now() + 1, now});
    provider.history.set(std::move(ring));
    provider.current.set(now);
  }
  void fill(Published<HistoryRing<double>>& published, const std::vector<double>& values) {
    HistoryRing<double> ring(200);
    for (const double value : values)
      ring.append({computer.clock.now() + static_cast<double>(ring.size()), value});
    published.set(std::move(ring));
  }
};

// A past day whose figures are all different.
DailySummary sampleDay();

}  // namespace kestrune::test
