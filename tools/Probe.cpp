// Prints what every provider sees, one JSON object a second, without any window.

#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string_view>

#include <poll.h>

#include "SnapshotJson.h"
#include "app/AppEnvironment.h"
#include "platform/linux/LinuxPlatform.h"

namespace {

using namespace kestrune;
using namespace std::chrono_literals;

// The number of objects to print; absent: the command line is invalid.
std::optional<int> parse(int argc, char** argv) {
  constexpr int standard = 10;
  if (argc == 1) return standard;
  if (argc != 3 || std::string_view(argv[1]) != "--seconds") return std::nullopt;
  const std::string_view text = argv[2];
  int seconds = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
  const bool isCount = error == std::errc() && end == text.data() + text.size() && seconds > 0;
  return isCount ? std::optional(seconds) : std::nullopt;
}

// The probe sends no notifications, and the day's file belongs to the program, which may be running too.
class SilentNotifications final : public platform::UserNotifications {
 public:
  void authorizationStatus(std::function<void(platform::NotificationAuthorization)>) override {}
  void requestAuthorization(std::function<void()>) override {}
  void deliver(const platform::UserNotification&, std::function<void(std::optional<std::string>)>) override {}
};

class UnusedWorkspace final : public platform::Workspace {
 public:
  void openSettings(platform::SettingsPanel) override {}
  void open(const platform::FileLocation&) override {}
  void reveal(const platform::FileLocation&) override {}
};

class NoHistoryFolder final : public platform::HistoryFolder {
 public:
  std::optional<std::string> read(const std::string&) override { return std::nullopt; }
  bool exists(const std::string&) override { return false; }
  std::optional<std::string> write(const std::string&, const std::string&) override { return std::nullopt; }
};

Task print(MainLoop&, AppEnvironment* environment, int seconds, bool* isDone) {
  for (int i = 0; i < seconds && !*isDone; ++i) {
    co_await sleep(1s);
    const std::string line = tools::snapshotJson(*environment).dump();
    // Stops when the reader closes the pipe.
    *isDone = std::puts(line.c_str()) < 0 || std::fflush(stdout) != 0;
  }
  *isDone = true;
}

}  // namespace

int main(int argc, char** argv) {
  const auto seconds = parse(argc, argv);
  if (!seconds) {
    std::fputs("usage: kestrune_probe [--seconds N]\n", stderr);
    return EXIT_FAILURE;
  }
  platform::LinuxPlatform computer;
  SilentNotifications notifications;
  UnusedWorkspace workspace;
  NoHistoryFolder historyFolder;
  const platform::Platform services = computer.platform(notifications, workspace, &historyFolder);
  MainLoop loop(services.clock, computer.loopDescriptor());
  Preferences preferences(services.preferences);
  const Catalogue texts;
  LocaleFormats formats("");
  AppEnvironment environment(loop, services,
                             {.preferences = preferences, .texts = texts, .formats = formats});
  bool isDone = false;
  print(loop, &environment, *seconds, &isDone);
  while (!isDone) {
    pollfd wake{.fd = computer.loopDescriptor().fd(), .events = POLLIN, .revents = 0};
    poll(&wake, 1, -1);
    loop.run();
  }
  // A reading that hangs in a lane must not keep the process alive.
  std::_Exit(EXIT_SUCCESS);
}
