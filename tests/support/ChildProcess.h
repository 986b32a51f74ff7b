#pragma once

#include <array>
#include <csignal>
#include <cstdio>
#include <string>

#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kestrune::test {

// A program that runs beside the test, in the test's environment, until this object is destroyed or the test
// dies.
class ChildProcess {
 public:
  // Output is discarded; what goes to standard error is appended to the file `log`.
  ChildProcess(const std::string& command, const std::string& log) {
    std::string line = "exec setpriv --pdeathsig KILL " + command + " </dev/null >/dev/null 2>>" + log;
    std::array<std::string, 2> shell{"sh", "-c"};
    const std::array<char*, 4> arguments{shell[0].data(), shell[1].data(), line.data(), nullptr};
    EXPECT_EQ(posix_spawn(&pid_, "/bin/sh", nullptr, nullptr, arguments.data(), environ), 0) << command;
  }
  ~ChildProcess() {
    if (pid_ < 1) return;
    kill(pid_, SIGKILL);
    waitpid(pid_, nullptr, 0);
  }
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  pid_t pid() const { return pid_; }
  // Returns once the process is stopped.
  void stop() const {
    kill(pid_, SIGSTOP);
    int status = 0;
    waitpid(pid_, &status, WUNTRACED);
    EXPECT_TRUE(WIFSTOPPED(status));
  }
  void resume() const { kill(pid_, SIGCONT); }

 private:
  pid_t pid_ = 0;
};

// Runs a command to its end and returns its output. Fails the test unless the command succeeds.
inline std::string outputOf(const std::string& command) {
  std::string output;
  std::FILE* const pipe = popen(command.c_str(), "re");
  for (int c = 0; (c = std::fgetc(pipe)) != EOF;) output += static_cast<char>(c);
  EXPECT_EQ(pclose(pipe), 0) << command;
  return output;
}

}  // namespace kestrune::test
