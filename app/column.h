// The columns of the list pane: which facts of a record it shows, how wide,
// and how it sorts by them.
#pragma once

#include <cstdint>

#include "lib/alloc.h"
#include "lib/ini_io.h"
#include "lib/larr.h"

enum TColumnId : int32_t {
  kColName = 1,
  kColType = 2,
  kColVersion = 3,
  kColSize = 4,
  kColModified = 5,
  kColAttributes = 6,
  kColUniqueRatio = 7,
  kColCompressed = 8,
  kColComment = 9,
  kColCreated = 10,
  kColAccessed = 11,
  kColStored = 12,
  kColStoreNo = 13,
  kColUser = 14,
  kColCheckout = 15,
  kColPath = 16,
  kColFolder = 17,
};

struct TColumn {
  KST_POOLED_NEW
  int32_t id;
  int32_t width;
  int32_t state = 0;  // sort state
  // 'r' right-aligned for numbers, else 'l'.
  char align() const;
  // 'i' sorted as numbers, else 's' as text.
  char sortKind() const;
};

typedef LArrOf<TColumn*, LDelete<TColumn*>> TColumns;

// The heading of a column id ("名前", "V", ...), or "" for an unknown id.
const char* FColumnHeading(int32_t id);
// The width a column takes when a dialog adds it.
int32_t FNewColumnWidth(int32_t id);
// Fills a list from "id:width" pairs.
void FSetColumns(TColumns& list, const int32_t* idsAndWidths, int32_t pairs);
// The settings field of a column list: "(" each column as "(id,width,state)" ")".
void FIniColumns(void* target, LIniIo& io);
