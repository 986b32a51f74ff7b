#include <csignal>
#include <cstdlib>
#include <future>

#include <gtest/gtest.h>
#include <poll.h>
#include <pthread.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "platform/linux/LinuxPlatform.h"
#include "platform/linux/LinuxSystemFacts.h"
#include "platform/linux/files/Files.h"
#include "platform/linux/files/Text.h"
#include "platform/linux/program/LinuxProcessEnvironment.h"
#include "platform/linux/program/TerminationSignals.h"
#include "support/ScriptedPlatform.h"
#include "support/TemporaryFolder.h"

namespace kestrune::platform {
namespace {

TEST(TerminationSignals, comeThroughTheDescriptor) {
  signal(SIGHUP, SIG_IGN);
  const auto before = signal(SIGINT, SIG_DFL);  // a shell may have had it ignored
  {
    TerminationSignals signals;
    const auto isReadable = [&] {
      pollfd waiting{.fd = signals.fd(), .events = POLLIN, .revents = 0};
      return poll(&waiting, 1, 0) == 1;
    };
    EXPECT_FALSE(signals.consume());
    pthread_kill(pthread_self(), SIGHUP);
    EXPECT_FALSE(isReadable()) << "ignored from the start";
    for (const int number : {SIGTERM, SIGINT}) {
      pthread_kill(pthread_self(), number);
      EXPECT_TRUE(isReadable());
      EXPECT_TRUE(signals.consume());
      EXPECT_FALSE(signals.consume());
    }
  }
  signal(SIGHUP, SIG_DFL);
  signal(SIGINT, before);
}

TEST(Platform, findsTheFolderForSettings) {
  const auto directory = [](std::map<std::string, std::string> variables) {
    test::ScriptedEnvironment environment;
    environment.variables = std::move(variables);
    return configDirectory(environment);
  };
  EXPECT_EQ(directory({{"HOME", "/home/u"}, {"XDG_CONFIG_HOME", "/cfg"}}), "/cfg");
  EXPECT_EQ(directory({{"HOME", "/home/u"}, {"XDG_CONFIG_HOME", "relative"}}), "/home/u/.config");
  EXPECT_EQ(directory({{"HOME", "/home/u"}, {"XDG_CONFIG_HOME", ""}}), "/home/u/.config");
  EXPECT_EQ(directory({}), "");
}

TEST(SystemFacts, nameTheDistributionAndTheKernel) {
  const test::TemporaryFolder root;
  test::ScriptedEnvironment environment;
  LinuxSystemFacts facts(root.path(), environment);
  EXPECT_EQ(facts.operatingSystemVersion(), "");
  root.write("usr/lib/os-release", "NAME=Distribution\nPRETTY_NAME=Distribution 1\n");
  EXPECT_EQ(facts.operatingSystemVersion(), "Distribution 1");
  root.write("etc/os-release", "PRETTY_NAME=\"Distribution 2 (\xFF)\"\n");
  root.write("proc/sys/kernel/osrelease", "6.1.0-9-amd64\n");
  EXPECT_EQ(facts.operatingSystemVersion(), "Distribution 2 (\xEF\xBF\xBD) · 6.1.0-9-amd64");
}

TEST(SystemFacts, bootTimeIsTheKernels) {
  test::ScriptedEnvironment environment;
  const std::string stat = readFile("/proc/stat", std::size_t{1} << 22U).value_or("");
  const auto kernels = parseNumber<std::int64_t>(lineAfter(stat, "btime "));
  ASSERT_TRUE(kernels);
  EXPECT_NEAR(static_cast<double>(LinuxSystemFacts("/", environment).bootTime().value()),
              static_cast<double>(*kernels), 2);
}

TEST(Platform, readsBelowItsRootAndWalksInASlowLane) {
  const test::TemporaryFolder config;
  LinuxPlatform computer(test::fixture("hybrid-laptop"), config.path(), config.path());
  test::ScriptedPlatform scripted;
  const Platform platform = computer.platform(scripted.notifications, scripted.workspace);
  EXPECT_EQ(platform.chip.performanceCores(), 6);
  platform.preferences.store("key", true);
  EXPECT_TRUE(config.has("kestrune/preferences.json"));
  EXPECT_EQ(platform.historyFolder.write("day", "{}"), std::nullopt);
  EXPECT_TRUE(config.has("Kestrune/history/day"));

  constexpr int ofThread = 1;  // of the kernel's interface for I/O priorities
  // Niceness, class of I/O priority and name of the calling thread.
  const auto described = [] {
    char name[16]{};
    pthread_getname_np(pthread_self(), name, sizeof name);
    return std::to_string(getpriority(PRIO_PROCESS, static_cast<id_t>(gettid()))) + " " +
           std::to_string(syscall(SYS_ioprio_get, ofThread, 0) >> 13) + " " + name;
  };
  const std::string before = described();
  std::promise<std::string> lane;
  platform.processLane->submit([&] { lane.set_value(described()); });
  EXPECT_EQ(lane.get_future().get(), "10 3 kestrune-scan") << "class 3 is idle";
  EXPECT_EQ(described(), before) << "only that thread";
}

}  // namespace
}  // namespace kestrune::platform
