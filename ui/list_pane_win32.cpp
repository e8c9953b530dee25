#include "ui/list_pane_win32.h"

#include "app/app.h"
#include "app/column_text.h"
#include "app/config.h"
#include "app/worker.h"
#include "archive/record.h"
#include "lib/fail.h"
#include "ui/command_state.h"
#include "ui/command_table.h"
#include "ui/main_win_win32.h"
#include "ui/pane_logic.h"
#include "win/shell_icons.h"

namespace {
DWORD styleOf(int32_t mode) {
  switch (mode) {
    case kCmdLargeIcons:
      return LVS_ICON;
    case kCmdSmallIcons:
      return LVS_SMALLICON;
    case kCmdListMode:
      return LVS_LIST;
    default:
      return LVS_REPORT;
  }
}
}  // namespace

TColumns& TListPane::columns() { return FViewColumns(app_, view, allColumns); }

void TListPane::start(int32_t mode) {
  setImageLists(FSystemImages(true), FSystemImages(false));
  if (!FIsListMode(mode)) mode = kCmdDetails;
  mode_ = mode == kCmdAllColumns ? kCmdDetails : mode;
  allColumns = mode == kCmdAllColumns;
  setStyle(styleOf(mode_));
  buildColumns();
}

void TListPane::buildColumns() {
  deleteColumns();
  directions_.clear();
  TColumns& set = columns();
  for (int32_t i = 0; i < set.count; i++) {
    addColumn(i, FColumnHeading(set[i]->id), set[i]->width, set[i]->align());
    directions_.add('A');
  }
}

void TListPane::storeWidths() {
  if (mode_ != kCmdDetails) return;
  TColumns& set = columns();
  for (int32_t i = 0; i < set.count && i < columnCount(); i++) set[i]->width = columnWidth(i);
}

void TListPane::switchView(char newView) {
  if (newView == view) return;
  storeWidths();
  view = newView;
  buildColumns();
}

void TListPane::setMode(int32_t id) {
  mode_ = id == kCmdAllColumns ? kCmdDetails : id;
  allColumns = id == kCmdAllColumns;
  setStyle(styleOf(mode_));
  buildColumns();
  refreshTexts();
}

int32_t TListPane::modeCommand() const { return allColumns ? int32_t{kCmdAllColumns} : mode_; }

void TListPane::setRowTexts(int32_t row, TRec* rec) {
  TColumns& set = columns();
  const TRec* base = view == kViewSearch ? FConfig()->searchBase : nullptr;
  for (int32_t i = 0; i < set.count; i++) setCell(row, i, FColumnText(rec, set[i]->id, base).ptr);
}

void TListPane::addRecordRow(TRec* rec) {
  bool folder = rec->isFolder() != 0;
  int32_t row = addRow(rowCount(), rec, FIconOf(rec->name(), folder, false), "");
  setRowTexts(row, rec);
}

void TListPane::addSearchRow(TRec* rec, const LStrs& textsById) {
  if (view != kViewSearch) return;
  int32_t row = addRow(rowCount(), rec, FIconOf(rec->name(), false, false), "");
  TColumns& set = columns();
  for (int32_t i = 0; i < set.count; i++) {
    int32_t id = set[i]->id;
    if (id >= 1 && id <= textsById.count) setCell(row, i, textsById[id - 1]->ptr);
  }
}

void TListPane::refreshTexts() {
  for (int32_t row = 0; row < rowCount(); row++) setRowTexts(row, static_cast<TRec*>(rowData(row)));
}

void TListPane::refill() {
  clear();
  TRec* rec = owner_.tree().selectedRecord();
  if (rec == nullptr) return;
  LArrOf<TRec*> rows;
  if (rec->isFolder()) {
    switchView(kViewFolder);
    FFolderRows(static_cast<TFolder*>(rec), rows);
  } else if (rec->isFile()) {
    switchView(kViewVersions);
    FVersionRows(static_cast<TFile*>(rec), rows);
  } else {
    FInternalBox(1270);
  }
  for (TRec* row : rows) addRecordRow(row);
  if (hasFocus() && rowCount() > 0) focusRow(0, false);
  if (pendingFocus != nullptr) {
    int32_t row = rowOf(pendingFocus);
    if (row >= 0) focusRow(row, true);
  }
  pendingFocus = nextPendingFocus;
  nextPendingFocus = nullptr;
}

void TListPane::selectedRecords(LArrOf<TRec*>& out) {
  out.clear();
  LInts rows;
  selectedRows(rows);
  for (int32_t row : rows) out.add(static_cast<TRec*>(rowData(row)));
}

void TListPane::removeRecords(const LArrOf<TRec*>& removed) {
  removing_ = true;
  int32_t focusAt = -1;
  for (TRec* rec : removed) {
    int32_t row = rowOf(rec);
    if (row < 0) continue;
    if (row == focusedRow()) focusAt = row;
    removeRow(row);
  }
  removing_ = false;
  if (focusAt >= 0 && rowCount() > 0)
    focusRow(focusAt < rowCount() ? focusAt : rowCount() - 1, false);
}

bool TListPane::hasFocus() const { return GetFocus() == ctrl; }

void TListPane::onItemChanged() {
  if (FThread() == nullptr && !removing_) owner_.updateCommands();
}

void TListPane::onDblClick() {
  if (FThread() != nullptr) return;
  LArrOf<TRec*> selected;
  selectedRecords(selected);
  if (selected.count == 0) return;
  if (view == kViewFolder)
    owner_.tree().select(owner_.tree().nodeOf(selected[0]));
  else
    owner_.dispatch(kCmdOpenWithApp);
}

void TListPane::onRightClick() { owner_.contextMenu(); }

int TListPane::onKey(int key) {
  if (FThread() != nullptr) {
    if (key == kKeyEsc) owner_.dispatch(kCmdStop);
    return 0;
  }
  switch (key) {
    case kKeyEnter:
      onDblClick();
      return 0;
    case kKeyLeft: {
      LArrOf<TRec*> selected;
      selectedRecords(selected);
      HTREEITEM node = owner_.tree().selected();
      HTREEITEM up = node != nullptr ? owner_.tree().parentOf(node) : nullptr;
      if (selected.count == 0 || up == nullptr) return 0;
      pendingFocus = owner_.tree().recordOf(node);
      nextPendingFocus = selected[0];
      owner_.tree().select(up);
      owner_.tree().expand(node, false);
      return 0;
    }
    case kKeyRight:
      if (view == kViewFolder) onDblClick();
      return 0;
    default:
      return key;
  }
}

void TListPane::onFocus() {
  owner_.paneFocused(ctrl);
  LInts rows;
  selectedRows(rows);
  if (rows.count == 0 && rowCount() > 0) focusRow(0, false);
}

void TListPane::onColumnClick(int32_t column) {
  if (column < 0 || column >= directions_.count) FInternalBox(1696);
  sortColumn_ = column;
  sortRows();
  directions_[column] = directions_[column] == 'A' ? 'D' : 'A';
}

int TListPane::compare(int32_t rowA, int32_t rowB) {
  TColumn* column = columns()[sortColumn_];
  TRec* a = static_cast<TRec*>(rowData(rowA));
  TRec* b = static_cast<TRec*>(rowData(rowB));
  if (a == nullptr || b == nullptr) FInternalBox(1271);
  return FCompareRows(a, b, cell(rowA, sortColumn_).ptr, cell(rowB, sortColumn_).ptr, column->id,
                      column->sortKind(), static_cast<char>(directions_[sortColumn_]));
}

int TListPane::nfBeginLabelEdited(int32_t) {
  if (FThread() != nullptr) return 1;
  TColumns& set = columns();
  return set.count > 0 && FListRenameAllowed(set[0]->id) ? 0 : 1;
}

int TListPane::nfEndLabelEdited(int32_t row, const char* text) {
  TRec* rec = static_cast<TRec*>(rowData(row));
  HTREEITEM node = rec != nullptr ? owner_.tree().nodeOf(rec) : nullptr;
  if (rec == nullptr || !FRenameRecord(rec, text)) return 0;
  if (node != nullptr) owner_.tree().setText(node, text);
  owner_.renamed(rec);
  return 1;
}
