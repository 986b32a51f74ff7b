#include <gmock/gmock.h>

#include "settings/Preferences.h"
#include "support/ScriptedPlatform.h"

namespace kestrune {
namespace {

using std::int64_t;
using std::string;
using Texts = std::vector<string>;

TEST(Preferences, defaultAppliesUntilWritten) {
  test::ScriptedPreferences storage;
  Preferences preferences(storage);
  const Preference<bool> enabled(preferences, {"alerts.cpu.enabled", true});
  const Preference<bool> otherDefault(preferences, {"alerts.cpu.enabled", false});
  EXPECT_TRUE(enabled.get());
  EXPECT_FALSE(otherDefault.get());
  EXPECT_TRUE(storage.stored.empty());

  enabled.set(true);
  EXPECT_TRUE(otherDefault.get());
  EXPECT_EQ(storage.stored.at("alerts.cpu.enabled"), platform::PreferenceValue(true)) << "the default too";
}

TEST(Preferences, valueOfAnotherTypeGivesTheDefault) {
  test::ScriptedPreferences storage;
  storage.stored = {{"text", string("80")}, {"flag", true}, {"real", 80.5}, {"whole", int64_t{80}}};
  Preferences preferences(storage);
  EXPECT_EQ(Preference<double>(preferences, {"text", 70.0}).get(), 70.0);
  EXPECT_EQ(Preference<bool>(preferences, {"whole", false}).get(), false);
  EXPECT_EQ(Preference<int64_t>(preferences, {"real", 10}).get(), 10);
  EXPECT_EQ(preferences.value<Texts>("text"), std::nullopt);

  // A whole number is a Double too.
  EXPECT_EQ(Preference<double>(preferences, {"whole", 70.0}).get(), 80.0);
}

TEST(Preferences, writingNotifiesReadersOfThatKeyOnly) {
  test::ScriptedPreferences storage;
  Preferences preferences(storage);
  const Preference<bool> here(preferences, {"ui.sandbox.showHints", true});
  const Preference<bool> there(preferences, {"ui.sandbox.showHints", true});
  int notified = 0;
  Dependencies reader([&] { ++notified; });
  const auto read = [&] { return reader.track([&] { return here.get(); }); };
  read();
  preferences.set("ui.sandbox.showFolderTab", false);
  EXPECT_EQ(notified, 0);
  there.set(false);
  EXPECT_EQ(notified, 1);
  EXPECT_FALSE(read());
  there.set(false);
  EXPECT_EQ(notified, 1) << "the value is the same";
}

}  // namespace
}  // namespace kestrune
