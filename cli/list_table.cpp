#include "cli/list_table.h"

#include "app/column.h"
#include "app/column_text.h"
#include "cli/cli_console.h"

namespace {

// The panes' default sets, and their sets of all columns with the check-out
// user (which a pane shows only when the user adds it) at its place.
const int32_t kFolder[] = {kColName, kColVersion, kColSize, kColModified, kColComment};
const int32_t kFolderAll[] = {
    kColName,       kColSize,    kColType,     kColModified, kColUniqueRatio, kColCompressed,
    kColAttributes, kColVersion, kColComment,  kColCreated,  kColAccessed,    kColStored,
    kColStoreNo,    kColUser,    kColCheckout, kColFolder,   kColPath};
const int32_t kVersions[] = {kColVersion,    kColSize,       kColModified, kColUniqueRatio,
                             kColCompressed, kColAttributes, kColComment,  kColStoreNo};
const int32_t kVersionsAll[] = {kColVersion,     kColSize,       kColType,       kColModified,
                                kColUniqueRatio, kColCompressed, kColAttributes, kColComment,
                                kColCreated,     kColAccessed,   kColStored,     kColStoreNo,
                                kColUser,        kColCheckout};
const int32_t kSearch[] = {kColName, kColFolder, kColVersion, kColSize, kColModified, kColComment};
const int32_t kSearchAll[] = {
    kColName,       kColFolder,     kColSize,    kColType,     kColModified, kColUniqueRatio,
    kColCompressed, kColAttributes, kColVersion, kColComment,  kColCreated,  kColAccessed,
    kColStored,     kColStoreNo,    kColUser,    kColCheckout, kColPath};

template <size_t N>
void fill(const int32_t (&ids)[N], LInts& out) {
  for (int32_t id : ids) out.add(id);
}

}  // namespace

void FViewColumns(TListView view, bool all, LInts& out) {
  switch (view) {
    case kViewFolder:
      return all ? fill(kFolderAll, out) : fill(kFolder, out);
    case kViewVersions:
      return all ? fill(kVersionsAll, out) : fill(kVersions, out);
    case kViewSearch:
      return all ? fill(kSearchAll, out) : fill(kSearch, out);
  }
}

TCliTable::TCliTable(const LInts& columns, const TRec* base) : base_(base) {
  columns_.addAll(columns);
}

void TCliTable::addRow(TRec* rec) {
  LStrs* row = new LStrs;
  for (int32_t id : columns_) row->add(new LStr(FColumnText(rec, id, base_)));
  rows_.add(row);
}

void TCliTable::lines(LStrs& out, TEscapeForm escapes) const {
  LStrs headings;
  LInts widths;
  for (int32_t id : columns_) {
    headings.add(new LStr(FColumnHeading(id)));
    widths.add(FTextWidth(FColumnHeading(id), escapes));
  }
  for (const LStrs* row : rows_)
    for (int32_t i = 0; i < columns_.count; i++) {
      int32_t width = FTextWidth((*row)[i]->ptr, escapes);
      if (width > widths[i]) widths[i] = width;
    }
  auto format = [&](const LStrs& cells) {
    LStr* line = new LStr;
    for (int32_t i = 0; i < columns_.count; i++) {
      if (i > 0) line->append("  ");
      FAppendPadded(*line, cells[i]->ptr, widths[i], TColumn{columns_[i], 0}.align(), escapes);
    }
    // Empty cells at the end leave no blanks behind.
    while (line->length > 0 && (*line)[line->length - 1] == ' ') line->truncate(line->length - 1);
    out.add(line);
  };
  format(headings);
  for (const LStrs* row : rows_) format(*row);
}

void TCliTable::print(TCliConsole& console) const {
  LStrs text;
  lines(text, console.outEscapes());
  for (const LStr* line : text) console.out(line->ptr);
}
