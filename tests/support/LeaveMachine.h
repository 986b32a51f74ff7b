#pragma once

#include <fstream>
#include <string>
#include <vector>

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

namespace kestrune::test {

// Moves this process into namespaces of its own, for good, so that its mounts and networks don't affect the
// machine. False if the machine doesn't allow it.
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

// The same, attempted at the first call only.
inline bool hasLeftMachine() {
  static const bool hasLeft = leaveMachine();
  return hasLeft;
}

// File systems that this process alone has mounted, until this object is destroyed.
class Mounts {
 public:
  Mounts() = default;
  ~Mounts() {
    for (; !folders_.empty(); folders_.pop_back()) umount2(folders_.back().c_str(), MNT_DETACH);
  }
  Mounts(const Mounts&) = delete;
  Mounts& operator=(const Mounts&) = delete;

  // False if the kernel doesn't grant it.
  bool add(const std::string& folder, const char* type, const std::string& source, unsigned long flags = 0,
           const std::string& options = {}) {
    if (!hasLeftMachine()) return false;
    if (mount(source.c_str(), folder.c_str(), type, flags, options.c_str()) != 0) return false;
    folders_.push_back(folder);
    return true;
  }

 private:
  std::vector<std::string> folders_;
};

}  // namespace kestrune::test
