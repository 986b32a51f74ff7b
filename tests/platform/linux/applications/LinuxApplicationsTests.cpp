#include <filesystem>

#include <gmock/gmock.h>

#include "platform/linux/applications/LinuxApplications.h"
#include "support/ScriptedPlatform.h"
#include "support/TemporaryFolder.h"

namespace kestrune::platform {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

std::string scope(const std::string& unit) {
  return "0::/user.slice/user-1000.slice/user@1000.service/app.slice/" + unit + "\n";
}

class LinuxApplicationsTest : public testing::Test {
 protected:
  void desktopFile(const std::string& path, const std::string& exec, const std::string& more = "") {
    const std::string name = fs::path(path).stem().string();
    root.write(path, "[Desktop Entry]\nType=Application\nName=The " + name + "\nName[es]=El " + name +
                         "\nExec=" + exec + "\n" + more);
  }
  void application(const std::string& id, const std::string& exec, const std::string& more = "") {
    desktopFile("usr/share/applications/" + id + ".desktop", exec, more);
  }
  void program(const std::string& path) { root.write(path.substr(1), "#!"); }
  void link(const std::string& path, const std::string& target) { root.link(path.substr(1), target); }
  void process(int pid, const std::string& executable, const std::string& cgroup = "0::/\n",
               const std::vector<std::string>& arguments = {}) {
    const std::string folder = "proc/" + std::to_string(pid);
    root.write(folder + "/cgroup", cgroup);
    std::string line;
    for (const std::string& argument : arguments) line += argument + '\0';
    root.write(folder + "/cmdline", line);
    if (!executable.empty()) root.link(folder + "/exe", executable);
  }
  std::string idOf(int pid) {
    const auto found = applications.runningApplication(pid);
    return found ? found->bundleIdentifier.value_or("no id") : "none";
  }
  std::string idOfProgram(const std::string& executable, const std::vector<std::string>& arguments = {}) {
    process(99, executable, "0::/\n", arguments);
    return idOf(99);
  }

  test::TemporaryFolder root;
  LinuxApplications applications{ApplicationPlaces{.root = root.path(),
                                                   .dataDirectories = {"/home/u/.local/share", "/usr/share"},
                                                   .programDirectories = {"/usr/bin"},
                                                   .localeNames = {"es_ES", "es"}}};
};

TEST_F(LinuxApplicationsTest, processesBelongToWhatTheDesktopLaunched) {
  program("/usr/bin/fox");
  application("org.fox", "fox %U");
  process(10, "/usr/lib/fox/content-process", scope("app-gnome-org.fox-10.scope"));
  EXPECT_EQ(idOf(10), "org.fox");
  EXPECT_EQ(applications.runningApplication(10)->localizedName, "El org.fox");

  process(11, "/opt/hen", scope("app-gnome-hen-11.scope"));
  EXPECT_EQ(idOf(11), "hen") << "it has no desktop file";
  EXPECT_EQ(applications.runningApplication(11)->localizedName, "");
  process(12, "/usr/bin/fox", scope("app-gnome-wrapper-12.scope"));
  EXPECT_EQ(idOf(12), "org.fox");
  process(13, "/opt/hen", scope("dbus-:1.2-org.hen@0.service"));
  EXPECT_EQ(idOf(13), "none") << "perhaps not an application";
  process(14, "", "");
  EXPECT_EQ(idOf(14), "none");
  for (const int gone : {15, 0, -1}) EXPECT_EQ(idOf(gone), "none");
}

TEST_F(LinuxApplicationsTest, programsInTerminalsAreNotTheTerminal) {
  for (const char* name : {"/usr/bin/term", "/usr/bin/player"}) program(name);
  application("term", "term", "Categories=System;TerminalEmulator;\n");
  application("player", "player %U");
  const std::string cgroup = scope("app-gnome-term-20.scope");
  process(20, "/usr/bin/term", cgroup);
  process(21, "/usr/bin/player", cgroup);
  process(22, "/usr/bin/bash", cgroup, {"bash"});
  EXPECT_EQ(idOf(20), "term");
  EXPECT_EQ(idOf(21), "player");
  EXPECT_EQ(idOf(22), "none");
}

TEST_F(LinuxApplicationsTest, recognisesSandboxes) {
  application("org.fox", "/usr/bin/flatpak run org.fox");
  process(30, "/app/bin/x", scope("app-flatpak-org.fox-30.scope"));
  process(31, "/app/bin/x", scope("app-flatpak-org.hen-31.scope"));
  process(32, "/app/bin/x");
  root.write("proc/32/root/.flatpak-info", "[Application]\nname=org.fox\n");
  EXPECT_EQ(idOf(30), "org.fox");
  EXPECT_EQ(idOf(31), "org.hen");
  EXPECT_EQ(applications.runningApplication(32)->localizedName, "El org.fox");
}

TEST_F(LinuxApplicationsTest, recognisesProgramsByTheirCommands) {
  program("/usr/bin/fox");
  application("fox", "fox %U");
  application("fox-private", "fox --private %U");
  application("alias", "fox", "NoDisplay=true\n");
  EXPECT_EQ(idOfProgram("/usr/bin/fox"), "fox");
  EXPECT_EQ(idOfProgram("/usr/lib/fox-1.2/fox (deleted)"), "fox") << "a wrapper of the same name started it";
  EXPECT_EQ(idOfProgram("/usr/bin/foxy"), "none");

  program("/opt/maker/chrome/chrome-wrapper");
  link("/usr/bin/chrome", "../../opt/maker/chrome/chrome-wrapper");
  application("chrome", "/usr/bin/chrome");
  EXPECT_EQ(idOfProgram("/opt/maker/chrome/chrome-bin"), "chrome") << "in a folder of its own";

  program("/opt/game/run");
  application("game", "/opt/game/run");
  EXPECT_EQ(idOfProgram("/opt/game/run"), "game");
  EXPECT_EQ(idOfProgram("/home/u/run"), "none") << "only its folder's name for it";
  program("/usr/bin/wrapped");
  application("wrapped", "sh -c \"exec wrapped\"", "TryExec=wrapped\n");
  EXPECT_EQ(idOfProgram("/usr/bin/wrapped"), "wrapped");
}

TEST_F(LinuxApplicationsTest, interpretersAreNoApplications) {
  for (const char* name :
       {"/usr/bin/python3.11", "/usr/bin/tweaks", "/usr/share/foo/foo.py", "/usr/bin/snap"})
    program(name);
  link("/usr/bin/python3", "python3.11");
  link("/usr/bin/snapped", "snap");
  application("python", "/usr/bin/python3.11");
  application("foo", "python3 /usr/share/foo/foo.py %F");
  application("tweaks", "tweaks");
  application("shell", "sh -c \"tweaks; true\"");
  application("snapped", "env HINT=/x /usr/bin/snapped %U");
  const auto python = [&](std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "python3");
    return idOfProgram("/usr/bin/python3.11", arguments);
  };
  EXPECT_EQ(python({}), "none");
  EXPECT_EQ(python({"/usr/share/foo/foo.py"}), "foo");
  EXPECT_EQ(python({"-u", "/usr/bin/tweaks", "x"}), "tweaks");
  EXPECT_EQ(python({"/home/u/foo.py"}), "none");
  EXPECT_EQ(python({"foo.py"}), "none") << "of an unknown folder";
  EXPECT_EQ(python({"-c", "/usr/bin/tweaks"}), "none");
  EXPECT_EQ(idOfProgram("/usr/bin/dash", {"sh", "-c", "tweaks; true"}), "none");
  EXPECT_EQ(idOfProgram("/usr/bin/snap", {"snap", "refresh"}), "none");
}

TEST_F(LinuxApplicationsTest, earlierFoldersWinAndSubfoldersPrefixIds) {
  desktopFile("home/u/.local/share/applications/fox.desktop", "fox", "Icon=own\n");
  application("fox", "fox");
  application("hen", "hen");
  root.write("home/u/.local/share/applications/hen.desktop", "[Desktop Entry]\nHidden=true\n");
  desktopFile("usr/share/applications/kde/media/player.desktop", "player");
  root.write("usr/share/applications/mimeinfo.cache", "");
  link("/usr/share/applications/loop", ".");
  EXPECT_EQ(applications.applicationPath("fox"), root / "home/u/.local/share/applications/fox.desktop");
  EXPECT_EQ(applications.applicationPath("hen"), std::nullopt);
  EXPECT_EQ(applications.applicationPath("kde-media-player"),
            root / "usr/share/applications/kde/media/player.desktop");
  for (const char* none : {"owl", "", "../fox", "mimeinfo.cache"})
    EXPECT_FALSE(applications.applicationPath(none));
}

TEST_F(LinuxApplicationsTest, noticesInstallationsAndRemovals) {
  EXPECT_FALSE(applications.applicationPath("fox"));
  application("fox", "fox");
  EXPECT_TRUE(applications.applicationPath("fox"));
  desktopFile("usr/share/applications/sub/hen.desktop", "hen");
  EXPECT_TRUE(applications.applicationPath("sub-hen"));

  const auto lately = fs::last_write_time(root / "usr/share/applications/sub");
  desktopFile("usr/share/applications/sub/cow.desktop", "cow");
  fs::last_write_time(root / "usr/share/applications/sub", lately);
  EXPECT_TRUE(applications.applicationPath("sub-cow")) << "changed within the same instant";

  // Long after.
  const auto longAgo = fs::file_time_type::clock::now() - std::chrono::hours(1);
  for (const char* folder : {"usr/share/applications", "usr/share/applications/sub"}) {
    fs::last_write_time(root / folder, longAgo);
  }
  EXPECT_TRUE(applications.applicationPath("fox"));
  fs::remove(root / "usr/share/applications/sub/hen.desktop");
  EXPECT_FALSE(applications.applicationPath("sub-hen"));
  fs::last_write_time(root / "usr/share/applications/sub", longAgo);
  desktopFile("home/u/.local/share/applications/owl.desktop", "owl");
  EXPECT_TRUE(applications.applicationPath("owl")) << "the folder is new";
}

TEST(ApplicationPlaces, followTheEnvironment) {
  test::ScriptedEnvironment own;
  own.variables = {{"HOME", "/home/u"},
                   {"XDG_DATA_DIRS", "/a/:relative::/usr/share:/a"},
                   {"PATH", "/home/u/bin:/usr/bin"},
                   {"LC_ALL", ""},
                   {"LANG", "es_MX.UTF-8"},
                   {"LANGUAGE", "ca:es"}};
  const auto places = applicationPlaces(own);
  EXPECT_THAT(
      places.dataDirectories,
      ElementsAre("/home/u/.local/share", "/a", "/usr/share", "/home/u/.local/share/flatpak/exports/share",
                  "/var/lib/flatpak/exports/share", "/var/lib/snapd/desktop"));
  EXPECT_EQ(places.programDirectories.front(), "/home/u/bin");
  EXPECT_THAT(places.localeNames, ElementsAre("ca", "es", "es_MX", "es"));
  own.variables = {{"LANG", "C.UTF-8"}, {"LANGUAGE", "es"}};
  EXPECT_TRUE(applicationPlaces(own).localeNames.empty());
}

}  // namespace
}  // namespace kestrune::platform
