#include <gmock/gmock.h>

#include "platform/linux/user/JsonPreferenceStorage.h"
#include "platform/linux/user/PreferenceDocument.h"
#include "support/TemporaryFolder.h"

namespace kestrune::platform {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* fileName = "config/kestrune/preferences.json";

class PreferenceStorageTest : public testing::Test {
 protected:
  PreferenceMap reloaded() { return JsonPreferenceStorage(folder / fileName).load(); }
  auto files() { return std::distance(fs::directory_iterator(folder / "config/kestrune"), {}); }

  test::TemporaryFolder folder;
  JsonPreferenceStorage storage{folder / fileName};
};

TEST_F(PreferenceStorageTest, keepsValuesAndTypes) {
  EXPECT_THAT(storage.load(), IsEmpty());
  EXPECT_FALSE(folder.has("config")) << "reading creates nothing";
  const PreferenceMap preferences{{"flag", true},    {"whole", std::int64_t{-9007199254740993}},
                                  {"huge", 1e300},   {"text", std::string("caf\u00e9 \"\n")},
                                  {"percent", 80.0}, {"languages", std::vector<std::string>{"es"}}};
  for (const auto& [key, value] : preferences) storage.store(key, value);
  EXPECT_EQ(reloaded(), preferences);
  EXPECT_EQ(files(), 1) << "no temporary file is left";
  EXPECT_EQ(fs::status(folder / fileName).permissions(), fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_EQ(fs::status(folder / "config/kestrune").permissions(), fs::perms::owner_all);

  storage.store("percent", std::numeric_limits<double>::quiet_NaN());
  storage.store("bytes", std::string("\xE9"));
  EXPECT_EQ(reloaded().at("percent"), PreferenceValue(80.0)) << "JSON has no NaN";
  EXPECT_EQ(reloaded().at("bytes"), PreferenceValue(std::string("\uFFFD")));
}

TEST_F(PreferenceStorageTest, keepsUnknownValues) {
  folder.write(fileName, R"({"a": {"deep": [1, 2.50, null]}, "mixed": ["x", 1], "n": null,
                            "big": 18446744073709551615, "known": 1})");
  EXPECT_EQ(storage.load(), (PreferenceMap{{"known", std::int64_t{1}}}));
  storage.store("known", 2.0);
  JsonPreferenceStorage(folder / fileName).store("other", true);
  storage.store("more", false);
  EXPECT_EQ(reloaded(), (PreferenceMap{{"known", 2.0}, {"other", true}, {"more", false}}))
      << "also what another instance has stored";
  const std::string text = folder.read(fileName);
  EXPECT_THAT(text, HasSubstr("18446744073709551615"));
  EXPECT_THAT(text, HasSubstr("\"deep\""));
}

TEST_F(PreferenceStorageTest, setsDamagedFilesAsideAndReportsOnce) {
  const std::string deep = "{\"a\": " + std::string(200'000, '[') + std::string(200'000, ']') + "}";
  const std::vector<std::string> damages{"{\"a\": tr", "", "[1]", deep, "{\"a\": \"\xE9\"}"};
  for (std::size_t i = 0; i < damages.size(); ++i) {
    folder.write(fileName, damages[i]);
    JsonPreferenceStorage fresh(folder / fileName);
    testing::internal::CaptureStderr();
    EXPECT_THAT(fresh.load(), IsEmpty());
    EXPECT_THAT(fresh.load(), IsEmpty());
    fresh.store("key", static_cast<std::int64_t>(i));
    const std::string report = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::ranges::count(report, '\n'), 1) << report;
    const std::string aside =
        std::string(fileName) + ".damaged" + (i == 0 ? "" : "." + std::to_string(i + 1));
    EXPECT_EQ(folder.read(aside), damages[i]) << aside;
    EXPECT_EQ(reloaded(), (PreferenceMap{{"key", static_cast<std::int64_t>(i)}}));
  }
}

TEST_F(PreferenceStorageTest, neverReplacesUnreadableFiles) {
  fs::create_directories(folder / fileName);  // unreadable even for root
  folder.write(std::string(fileName) + "/inside", "kept");
  EXPECT_THAT(storage.load(), IsEmpty());
  storage.store("key", true);
  EXPECT_THAT(storage.load(), IsEmpty());
  EXPECT_EQ(folder.read(std::string(fileName) + "/inside"), "kept");
  EXPECT_EQ(files(), 1);
  JsonPreferenceStorage nowhere("");
  nowhere.store("key", true);
  EXPECT_THAT(nowhere.load(), IsEmpty());
}

TEST_F(PreferenceStorageTest, writesThroughLinks) {
  folder.write("dotfiles/real.json", R"({"old": true})");
  folder.link(fileName, "../../dotfiles/link.json");
  folder.link("dotfiles/link.json", folder / "dotfiles/real.json");
  const auto stored = [&](const char* key) {
    storage.store(key, true);
    EXPECT_TRUE(fs::is_symlink(folder / fileName) && fs::is_symlink(folder / "dotfiles/link.json"));
    return parsePreferences(folder.read("dotfiles/real.json"));
  };
  EXPECT_EQ(stored("new"), (PreferenceMap{{"old", true}, {"new", true}}));
  fs::remove(folder / "dotfiles/real.json");
  EXPECT_EQ(stored("again"), (PreferenceMap{{"again", true}}));
}

TEST_F(PreferenceStorageTest, unchangedValuesAreNotWritten) {
  storage.store("key", 80.0);
  const auto written = fs::last_write_time(folder / fileName) - std::chrono::hours(1);
  fs::last_write_time(folder / fileName, written);
  storage.store("key", 80.0);
  EXPECT_EQ(fs::last_write_time(folder / fileName), written);
  storage.store("key", std::int64_t{80});
  EXPECT_NE(fs::last_write_time(folder / fileName), written) << "an integer is another value";
}

}  // namespace
}  // namespace kestrune::platform
