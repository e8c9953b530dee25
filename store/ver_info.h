// TVerInfo: the side record of a version that a command touches: where its
// bytes come from, its held form while in memory, and the metadata that the
// archive keeps in the version header rather than in the tree.
#pragma once

#include <cstdint>

#include "lib/alloc.h"
#include "lib/lstr.h"
#include "store/held_buf.h"

// Both ratios start above any percentage: the mark of ratios never set.
const uint8_t kRatioUnset = 102;

// File attribute bits as the archive keeps them.
enum : uint8_t { kAttrReadOnly = 1, kAttrArchive = 2, kAttrHidden = 4, kAttrSystem = 8 };

struct TVerInfo {
  KST_POOLED_NEW
  TVerInfo() = default;
  ~TVerInfo() {
    delete srcPath;
    delete held;
  }
  TVerInfo(const TVerInfo&) = delete;
  TVerInfo& operator=(const TVerInfo&) = delete;

  LStr* srcPath = nullptr;   // the source file of a new version
  THeldBuf* held = nullptr;  // the held form while in memory
  int32_t heldLen = -1;
  int32_t holds = 0;
  int32_t commentId = 0;
  int32_t userId = 0;
  int32_t checkoutId = 0;
  uint8_t uniqueRatio = kRatioUnset;
  uint8_t compRatio = kRatioUnset;
  uint8_t attrs = 0;
  int64_t createTime = 0;  // Unix seconds
  int64_t accessTime = 0;
  int64_t storeTime = 0;
  int32_t storeNo = 0;
};
