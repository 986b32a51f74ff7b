#include <filesystem>

#include <gtest/gtest.h>

#include "platform/linux/applications/DesktopEntry.h"
#include "platform/linux/user/LinuxLoginItem.h"
#include "support/TemporaryFolder.h"

namespace kestrune::platform {
namespace {

namespace fs = std::filesystem;

constexpr const char* entry = "config/autostart/kestrune.desktop";

class LoginItemTest : public testing::Test {
 protected:
  std::string program(const std::string& name) {
    folder.write(name, "#!");
    fs::permissions(folder / name, fs::perms::owner_all);
    return folder / name;
  }
  LinuxLoginItem item(const std::string& path) { return {folder / "config", path}; }
  // What the session would run.
  std::vector<std::string> command() {
    const auto parsed = parseDesktopEntry(folder.read(entry), {});
    return parsed ? execArguments(parsed->exec) : std::vector<std::string>();
  }

  test::TemporaryFolder folder;
};

TEST_F(LoginItemTest, startsTheProgramQuietlyWhateverItsPath) {
  for (const char* name : {"kestrune", "my 100% \"own\" $HOME`x` \\kestrune", "caf\u00e9"}) {
    auto login = item(program(name));
    EXPECT_FALSE(login.isEnabled()) << name;
    EXPECT_EQ(login.registerItem(), std::nullopt);
    EXPECT_EQ(command(), (std::vector<std::string>{"env", "KESTRUNE_START=quiet", folder / name}));
    EXPECT_TRUE(login.isEnabled());
    EXPECT_EQ(login.unregisterItem(), std::nullopt);
    EXPECT_EQ(login.unregisterItem(), std::nullopt) << "it is gone already";
  }
  for (const char* name : {"a=b", "two\nlines"}) EXPECT_TRUE(item(program(name)).registerItem()) << name;
  EXPECT_TRUE(item(folder / "gone").registerItem());
  EXPECT_TRUE(LinuxLoginItem("", program("kestrune")).registerItem());
  EXPECT_FALSE(folder.has(entry));
}

TEST_F(LoginItemTest, anEntryThatSaysSoIsOff) {
  for (const char* line : {"Hidden=true", "Hidden = true\r", "X-GNOME-Autostart-enabled=false"}) {
    const std::string text = "[Desktop Entry]\nType=Application\nExec=/old\n" + std::string(line) + "\n";
    folder.write(entry, text);
    EXPECT_FALSE(item(program("kestrune")).isEnabled()) << line;
    EXPECT_EQ(folder.read(entry), text);
  }
  EXPECT_EQ(item(program("kestrune")).registerItem(), std::nullopt);
  EXPECT_TRUE(item(program("kestrune")).isEnabled());
}

TEST_F(LoginItemTest, onlyTheCommandIsBroughtUpToDate) {
  folder.write("dotfiles/entry",
               "[Desktop Entry]\nType=Application\nExec=nice /old/kestrune\nX-Delay=10\n"
               "[Desktop Action a]\nExec=other\n");
  fs::create_directories(folder / "config/autostart");
  fs::create_symlink(folder / "dotfiles/entry", folder / entry);
  EXPECT_TRUE(item(folder / "gone").isEnabled());
  EXPECT_EQ(command().back(), "/old/kestrune") << "nothing to start there";
  const std::string moved = program("kestrune");
  EXPECT_TRUE(item(moved).isEnabled());
  EXPECT_EQ(command().back(), moved);
  EXPECT_NE(folder.read(entry).find("\nX-Delay=10\n[Desktop Action a]\nExec=other\n"), std::string::npos);
  EXPECT_TRUE(fs::is_symlink(folder / entry));

  const std::string own = "[Desktop Entry]\nType=Application\nExec=nice \"" + moved + "\"\n";
  folder.write(entry, own);
  EXPECT_TRUE(item(moved).isEnabled());
  EXPECT_EQ(folder.read(entry), own) << "it names the program";
}

}  // namespace
}  // namespace kestrune::platform
