#include "platform/linux/program/ThreadPriority.h"

#include <pthread.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace kestrune::platform {
namespace {

// From linux/ioprio.h, some versions of which don't compile as C++.
constexpr int whoProcess = 1;
constexpr int idleClass = 3 << 13;

}  // namespace

void nameThread(const std::string& name) {
  pthread_setname_np(pthread_self(), name.substr(0, 15).c_str());
}

void slowDownThread(const std::string& name) {
  constexpr int niceness = 10;
  nameThread(name);
  // On Linux both apply to a single thread, in spite of the constants' names.
  setpriority(PRIO_PROCESS, static_cast<id_t>(gettid()), niceness);
  syscall(SYS_ioprio_set, whoProcess, 0, idleClass);
}

}  // namespace kestrune::platform
