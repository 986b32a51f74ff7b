#pragma once

#include <chrono>
#include <thread>

namespace kestrune::test {

// Checks again and again what another program does, with a `step` after each check. False: it never was so.
template <class Condition>
bool eventually(
    Condition condition, std::chrono::milliseconds timeout = std::chrono::seconds(30),
    void (*step)() = [] {}) {
  const auto deadline = std::chrono::steady_clock::now() + timeout;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    step();
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  return true;
}

}  // namespace kestrune::test
