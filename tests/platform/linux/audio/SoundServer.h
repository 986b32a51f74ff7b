#pragma once

#include <memory>
#include <string>
#include <vector>

#include "support/ChildProcess.h"
#include "support/TemporaryFolder.h"

namespace kestrune::test {

// A private session: its folders are set in the environment, where programs and libraries look for them.
class PrivateSession {
 public:
  PrivateSession();
  std::string runtimeFolder() const { return folder / "run"; }
  std::unique_ptr<ChildProcess> start(const std::string& program, const std::string& arguments = "") const;
  // What the programs have written to standard error.
  std::string complaints() const { return outputOf("tail -n +1 " + folder / "*.log"); }

  TemporaryFolder folder;
};

// A real sound server in a session of its own, where libraries find it.
class SoundServer {
 public:
  enum class Kind { pulseAudio, pipeWire };
  explicit SoundServer(Kind kind) : kind_(kind) {}

  // Returns once the server answers.
  void start();
  void kill();
  // The process that clients are connected to.
  ChildProcess& process() { return *processes_.back(); }

  // Returns a number for `unload-module`.
  std::string addSink(const std::string& name, const std::string& description, int rate, int channels) const;
  void addSource(const std::string& name, const std::string& description) const;

  // Runs the server's control tool and returns its output, without the line break at the end.
  static std::string control(const std::string& arguments);
  // Programs that play silence, or record, until they are destroyed.
  std::unique_ptr<ChildProcess> play(const std::string& sink) const;
  std::unique_ptr<ChildProcess> record(const std::string& source) const;

 private:
  void launchPipeWire();

  Kind kind_;
  PrivateSession session_;
  std::unique_ptr<ChildProcess> bus_;
  std::vector<std::unique_ptr<ChildProcess>> processes_;
};

}  // namespace kestrune::test
