#include <gmock/gmock.h>

#include "platform/linux/AppIdentity.h"
#include "platform/linux/DesktopEntry.h"
#include "platform/linux/ProgramName.h"

namespace kestrune::linux_platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Strings = std::vector<std::string>;

std::string nameIn(std::string_view text, const Strings& locales) {
  const auto entry = parseDesktopEntry(text, locales);
  return entry ? entry->name : "none";
}

TEST(DesktopEntry, readsItsOwnGroup) {
  const auto entry = parseDesktopEntry(
      "# a comment\n\n[Desktop Entry]\r\nType = Application\nName= Fire \\s "
      "fox\\n\\q\\\\\nGenericName=Browser\n"
      "Icon=fox\nExec=\"/opt/my fox/fox\" "
      "%U\nTryExec=fox\nCategories=System;TerminalEmulator;\nNoDisplay=true\n"
      "#Name=Comment\nno value\n[Desktop Action new]\nName=New Window\nExec=fox --new\nHidden=true\n",
      {});
  ASSERT_TRUE(entry);
  EXPECT_EQ(entry->name, "Fire   fox\n\\q\\");
  EXPECT_EQ(entry->icon, "fox");
  EXPECT_EQ(entry->exec, "\"/opt/my fox/fox\" %U");
  EXPECT_EQ(entry->tryExec, "fox");
  EXPECT_TRUE(entry->isTerminal);
  EXPECT_TRUE(entry->isNoDisplay);
  EXPECT_FALSE(entry->isHidden);
}

TEST(DesktopEntry, isAbsentWhereNoApplicationIsDescribed) {
  for (const char* text : {"", "[Desktop Entry]", "Type=Application\nName=x", "[Desktop Entry]\nName=x\n",
                           "[Desktop Entry]\nType=Link\nName=x", "[Other]\nType=Application\n"}) {
    EXPECT_FALSE(parseDesktopEntry(text, {})) << text;
  }
  const auto hidden = parseDesktopEntry("[Desktop Entry]\nHidden=true", {});
  EXPECT_TRUE(hidden && hidden->isHidden);
}

TEST(DesktopEntry, speaksTheUsersLanguage) {
  constexpr std::string_view text =
      "[Desktop "
      "Entry]\nType=Application\nName[es]=Zorro\nName=Fox\nName[es_MX]=Zorrito\nName[de]=Fuchs\nName[=x\n";
  EXPECT_EQ(nameIn(text, {}), "Fox");
  EXPECT_EQ(nameIn(text, {"fr"}), "Fox");
  EXPECT_EQ(nameIn(text, {"es_ES", "es"}), "Zorro");
  EXPECT_EQ(nameIn(text, {"es_MX", "es"}), "Zorrito");
  EXPECT_EQ(nameIn(text, {"fr", "de", "es"}), "Fuchs");
}

TEST(LocaleNames, goFromTheWholeToTheLanguage) {
  EXPECT_THAT(localeNames("sr_RS.UTF-8@latin"), ElementsAre("sr_RS@latin", "sr_RS", "sr@latin", "sr"));
  EXPECT_THAT(localeNames("es_MX.UTF-8"), ElementsAre("es_MX", "es"));
  EXPECT_THAT(localeNames("eo"), ElementsAre("eo"));
  for (const char* locale : {"", "C", "POSIX", "C.UTF-8"})
    EXPECT_THAT(localeNames(locale), IsEmpty()) << locale;
}

TEST(ExecArguments, areUnquotedAndWithoutPlaceholders) {
  EXPECT_THAT(execArguments(R"(fox --new "a \"b\" \\ c" %U 100%% --x=%i)"),
              ElementsAre("fox", "--new", R"(a "b" \ c)", "100%", "--x=%i"));
  EXPECT_THAT(execArguments(R"( /opt/my\ fox/fox	"" )"), ElementsAre("/opt/my fox/fox", ""));
  for (const char* broken : {"", "  ", R"(fox "open)", "\"", R"(fox "\")"}) {
    EXPECT_THAT(execArguments(broken), IsEmpty()) << broken;
  }
}

TEST(ProgramIn, isWhatACommandReallyStarts) {
  const auto program = [](const Strings& arguments) { return std::string(programIn(arguments)); };
  EXPECT_EQ(program({"/usr/bin/fox", "-x"}), "/usr/bin/fox");
  EXPECT_EQ(program({"env", "-i", "A=/b", "fox"}), "fox");
  EXPECT_EQ(program({"/usr/bin/python3.11", "-u", "/usr/share/foo/foo.py", "--x"}), "/usr/share/foo/foo.py");
  EXPECT_EQ(program({"java", "-jar", "/opt/foo.jar"}), "/opt/foo.jar");
  EXPECT_EQ(program({"env", "python3", "foo"}), "foo");
  for (const Strings& nothing : {Strings{}, Strings{"env"}, Strings{"python3"}, Strings{"sh", "-c", "fox"},
                                 Strings{"python3", "-m", "http"}, Strings{"bash", "-l"},
                                 Strings{"/usr/bin/flatpak", "run", "org.fox"}, Strings{"pkexec", "fox"}}) {
    EXPECT_EQ(program(nothing), "") << testing::PrintToString(nothing);
  }
  for (const char* name : {"sh", "bash", "python3", "python3.11", "perl5.36", "guile-3.0", "gjs-console"}) {
    EXPECT_TRUE(isInterpreter(name)) << name;
  }
  for (const char* name : {"", "3", "fox", "shotwell", "javaws"}) EXPECT_FALSE(isInterpreter(name)) << name;
}

std::string idIn(std::string_view path) {
  const auto unit = parseAppCgroup("0::" + std::string(path) + "\n");
  return unit ? unit->id : "none";
}

TEST(AppCgroup, namesTheApplicationThatWasLaunched) {
  const std::string slice = "/user.slice/user-1000.slice/user@1000.service/app.slice/";
  EXPECT_EQ(idIn(slice + "app-gnome-org.gnome.Totem-2214.scope"), "org.gnome.Totem");
  EXPECT_EQ(idIn(slice + R"(app-gnome-fox\x2desr-2214.scope)"), "fox-esr");
  EXPECT_EQ(idIn(slice + "app-fox-0123456789abcdef.scope"), "fox");
  EXPECT_EQ(idIn(slice + "app-org.kde.elisa@0123456789abcdef.service"), "org.kde.elisa");
  EXPECT_EQ(idIn(slice + R"(app-blue\x2dman@autostart.service)"), "blue-man");
  EXPECT_EQ(idIn(slice + "app-KDE-org.kde.elisa.service"), "org.kde.elisa");
  EXPECT_EQ(idIn(slice + "app-gnome-fox.desktop-2214.scope"), "fox");
  EXPECT_EQ(idIn(slice + "app-org.kde.konsole-77.scope/main"), "org.kde.konsole")
      << "a part of its own making";
  EXPECT_EQ(idIn(slice + "snap.fox.fox-0b0c9d55-1a2b-4c3d-8e9f-00112233aabb.scope"), "fox_fox");
  EXPECT_EQ(idIn(slice + "snap.spot.daemon.service"), "spot_daemon");
  EXPECT_EQ(idIn(slice + R"(app-dbus\x2d:1.2\x2dorg.fox.slice/dbus-:1.2-org.gnome.Calculator@0.service)"),
            "org.gnome.Calculator");
}

TEST(AppCgroup, isAbsentForEverythingElse) {
  for (const char* path :
       {"/", "/init.scope", "/system.slice/cron.service", "/user.slice/session-2.scope", "/app-.scope",
        "/user@1000.service/app.slice/app-org.gnome.Terminal.slice/vte-spawn-1234.scope",
        "/app-org.kde.konsole-77.scope/tab(88).scope", "/app-a-b-c-d.scope", "/snap.fox.scope",
        "/app-gnome-fox-22.slice", "/app-x.scope", "/dbus-:1.2.service", ""}) {
    EXPECT_EQ(idIn(path), "none") << path;
  }
  for (const char* text : {"", "\n:::\n", "7", "3:cpu:/app-fox-1.scope\n"})
    EXPECT_FALSE(parseAppCgroup(text)) << text;
}

TEST(AppCgroup, tellsTheKindAndKnowsOlderHierarchies) {
  EXPECT_EQ(parseAppCgroup("9:pids:/x\n1:name=systemd:/user.slice/app-flatpak-org.fox-31.scope\n0::/\n"),
            (AppUnit{.id = "org.fox", .kind = AppUnit::Kind::flatpak}));
  EXPECT_EQ(parseAppCgroup("0::/app-flatpak-31.scope"),
            (AppUnit{.id = "flatpak", .kind = AppUnit::Kind::launched}));
}

TEST(FlatpakInfo, namesTheApplication) {
  EXPECT_EQ(parseFlatpakId("[Application]\nname=org.fox\nruntime=x\n[Instance]\nname=no\n"), "org.fox");
  for (const char* text : {"", "[Instance]\nname=x\n", "name=x", "[Runtime]\nname=x\n[Application]\n"}) {
    EXPECT_EQ(parseFlatpakId(text), "") << text;
  }
}

}  // namespace
}  // namespace kestrune::linux_platform
