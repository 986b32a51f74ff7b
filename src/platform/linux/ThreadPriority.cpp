#include "platform/linux/ThreadPriority.h"

#include <linux/ioprio.h>
#include <pthread.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace kestrune::linux_platform {

void slowDownThread(const std::string& name) {
  constexpr int niceness = 10;
  constexpr int idleClass = IOPRIO_PRIO_VALUE(IOPRIO_CLASS_IDLE, 0);
  pthread_setname_np(pthread_self(), name.substr(0, 15).c_str());
  // Linux keeps both for each thread, whatever the name of the first constant says.
  setpriority(PRIO_PROCESS, static_cast<id_t>(gettid()), niceness);
  syscall(SYS_ioprio_set, IOPRIO_WHO_PROCESS, 0, idleClass);
}

}  // namespace kestrune::linux_platform
