#include <csignal>

#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <gmock/gmock.h>
#include <sys/wait.h>

#include "PrivateBus.h"
#include "platform/desktop/DesktopWorkspace.h"
#include "platform/desktop/SettingsCommand.h"

namespace kestrune::desktop {
namespace {

using platform::SettingsPanel;
using testing::Contains;
using testing::ElementsAre;

TEST(SettingsCommandTest, findsThePanelOfTheDesktop) {
  struct Case {
    std::string desktops;
    SettingsPanel panel;
    CommandLine best;  // empty: none
  };
  for (const auto& [desktops, panel, best] : {
           Case{"ubuntu:GNOME", SettingsPanel::notifications, {"gnome-control-center", "notifications"}},
           Case{"GNOME", SettingsPanel::location, {"gnome-control-center", "location"}},
           Case{"KDE", SettingsPanel::fileAccess, {"systemsettings", "kcm_flatpak"}},
           Case{"MATE", SettingsPanel::notifications, {"mate-notification-properties"}},
           Case{"KDE", SettingsPanel::location, {}},
           Case{"", SettingsPanel::notifications, {}},
           Case{"NOTGNOME:", SettingsPanel::notifications, {}},
       }) {
    const auto commands = settingsCommands(desktops, panel);
    EXPECT_EQ(commands.empty() ? CommandLine() : commands.front(), best) << desktops;
  }
}

// A file manager on the bus that records what it is asked to show.
class FileManager final : public QDBusVirtualObject {
 public:
  std::vector<std::string> calls;

  QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
    const QString addresses = message.arguments().value(0).toStringList().join(' ');
    calls.push_back((message.member() + ' ' + addresses).toStdString());
    return bus.send(message.createReply());
  }
};

TEST(FileManagerTest, showsFoldersAndFiles) {
  test::PrivateBus bus;
  QDBusConnection connection = bus.connect("file manager");
  FileManager manager;
  connection.registerVirtualObject("/org/freedesktop/FileManager1", &manager);
  connection.registerService("org.freedesktop.FileManager1");
  DesktopWorkspace workspace;
  workspace.open(platform::FileLocation("/home/a b"));
  workspace.reveal(platform::FileLocation("/home/a b/\xFF"));
  EXPECT_TRUE(test::until([&] { return manager.calls.size() == 2; }));
  EXPECT_THAT(manager.calls,
              ElementsAre("ShowFolders file:///home/a%20b", "ShowItems file:///home/a%20b/%FF"));
}

// The test's own programs stand in for those of the desktop.
class DesktopWorkspaceTest : public testing::Test {
 protected:
  DesktopWorkspaceTest() {
    qputenv("PATH", QByteArray::fromStdString(folder.path()) + ":" + path);
    qputenv("XDG_CURRENT_DESKTOP", "KDE");
  }
  ~DesktopWorkspaceTest() override {
    qputenv("PATH", path);
    qunsetenv("XDG_CURRENT_DESKTOP");
  }

  // Installs a program that writes down its name, arguments, blocked signals and standard input.
  void install(const std::string& name) {
    const std::string part = folder / "note.part";
    // With a shell builtin, since the shell changes its blocked signals when it starts a program.
    folder.script(name,
                  "#!/bin/sh\n{ echo \"${0##*/}\"; printf '<%s>' \"$@\"; echo\n"
                  "while read -r key value; do [ $key = SigBlk: ] && echo $value; done </proc/$$/status\n"
                  "readlink /proc/self/fd/0; } >" +
                      part + "\nmv " + part + " " + folder / "note" + "\n");
  }

  std::vector<std::string> noteLines() {
    EXPECT_TRUE(test::until([this] { return folder.has("note"); })) << "nothing was started";
    std::istringstream note(folder.read("note"));
    std::vector<std::string> lines;
    for (std::string line; std::getline(note, line);) lines.push_back(line);
    return lines;
  }

  QByteArray path = qgetenv("PATH");
  test::TemporaryFolder folder;
  DesktopWorkspace workspace;
};

TEST_F(DesktopWorkspaceTest, startsTheFirstInstalledProgramDetached) {
  install("kcmshell5");
  sigset_t termination{};
  sigset_t before{};
  sigemptyset(&termination);
  sigaddset(&termination, SIGTERM);
  sigprocmask(SIG_BLOCK, &termination, &before);
  workspace.openSettings(SettingsPanel::notifications);
  sigprocmask(SIG_SETMASK, &before, nullptr);
  EXPECT_THAT(noteLines(), ElementsAre("kcmshell5", "<kcm_notifications>", "0000000000000000", "/dev/null"));
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "no child of ours, so no zombie";
}

TEST_F(DesktopWorkspaceTest, opensFoldersWithoutAFileManager) {
  install("xdg-open");
  workspace.reveal(platform::FileLocation("/home/a b/file"));
  EXPECT_THAT(noteLines(), Contains("<file:///home/a%20b>"));
}

}  // namespace
}  // namespace kestrune::desktop
