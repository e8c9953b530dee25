// The entries of one source folder, as the add takes them. The tree knows
// no difference of case between names, so that of names differing only in
// case just one can be stored; the others would silently become versions of
// it. The order is by name with case folded, and names equal that way come
// in byte order ("Mark.h" before "mark.h"): the first is kept, every other
// is left out with a warning that names both, and counted as refused.
#pragma once

#include "lib/larr.h"
#include "lib/lstr.h"
#include "lib/sys.h"

struct TFolderEntry {
  LStr name;
  SysFileInfo info;
};
typedef LArrOf<TFolderEntry*, LDelete<TFolderEntry*>> TFolderEntries;

// Appends the entries of the folder at path; a folder that cannot be listed
// gives none.
void FFolderEntries(const char* path, TFolderEntries& out);
