#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include <QString>

namespace kestrune::desktop {

// Sees to it that each user has one copy of the program: the first one takes a name on the session bus, a
// later one asks it to come forward. The desktop may start the program under that name, and ask it for its
// settings. Without a session bus, or where that refuses the name, every copy counts as the first. Main
// thread.
class SingleInstance {
 public:
  enum class Request : std::uint8_t {
    window,
    settings,
  };
  enum class Start : std::uint8_t {
    window,    // somebody wants to see it
    quiet,     // the session started it
    headless,  // it can't show itself, so it makes room for a copy that can
  };
  enum class Outcome : std::uint8_t {
    first,
    otherRuns,  // and has come forward, unless this start was a quiet one
    otherDoesNotAnswer,
  };

  // Called with the activation token of the desktop, or nothing, when a later copy or the desktop asks.
  using Activate = std::function<void(Request request, const QString& activationToken)>;

  // `makeRoom` is called when a copy with a display takes the place of a headless one.
  SingleInstance(Activate activate, std::function<void()> makeRoom);
  ~SingleInstance();
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;

  // Waits for the other copy's answer, or for its end, for three seconds at most.
  Outcome claim(Start start);
  // Lets the next copy be the first one.
  void release();

 private:
  class Service;
  std::unique_ptr<Service> service_;
  std::function<void()> makeRoom_;
};

}  // namespace kestrune::desktop
