#include <gtest/gtest.h>

#include "platform/linux/applications/AppIdentity.h"
#include "platform/linux/applications/DesktopEntry.h"
#include "platform/linux/processes/ProgramName.h"

namespace kestrune::platform {
namespace {

using Strings = std::vector<std::string>;

std::string nameIn(std::string_view text, const Strings& locales) {
  const auto entry = parseDesktopEntry(text, locales);
  return entry ? entry->name : "none";
}

TEST(DesktopEntry, readsItsOwnGroup) {
  const auto entry = parseDesktopEntry(
      "# a comment\n\n[Desktop Entry]\r\nType = Application\nName= Fire \\s fox\\n\\q\\\\\nIcon=fox\n"
      "GenericName=Browser\nExec=\"/opt/my fox/fox\" %U\nTryExec=fox\nNoDisplay=true\n"
      "Categories=System;TerminalEmulator;\n#Name=Comment\nno value\n"
      "[Desktop Action new]\nName=New Window\nExec=fox --new\nHidden=true\n",
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

TEST(DesktopEntry, isAbsentUnlessItDescribesAnApplication) {
  for (const char* text : {"", "[Desktop Entry]", "Type=Application\nName=x", "[Desktop Entry]\nName=x\n",
                           "[Desktop Entry]\nType=Link\nName=x", "[Other]\nType=Application\n"}) {
    EXPECT_FALSE(parseDesktopEntry(text, {})) << text;
  }
  const auto hidden = parseDesktopEntry("[Desktop Entry]\nHidden=true", {});
  EXPECT_TRUE(hidden && hidden->isHidden);
}

TEST(DesktopEntry, prefersTheUsersLanguages) {
  constexpr std::string_view text =
      "[Desktop Entry]\nType=Application\nName[es]=Zorro\nName=Fox\nName[es_MX]=Zorrito\n"
      "Name[de]=Fuchs\nName[=x\n";
  EXPECT_EQ(nameIn(text, {}), "Fox");
  EXPECT_EQ(nameIn(text, {"es_ES", "es"}), "Zorro");
  EXPECT_EQ(nameIn(text, {"es_MX", "es"}), "Zorrito");
}

std::string idIn(std::string_view path) {
  const auto unit = parseAppCgroup("0::" + std::string(path) + "\n");
  return unit ? unit->id : "none";
}

TEST(AppCgroup, namesTheLaunchedApplication) {
  for (const auto& [unit, id] :
       {std::pair(R"(app-gnome-fox\x2desr-2214.scope)", "fox-esr"),
        {"app-fox-0123456789abcdef.scope", "fox"},
        {"app-org.kde.elisa@0123456789abcdef.service", "org.kde.elisa"},
        {"app-KDE-org.kde.elisa.service", "org.kde.elisa"},
        {"app-gnome-fox.desktop-2214.scope", "fox"},
        {"app-org.kde.konsole-77.scope/main", "org.kde.konsole"},
        {"snap.fox.fox-0b0c9d55-1a2b-4c3d-8e9f-00112233aabb.scope", "fox_fox"},
        {R"(app-dbus\x2d:1.2\x2dorg.fox.slice/dbus-:1.2-org.gnome.Calculator@0.service)",
         "org.gnome.Calculator"}}) {
    EXPECT_EQ(idIn("/user.slice/user-1000.slice/user@1000.service/app.slice/" + std::string(unit)), id);
  }
}

TEST(AppCgroup, readsVersion1Hierarchies) {
  EXPECT_EQ(parseAppCgroup("9:pids:/x\n1:name=systemd:/user.slice/app-flatpak-org.fox-31.scope\n0::/\n"),
            (AppUnit{.id = "org.fox", .kind = AppUnit::Kind::flatpak}));
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

}  // namespace
}  // namespace kestrune::platform
