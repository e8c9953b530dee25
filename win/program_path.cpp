#include "win/program_path.h"

#include <windows.h>

LStr FProgramPath() {
  char self[MAX_PATH * 4] = {};
  GetModuleFileNameA(nullptr, self, sizeof(self));
  return LStr(self);
}
