#pragma once

#include <fstream>

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

namespace kestrune::test {

// Lets this process mount, and make networks, without touching those of the machine: once, for good. False:
// the machine doesn't let it.
inline bool leaveMachine() {
  const uid_t user = geteuid();
  const gid_t group = getegid();
  if (unshare(CLONE_NEWNS | (user == 0 ? 0 : CLONE_NEWUSER)) != 0) return false;
  if (user != 0) {
    std::ofstream("/proc/self/uid_map") << "0 " << user << " 1\n";
    std::ofstream("/proc/self/setgroups") << "deny\n";
    std::ofstream("/proc/self/gid_map") << "0 " << group << " 1\n";
  }
  return mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

// The same, tried at the first call alone.
inline bool hasLeftMachine() {
  static const bool hasLeft = leaveMachine();
  return hasLeft;
}

}  // namespace kestrune::test
