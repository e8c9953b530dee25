// The one library-wide critical section. It guards the message state, the
// position stack, the thread list and the regular expression tables. It is
// recursive and must never be held across a message box.
#pragma once

void FLibLock();
void FLibUnlock();

// Holds the library-wide lock for one scope.
class FLibGuard {
 public:
  FLibGuard() { FLibLock(); }
  ~FLibGuard() { FLibUnlock(); }
  FLibGuard(const FLibGuard&) = delete;
  FLibGuard& operator=(const FLibGuard&) = delete;
};
