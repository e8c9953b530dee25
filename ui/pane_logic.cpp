#include "ui/pane_logic.h"

#include <cstdlib>

#include "app/app.h"
#include "archive/archive.h"
#include "archive/record.h"
#include "lib/fail.h"
#include "lib/strfunc.h"
#include "ui/command_table.h"

void FFolderRows(const TFolder* folder, TRecList& out) {
  out.clear();
  for (TRec* child : folder->children)
    if (child->isFolder() || child->childCount() > 0) out.add(child);
  FSortForDisplay(out);
}

void FTreeChildren(const TFolder* folder, TRecList& out) {
  out.clear();
  for (TRec* child : folder->children) {
    if (!child->isFolder() && !child->isFile()) FInternalBox(1269);
    out.add(child);
  }
  FSortForDisplay(out);
}

void FVersionRows(const TFile* file, TRecList& out) {
  out.clear();
  for (int32_t i = file->childCount() - 1; i >= 0; i--) out.add(file->children[i]);
}

TColumns& FViewColumns(TApp& app, char view, bool allColumns) {
  switch (view) {
    case kViewVersions:
      return allColumns ? app.vcolsAll : app.vcols;
    case kViewSearch:
      return allColumns ? app.scolsAll : app.scols;
    default:
      return allColumns ? app.fcolsAll : app.fcols;
  }
}

LStr FFolderStatus(const TFolder* folder) {
  int32_t folders = 0;
  int32_t files = 0;
  for (const TRec* child : folder->children) {
    if (child->isFolder())
      folders++;
    else
      files++;
  }
  return LStr().format("フォルダ数：%d  ファイル数：%d  合計：%d", folders, files, folders + files);
}

bool FIsListMode(int32_t id) {
  return id == kCmdLargeIcons || id == kCmdSmallIcons || id == kCmdListMode || id == kCmdDetails ||
         id == kCmdAllColumns;
}

namespace {
long long numberOf(const char* text) {
  LStr digits;
  for (const char* p = text; *p != 0; p++)
    if (*p != ',') digits.append(*p);
  return std::strtoll(digits.ptr, nullptr, 10);
}
}  // namespace

int FCompareRows(const TRec* a, const TRec* b, const char* textA, const char* textB,
                 int32_t columnId, char sortKind, char dir) {
  int result;
  if (columnId == kColName && a->kind() != b->kind()) {
    result = a->kind() < b->kind() ? -1 : 1;
  } else if (sortKind == 'i') {
    long long na = numberOf(textA);
    long long nb = numberOf(textB);
    result = na < nb ? -1 : na > nb ? 1 : 0;
  } else {
    result = FStrCmp(textA, textB, /*ignoreCase=*/true);
  }
  return dir == 'D' ? -result : result;
}

bool FListRenameAllowed(int32_t firstColumnId) { return firstColumnId == kColName; }

bool FRenameRecord(TRec* rec, const char* text) {
  if (!rec->isFolder() && !rec->isFile()) return false;
  if (rec->isRoot()) return false;
  TRecF* named = static_cast<TRecF*>(rec);
  // No record is passed as the one being renamed: its own present name is
  // a clash too, so that an edit that changes nothing says so.
  if (!FCheckNewName(static_cast<const TRecF*>(rec->parent), text, nullptr)) return false;
  named->setName(text);
  FArchive()->treeDirty = 1;
  return true;
}
