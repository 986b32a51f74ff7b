#pragma once

#include <memory>
#include <string>
#include <vector>

#include "ChildProcess.h"
#include "support/TemporaryFolder.h"

namespace kestrune::test {

// The folders that make up a session of the test's own; set in the environment, where programs and libraries
// look.
class PrivateSession {
 public:
  PrivateSession();
  std::string log(const std::string& program) const { return folder_ / (program + ".log"); }
  std::string runtimeFolder() const { return folder_ / "run"; }
  void write(const std::string& file, const std::string& text) const { folder_.write(file, text); }
  // What the programs complained about.
  std::string complaints() const;

 private:
  TemporaryFolder folder_;
};

// A real sound server in its own session, where a library finds it without being told.
class SoundServer {
 public:
  virtual ~SoundServer() = default;

  // Starts it and waits until it answers.
  void start();
  virtual void kill() = 0;
  // The process that programs are connected to.
  virtual ChildProcess& process() = 0;

  // Each returns the number under which `remove` takes it away again.
  virtual std::string addSink(const std::string& name, const std::string& description, int rate,
                              int channels) = 0;
  virtual std::string addSource(const std::string& name, const std::string& description) = 0;
  void remove(const std::string& number) { control({"unload-module", number}); }

  // Lets the server's own tool do something; what it printed.
  std::string control(std::vector<std::string> arguments);
  // Programs that play silence, and record, without end.
  std::unique_ptr<ChildProcess> play(const std::string& sink);
  std::unique_ptr<ChildProcess> record(const std::string& source);

 protected:
  virtual void launch() = 0;
  // A command that succeeds once it is ready for all.
  virtual std::string question() const = 0;
  std::string loadModule(std::vector<std::string> arguments);
  PrivateSession session;
};

std::unique_ptr<SoundServer> makePulseAudio();
std::unique_ptr<SoundServer> makePipeWire();

}  // namespace kestrune::test
