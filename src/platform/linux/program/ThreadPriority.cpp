#include "platform/linux/program/ThreadPriority.h"

#include <pthread.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace kestrune::platform {
namespace {

// Of the kernel's interface for I/O priorities. Its own header is no C++ in some versions.
constexpr int ofThread = 1;
constexpr int idleClass = 3 << 13;

}  // namespace

void nameThread(const std::string& name) {
  pthread_setname_np(pthread_self(), name.substr(0, 15).c_str());
}

void slowDownThread(const std::string& name) {
  constexpr int niceness = 10;
  nameThread(name);
  // Linux keeps both for each thread, whatever the name of the first constant says.
  setpriority(PRIO_PROCESS, static_cast<id_t>(gettid()), niceness);
  syscall(SYS_ioprio_set, ofThread, 0, idleClass);
}

}  // namespace kestrune::platform
