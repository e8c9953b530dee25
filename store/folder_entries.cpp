#include "store/folder_entries.h"

#include <algorithm>
#include <cstring>

#include "lib/file_util.h"
#include "lib/msg.h"
#include "lib/path_parts.h"
#include "lib/strfunc.h"
#include "store/work_set.h"

namespace {

bool before(const TFolderEntry* a, const TFolderEntry* b) {
  int folded = FStrCmp(a->name.ptr, b->name.ptr, true);
  return folded != 0 ? folded < 0 : std::strcmp(a->name.ptr, b->name.ptr) < 0;
}

LStr entryPath(const char* folder, const LStr& name) {
  LStr path(folder);
  FAddSep(path);
  path.append(name);
  return path;
}

}  // namespace

void FFolderEntries(const char* path, TFolderEntries& out) {
  TFolderEntries all;
  {
    SysFolderScan scan(path);
    TFolderEntry entry;
    while (scan.isOpen() && scan.next(entry.name, entry.info)) all.add(new TFolderEntry(entry));
  }
  std::sort(all.begin(), all.end(), before);
  const TFolderEntry* kept = nullptr;
  for (int32_t i = 0; i < all.count; i++) {
    TFolderEntry* entry = all[i];
    if (kept != nullptr && FStrCmp(kept->name.ptr, entry->name.ptr, true) == 0) {
      FMsg(kMsgWarning, "「%s」は「%s」と大文字と小文字だけが違う名前なので追加しません",
           entryPath(path, entry->name).ptr, entryPath(path, kept->name).ptr);
      FWorkSet()->refused++;
      continue;
    }
    kept = entry;
    out.add(entry);
    all[i] = nullptr;
  }
}
