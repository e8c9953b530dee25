#include "lib/sys_cores.h"

#include <windows.h>

int32_t SysCoreCount() {
  SYSTEM_INFO info;
  GetSystemInfo(&info);
  return info.dwNumberOfProcessors > 0 ? static_cast<int32_t>(info.dwNumberOfProcessors) : 1;
}
