#include <gtest/gtest.h>

#include "platform/linux/applications/DesktopEntry.h"
#include "platform/linux/user/LinuxLoginItem.h"
#include "support/TemporaryFolder.h"

namespace kestrune::platform {
namespace {

constexpr const char* entry = "config/autostart/kestrune.desktop";

class LoginItemTest : public testing::Test {
 protected:
  std::string program(const std::string& name) { return folder.script(name, "#!"); }
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
    for (int i = 0; i < 2; ++i) EXPECT_EQ(login.unregisterItem(), std::nullopt);
  }
  for (const char* name : {"a=b", "two\nlines"}) EXPECT_TRUE(item(program(name)).registerItem()) << name;
  EXPECT_TRUE(item(folder / "gone").registerItem());
  EXPECT_TRUE(LinuxLoginItem("", program("kestrune")).registerItem());
  EXPECT_FALSE(folder.has(entry));
}

TEST_F(LoginItemTest, respectsEntriesSwitchedOff) {
  auto login = item(program("kestrune"));
  for (const char* line : {"Hidden=true", "Hidden = true\r", "X-GNOME-Autostart-enabled=false"}) {
    const std::string text = "[Desktop Entry]\nType=Application\nExec=/old\n" + std::string(line) + "\n";
    folder.write(entry, text);
    EXPECT_FALSE(login.isEnabled()) << line;
    EXPECT_EQ(folder.read(entry), text);
  }
  EXPECT_EQ(login.registerItem(), std::nullopt);
  EXPECT_TRUE(login.isEnabled());
}

TEST_F(LoginItemTest, updatesNothingButTheCommand) {
  const std::string head = "[Desktop Entry]\nType=Application\nExec=";
  const std::string tail = "\nX-Delay=10\n[Desktop Action a]\nExec=other\n";
  folder.write("dotfiles/entry", head + "nice /old/kestrune" + tail);
  folder.link(entry, folder / "dotfiles/entry");
  EXPECT_TRUE(item(folder / "gone").isEnabled());
  EXPECT_EQ(command().back(), "/old/kestrune") << "there is no program to start";
  const std::string moved = program("kestrune");
  EXPECT_TRUE(item(moved).isEnabled());
  EXPECT_EQ(folder.read(entry), head + "env KESTRUNE_START=quiet \"" + moved + '"' + tail);
  EXPECT_TRUE(std::filesystem::is_symlink(folder / entry));

  const std::string own = head + "nice \"" + moved + '"' + tail;
  folder.write(entry, own);
  EXPECT_TRUE(item(moved).isEnabled());
  EXPECT_EQ(folder.read(entry), own) << "it names the program";
}

}  // namespace
}  // namespace kestrune::platform
