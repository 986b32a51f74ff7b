#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include <QString>

namespace kestrune::desktop {

// Keeps the program to one instance a user: the first instance takes a name on the session bus, a later one
// asks it to show its window. The desktop may start the program by that name and ask it to show its settings.
// Without a session bus, or if the bus refuses the name, every instance counts as the first. Main thread.
class SingleInstance {
 public:
  enum class Request : std::uint8_t {
    window,
    settings,
  };
  enum class Start : std::uint8_t {
    window,    // by the user, to see its window
    quiet,     // by the session, at login
    headless,  // without a display; makes room for an instance that has one
  };
  enum class Outcome : std::uint8_t {
    first,
    otherRuns,  // and shows its window now, unless this start was quiet
    otherDoesNotAnswer,
  };

  // Called when a later instance or the desktop asks, with the desktop's activation token or an empty string.
  using Activate = std::function<void(Request request, const QString& activationToken)>;

  // `makeRoom` is called on a headless instance when an instance with a display has taken its name.
  SingleInstance(Activate activate, std::function<void()> makeRoom);
  ~SingleInstance();
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;

  // Waits up to three seconds for the other instance to answer or to exit.
  Outcome claim(Start start);
  // Gives up the name, so that the next instance is the first.
  void release();

 private:
  class Service;
  std::unique_ptr<Service> service_;
  std::function<void()> makeRoom_;
};

}  // namespace kestrune::desktop
