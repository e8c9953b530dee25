// What the selection is made of, summed up as the bit set `selKinds` that
// decides which commands are enabled and what the context menu offers.
#pragma once

#include <cstdint>

#include "lib/larr.h"

class TRec;

enum TSelKind : int32_t {
  kSelFolder = 0x01,         // a folder other than the root
  kSelFile = 0x02,           // a file, or a version (which sets kSelVer too)
  kSelVer = 0x04,            // a version
  kSelRoot = 0x08,           // the root folder
  kSelMany = 0x10,           // more than one item
  kSelRootWithItems = 0x20,  // the root folder, and it holds something
};

typedef LArrOf<TRec*> TRecList;

int32_t FSelKinds(const TRecList& records);
// Search needs something to walk: several items, a folder, or a file with
// more than one version.
bool FSelectionAllowsFind(const TRecList& records);
// The properties sheet describes a file: it opens only when the first
// record of the selection is one (not a folder, not a version).
bool FSelectionHasProperties(const TRecList& records);
// The records a command works on: those selected in the list pane when it
// has the focus and something is selected there (or when the caller wants
// the list pane alone), otherwise the tree pane's selected record.
void FChooseSelection(bool listFocused, const TRecList& listSelected, TRec* treeSelected,
                      bool listOnly, TRecList& out);
