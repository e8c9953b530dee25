// Linked only into the crash-test build of kst: at every point where an
// apply can be cut off, the program says so on stderr and waits a moment, so
// that the harness can kill it exactly there.
#include <cstdio>

#include "archive/apply_probe.h"
#include "lib/sys.h"

namespace {

const int32_t kPause = 15;

void pauseAt(TApplyStage stage) {
  std::fprintf(stderr, "@apply %d\n", static_cast<int>(stage));
  std::fflush(stderr);
  SysSleep(kPause);
}

struct InstallProbe {
  InstallProbe() { TApplyProbeAccess::install(pauseAt); }
} gInstall;

}  // namespace
