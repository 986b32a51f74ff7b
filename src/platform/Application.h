#pragma once

namespace kestrune::platform {

// The running program. Main thread.
class Application {
 public:
  virtual ~Application() = default;
  // Has the program started anew as soon as this run has ended, and not before, so that two runs never share
  // their files.
  virtual void openNewInstance() = 0;
  // Ends this run. What is worth keeping is saved first.
  virtual void terminate() = 0;
};

}  // namespace kestrune::platform
