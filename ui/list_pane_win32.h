// TListPane: the right pane. It shows the children of a folder, the
// versions of a file, or search results; each row carries its record.
#pragma once

#include <cstdint>

#include "app/column.h"
#include "lib/larr.h"
#include "win/list_view.h"

class TApp;
class TMainWin;
class TRec;

class TListPane : public LListView {
 public:
  TListPane(TMainWin& owner, TApp& app) : owner_(owner), app_(app) {}

  char view = 'f';
  bool allColumns = false;
  TRec* pendingFocus = nullptr;
  TRec* nextPendingFocus = nullptr;

  // Builds the columns of the present view for the saved mode.
  void start(int32_t mode);
  // Clears the rows and fills them from the tree's selected record.
  void refill();
  void switchView(char newView);
  void setMode(int32_t id);
  int32_t modeCommand() const;
  // The present widths of a details view go back to the column set.
  void storeWidths();
  void addRecordRow(TRec* rec);
  // A row of the running search, with the texts of every column by id (id
  // 1 first), made on the worker, which alone may read the archive now. It
  // is dropped when the pane no longer shows the search.
  void addSearchRow(TRec* rec, const LStrs& textsById);
  void selectedRecords(LArrOf<TRec*>& out);
  void refreshTexts();
  // Removes the rows of records that a command took out of the archive; the
  // focus mark moves from a removed row to its neighbour. The records are
  // gone already: until every row of theirs is removed, nothing may ask the
  // selection.
  void removeRecords(const LArrOf<TRec*>& removed);
  bool hasFocus() const;

  void onItemChanged() override;
  void onDblClick() override;
  void onRightClick() override;
  int onKey(int key) override;
  void onFocus() override;
  void onColumnClick(int32_t column) override;
  int nfBeginLabelEdited(int32_t row) override;
  int nfEndLabelEdited(int32_t row, const char* text) override;
  int compare(int32_t rowA, int32_t rowB) override;

 private:
  TColumns& columns();
  void buildColumns();
  void setRowTexts(int32_t row, TRec* rec);

  TMainWin& owner_;
  TApp& app_;
  int32_t mode_ = 3040;
  LInts directions_;  // the next sort direction of each shown column, 'A' or 'D'
  int32_t sortColumn_ = 0;
  // Rows of destroyed records are being removed.
  bool removing_ = false;
};
