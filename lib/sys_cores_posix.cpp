#include "lib/sys_cores.h"

#include <unistd.h>

int32_t SysCoreCount() {
  const long online = sysconf(_SC_NPROCESSORS_ONLN);
  return online > 0 ? static_cast<int32_t>(online) : 1;
}
