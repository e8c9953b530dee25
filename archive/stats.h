// Facts about the whole archive that the condition dialogs and the search
// offer as choices and ranges; filled by a scan of the tree.
#pragma once

#include <cstdint>

#include "lib/lhash.h"

struct TStats {
  int32_t level = 0;  // 0 none, 1 tree only, 2 and above also version details
  LHash names{LHash::kInts};
  LHash comments{LHash::kInts};
  LHash users{LHash::kInts};
  LHash checkouts{LHash::kInts};
  int32_t timeMin = INT32_MAX, timeMax = 0;
  int32_t storeMin = INT32_MAX, storeMax = 0;
  int32_t sizeMin = INT32_MAX, sizeMax = 0;
  int32_t maxVersions = 0;
  int32_t versions = 0, files = 0, folders = 0;

  // Resets the ranges and counters; the id sets stay.
  void resetRanges();
  // Forgets everything, the id sets too.
  void clear();
};
