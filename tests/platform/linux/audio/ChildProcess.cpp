#include "ChildProcess.h"

#include <array>
#include <csignal>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kestrune::test {
namespace {

class FileActions {
 public:
  FileActions() { posix_spawn_file_actions_init(&actions_); }
  ~FileActions() { posix_spawn_file_actions_destroy(&actions_); }
  FileActions(const FileActions&) = delete;
  FileActions& operator=(const FileActions&) = delete;

  void open(int fd, const std::string& path, int flags) {
    posix_spawn_file_actions_addopen(&actions_, fd, path.c_str(), flags, 0600);
  }
  void duplicate(int from, int to) { posix_spawn_file_actions_adddup2(&actions_, from, to); }
  const posix_spawn_file_actions_t* get() const { return &actions_; }

 private:
  posix_spawn_file_actions_t actions_{};
};

pid_t spawn(std::vector<std::string> command, const FileActions& files) {
  std::vector<char*> arguments;
  arguments.reserve(command.size() + 1);
  for (std::string& argument : command) arguments.push_back(argument.data());
  arguments.push_back(nullptr);
  pid_t pid = 0;
  const int error = posix_spawnp(&pid, arguments.front(), files.get(), nullptr, arguments.data(), environ);
  EXPECT_EQ(error, 0) << command.front() << ": " << strerror(error);
  return error == 0 ? pid : 0;
}

}  // namespace

ChildProcess::ChildProcess(std::vector<std::string> command, const std::string& log) {
  FileActions files;
  files.open(STDIN_FILENO, "/dev/null", O_RDONLY);
  files.open(STDOUT_FILENO, "/dev/null", O_WRONLY);
  files.open(STDERR_FILENO, log, O_WRONLY | O_CREAT | O_APPEND);
  command.insert(command.begin(), {"setpriv", "--pdeathsig", "KILL"});
  pid_ = spawn(std::move(command), files);
}

void ChildProcess::kill() {
  if (pid_ < 1) return;
  ::kill(pid_, SIGKILL);
  waitpid(pid_, nullptr, 0);
  pid_ = 0;
}

void ChildProcess::stop() const {
  ::kill(pid_, SIGSTOP);
  int status = 0;
  waitpid(pid_, &status, WUNTRACED);
  EXPECT_TRUE(WIFSTOPPED(status));
}

void ChildProcess::resume() const {
  ::kill(pid_, SIGCONT);
}

std::string outputOf(const std::vector<std::string>& command) {
  std::array<int, 2> ends{};
  EXPECT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
  FileActions files;
  files.open(STDIN_FILENO, "/dev/null", O_RDONLY);
  files.duplicate(ends[1], STDOUT_FILENO);
  const pid_t pid = spawn(command, files);
  close(ends[1]);
  std::string output;
  std::array<char, 4096> buffer{};
  for (ssize_t size = 0; (size = read(ends[0], buffer.data(), buffer.size())) > 0;) {
    output.append(buffer.data(), static_cast<std::size_t>(size));
  }
  close(ends[0]);
  int status = -1;
  if (pid > 0) waitpid(pid, &status, 0);
  EXPECT_EQ(status, 0) << testing::PrintToString(command);
  return output;
}

}  // namespace kestrune::test
