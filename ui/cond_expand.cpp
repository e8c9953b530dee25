#include "ui/cond_expand.h"

const char* FExpandButtonText(int32_t expanded) { return expanded != 0 ? "<<" : ">>"; }

int32_t FToggleExpanded(int32_t& expanded, int32_t extra) {
  expanded = expanded != 0 ? 0 : 1;
  return expanded != 0 ? extra : -extra;
}
