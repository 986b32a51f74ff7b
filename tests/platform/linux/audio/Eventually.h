#pragma once

#include <chrono>
#include <thread>

namespace kestrune::test {

// Waits for what another program does: asks again and again until it is so. False: it never was.
template <typename Condition>
bool eventually(Condition condition, std::chrono::seconds patience = std::chrono::seconds(30)) {
  const auto deadline = std::chrono::steady_clock::now() + patience;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return true;
}

}  // namespace kestrune::test
