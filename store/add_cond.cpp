#include "store/add_cond.h"

#include "lib/msg.h"
#include "store/cond.h"
#include "store/cond_match.h"

bool FAddCondTest(const TAddCandidate& file, const TCond& cond) {
  if (cond.existingOnly != 0 && !file.hasFile) return false;
  if (!FNameTest(file.name, cond) || !FDateTest(file.time, cond)) return false;
  if (cond.sizes != nullptr) {
    if (file.size >= kTooLargeSize) {
      FMsg(kMsgWarning, "ファイルが大きすぎます: %s", file.path);
      return false;
    }
    if (!FSizeTest(static_cast<int32_t>(file.size), cond)) return false;
  }
  if (!FPathCondTest(file.path, cond)) return false;
  return cond.attrActive == 0 || FAttrTest(file.attrs, cond);
}
