#pragma once

namespace kestrune::platform {

// The running program. Main thread.
class Application {
 public:
  virtual ~Application() = default;
  // Starts the program again once this run has ended, so that two runs never share their files.
  virtual void openNewInstance() = 0;
  // Ends this run, after saving what must be kept.
  virtual void terminate() = 0;
};

}  // namespace kestrune::platform
