#pragma once

#include <memory>
#include <string>

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
  virtual ~SoundServer() = default;

  // Returns once the server answers.
  void start();
  virtual void kill() = 0;
  // The process that clients are connected to.
  virtual ChildProcess& process() = 0;

  // Both return a number for `unload-module`.
  std::string addSink(const std::string& name, const std::string& description, int rate, int channels) const;
  virtual std::string addSource(const std::string& name, const std::string& description) const = 0;

  // Runs the server's control tool and returns its output, without the line break at the end.
  static std::string control(const std::string& arguments);
  // Programs that play silence, or record, until they are destroyed.
  std::unique_ptr<ChildProcess> play(const std::string& sink) const;
  std::unique_ptr<ChildProcess> record(const std::string& source) const;

 protected:
  virtual void launch() = 0;
  // A control command that succeeds once the server is ready.
  virtual std::string question() const = 0;

  PrivateSession session;
};

std::unique_ptr<SoundServer> makePulseAudio();
std::unique_ptr<SoundServer> makePipeWire();

}  // namespace kestrune::test
