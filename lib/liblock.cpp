#include "lib/liblock.h"

#include "lib/sys.h"

namespace {
// Made on first use: the allocator may run before any static constructor of
// this file, and start-up is single-threaded until the first thread starts.
SysLock gLibLock = nullptr;

SysLock libLock() {
  if (gLibLock == nullptr) gLibLock = SysCreateLock();
  return gLibLock;
}
}  // namespace

void FLibLock() { SysEnterLock(libLock()); }
void FLibUnlock() { SysLeaveLock(libLock()); }
