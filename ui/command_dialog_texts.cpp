#include "ui/command_dialog_texts.h"

#include <cstring>

#include "archive/record.h"
#include "lib/msg.h"
#include "store/cond.h"

namespace {
// The number of versions below the records, counted until limit. A loop,
// not a recursion: a tree may be deeper than the stack.
int32_t versionsUpTo(const TRecList& records, int32_t limit) {
  LArrOf<const TRec*> pending;
  for (const TRec* rec : records) pending.add(rec);
  int32_t count = 0;
  while (pending.count > 0 && count < limit) {
    const TRec* rec = pending.pop();
    if (rec->isVer()) {
      count++;
    } else if (rec->isNamed()) {
      const TRecF* named = static_cast<const TRecF*>(rec);
      if (rec->isFile())
        count += named->children.count;
      else
        for (const TRec* child : named->children) pending.add(child);
    }
  }
  return count;
}
}  // namespace

LStr FSubjectText(const TRecList& records) {
  LStr text;
  if (records.count > 1)
    text.format("%d 個の項目", records.count);
  else if (records.count == 0 || records[0]->isRoot())
    text = "すべてのファイル";
  else
    text.format("%s ", records[0]->name());
  return text;
}

bool FSelectionHasVersionsToChoose(const TRecList& records) {
  const int32_t enough = 2;
  return versionsUpTo(records, enough) >= enough;
}

LStr FCondCaption(const char* caption, const TCond& cond) {
  // "*" (0x2A) is never the trail byte of a double-byte character.
  int32_t length = static_cast<int32_t>(std::strlen(caption));
  if (length > 0 && caption[length - 1] == '*') length--;
  LStr text(caption, length);
  if (cond.Level() > 0) text.append('*');
  return text;
}

bool FExtractDestGiven(const char* destination) {
  if (destination[0] != 0) return true;
  FMsg(kMsgWarning, "展開先を指定してください。");
  return false;
}
