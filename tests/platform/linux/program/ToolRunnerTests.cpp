#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/linux/files/UniqueFd.h"
#include "platform/linux/program/ToolRunner.h"
#include "support/TemporaryFolder.h"

namespace kestrune::platform {
namespace {

using namespace std::string_literals;

class ToolRunnerTest : public testing::Test {
 protected:
  ~ToolRunnerTest() override {
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "a child is left";
    EXPECT_EQ(errno, ECHILD);
  }
  static std::optional<std::string> shell(const std::string& script) {
    return runTool("/bin/sh", {"-c", script});
  }
};

TEST_F(ToolRunnerTest, passesArgumentsAndOutputUnchanged) {
  EXPECT_EQ(runTool("/usr/bin/printf", {"%s|", "a b", "", "$HOME; `id` *", "\"'\n"}),
            "a b||$HOME; `id` *|\"'\n|");
  EXPECT_EQ(shell("printf 'a\\0b'; exit 3"), "a\0b"s) << "whatever its exit status";
  EXPECT_EQ(shell("kill -9 $$"), "");
  EXPECT_EQ(shell("exec >&-; echo lost >&2"), "");
}

TEST_F(ToolRunnerTest, readsBothPipesAndLimitsTheOutput) {
  const auto output =
      shell("head -c 300000 /dev/zero >&2; head -c 1000 /dev/zero; head -c 300000 /dev/zero >&2");
  ASSERT_TRUE(output);
  EXPECT_EQ(output->size(), 1000U);
  const auto flood = shell("head -c 3000000 /dev/zero; echo end");
  ASSERT_TRUE(flood);
  EXPECT_EQ(flood->size(), 1048576U);
}

TEST_F(ToolRunnerTest, startsOnlyExecutables) {
  const test::TemporaryFolder folder;
  folder.write("plain", "#!/bin/sh\necho no\n");
  folder.script("garbage", "no program\n");
  folder.script("tool", "#!/bin/sh\necho yes\n");
  EXPECT_TRUE(isExecutableFile(folder / "tool"));
  EXPECT_EQ(runTool(folder / "tool", {}), "yes\n");
  EXPECT_EQ(runTool(folder / "garbage", {}), std::nullopt);
  for (const std::string& path : {folder / "plain", folder / "missing", folder.path(), ""s}) {
    EXPECT_FALSE(isExecutableFile(path)) << path;
    EXPECT_EQ(runTool(path, {}), std::nullopt) << path;
  }
}

TEST_F(ToolRunnerTest, childrenInheritNothing) {
  sigset_t blocked{};
  sigset_t before{};
  sigemptyset(&blocked);
  for (const int signal : {SIGTERM, SIGINT, SIGHUP, SIGUSR2}) sigaddset(&blocked, signal);
  pthread_sigmask(SIG_BLOCK, &blocked, &before);
  const auto ofPipes = std::signal(SIGPIPE, SIG_IGN);
  const UniqueFd inheritable(open("/dev/null", O_RDONLY));  // NOLINT(android-cloexec-open)
  const auto status = runTool("/bin/cat", {"/proc/self/status"}).value_or("");
  const auto files = runTool("/bin/ls", {"/proc/self/fd"});
  std::signal(SIGPIPE, ofPipes);
  pthread_sigmask(SIG_SETMASK, &before, nullptr);

  EXPECT_THAT(status, testing::HasSubstr("SigBlk:\t0000000000000000\n"));
  // Leaves out the two that the C library ignores for itself.
  constexpr std::uint64_t ordinarySignals = 0x7fffffff;
  const auto ignored = status.find("SigIgn:\t");
  ASSERT_NE(ignored, std::string::npos);
  EXPECT_EQ(std::stoull(status.substr(ignored + 8), nullptr, 16) & ordinarySignals, 0U);
  EXPECT_EQ(files, "0\n1\n2\n3\n") << "the last one is ls's own";
  EXPECT_EQ(shell("readlink /proc/self/fd/0; cat"), "/dev/null\n");
}

void ignore(int) {}

TEST_F(ToolRunnerTest, signalsDoNotInterruptTheWait) {
  struct sigaction action {};
  struct sigaction before {};
  action.sa_handler = ignore;
  sigaction(SIGUSR1, &action, &before);
  EXPECT_EQ(shell("for i in 1 2 3 4 5 6 7 8 9; do kill -USR1 $PPID; echo $i; done; exec >&- 2>&-; "
                  "kill -USR1 $PPID; kill -USR1 $PPID"),
            "1\n2\n3\n4\n5\n6\n7\n8\n9\n");
  sigaction(SIGUSR1, &before, nullptr);
}

// Started without any of the three, a process gives their numbers to what it opens next.
TEST_F(ToolRunnerTest, worksWithoutStandardFiles) {
  const pid_t child = fork();
  if (child == 0) {
    for (const int file : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) close(file);
    _exit(shell("echo out; echo err >&2; readlink /proc/self/fd/0") == "out\n/dev/null\n" ? 0 : 1);
  }
  int status = -1;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
}

}  // namespace
}  // namespace kestrune::platform
