#include "ui/selection.h"

#include "archive/record.h"

int32_t FSelKinds(const TRecList& records) {
  int32_t kinds = records.count > 1 ? kSelMany : 0;
  for (TRec* rec : records) {
    if (rec->isRoot()) {
      kinds |= kSelRoot;
      if (rec->childCount() > 0) kinds |= kSelRootWithItems;
    } else if (rec->isFolder()) {
      kinds |= kSelFolder;
    } else if (rec->isFile()) {
      kinds |= kSelFile;
    } else if (rec->isVer()) {
      kinds |= kSelFile | kSelVer;
    }
  }
  return kinds;
}

bool FSelectionAllowsFind(const TRecList& records) {
  if (records.count >= 2) return true;
  if (records.count == 0) return false;
  const TRec* rec = records[0];
  return rec->isFolder() || (rec->isFile() && rec->childCount() > 1);
}

bool FSelectionHasProperties(const TRecList& records) {
  return records.count > 0 && records[0]->isFile();
}

void FChooseSelection(bool listFocused, const TRecList& listSelected, TRec* treeSelected,
                      bool listOnly, TRecList& out) {
  out.clear();
  if (listFocused) {
    out.addAll(listSelected);
    if (out.count > 0 || listOnly) return;
  }
  if (treeSelected != nullptr) out.add(treeSelected);
}
