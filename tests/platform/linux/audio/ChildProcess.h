#pragma once

#include <string>
#include <vector>

#include <sys/types.h>

namespace kestrune::test {

// A program that runs beside the test, in the test's environment, until it is destroyed. It also ends when
// the test dies.
class ChildProcess {
 public:
  // Its output is dropped; what it complains about goes to the file `log`.
  ChildProcess(std::vector<std::string> command, const std::string& log);
  ~ChildProcess() { kill(); }
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  // Below 1: it couldn't be started.
  pid_t pid() const { return pid_; }
  // Ends it at once, and waits for that.
  void kill();
  // Waits until it is really stopped.
  void stop() const;
  void resume() const;

 private:
  pid_t pid_ = 0;
};

// Runs a program to its end and takes what it printed. Fails the test unless it succeeds.
std::string outputOf(const std::vector<std::string>& command);

}  // namespace kestrune::test
