#include "lib/sys_cores.h"

#include <unistd.h>

int32_t SysCoreCount() {
  // Asked once: the C library reads a file of the system for it each time,
  // and every encoding asks.
  static const int32_t cores = [] {
    const long online = sysconf(_SC_NPROCESSORS_ONLN);
    return online > 0 ? static_cast<int32_t>(online) : 1;
  }();
  return cores;
}
