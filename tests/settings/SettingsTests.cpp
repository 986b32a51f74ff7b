#include <gmock/gmock.h>

#include "settings/Language.h"
#include "settings/Preferences.h"
#include "support/ScriptedPlatform.h"

namespace kestrune {
namespace {

using namespace std::chrono_literals;
using Texts = std::vector<std::string>;

class RecordingStorage final : public platform::PreferenceStorage {
 public:
  platform::PreferenceMap stored;
  std::vector<std::string> order;

  platform::PreferenceMap load() override { return stored; }
  void store(const std::string& key, const platform::PreferenceValue& value) override {
    stored[key] = value;
    order.push_back(key);
  }
};

TEST(SettingsReset, writesEachDefaultInOrderAndNothingElse) {
  RecordingStorage storage;
  storage.stored = {{"ui.sandbox.showHints", false},
                    {"AppleLanguages", Texts{"es"}},
                    {"alerts.cpu.threshold", std::string("80")},
                    {"history.retentionDays", std::int64_t{90}}};
  Preferences preferences(storage);
  resetAllSettings(preferences);
  ASSERT_EQ(storage.order.size(), 18U);
  EXPECT_EQ(storage.order.front(), "metrics.cpu.menubar.enabled");
  EXPECT_EQ(storage.order.back(), "ui.sandbox.showFolderTab");
  EXPECT_EQ(preferences.value<double>("alerts.cpu.threshold"), 80.0);
  EXPECT_EQ(preferences.value<std::int64_t>("history.retentionDays"), 30);
  EXPECT_EQ(preferences.value<std::string>("alerts.memory.threshold"), "warning");
  EXPECT_EQ(preferences.value<bool>("ui.sandbox.showHints"), false);
  EXPECT_EQ(preferences.value<Texts>("AppleLanguages"), Texts{"es"});
  EXPECT_EQ(storage.stored.size(), 20U);
}

TEST(Language, spanishOnlyIfFirstChoice) {
  struct Case {
    std::optional<Texts> chosen;
    Texts desktop;
    const char* language;
  };
  for (const auto& [chosen, desktop, language] :
       {Case{{}, {}, "en"}, Case{{}, {"es-AR", "en"}, "es"}, Case{Texts{"fr", "es"}, {"es"}, "en"},
        Case{Texts{"es-MX"}, {"en"}, "es"}, Case{Texts{}, {"es"}, "en"}}) {
    test::ScriptedPreferences storage;
    if (chosen) storage.stored["AppleLanguages"] = *chosen;
    const Preferences preferences(storage);
    EXPECT_EQ(currentLanguage(preferences, desktop), language);
  }
}

TEST(Language, changeRestartsAfterASecond) {
  test::ScriptedPlatform machine;
  Preferences preferences(machine.preferences);
  test::ScriptedApplication application;
  setLanguage("en", machine.loop, preferences, application);
  EXPECT_EQ(machine.preferences.stored.at("AppleLanguages"), platform::PreferenceValue(Texts{"en"}));
  machine.advance(999ms);
  EXPECT_THAT(application.calls, testing::ElementsAre("open"));
  machine.advance(1ms);
  EXPECT_THAT(application.calls, testing::ElementsAre("open", "terminate"));
}

}  // namespace
}  // namespace kestrune
