// LListView: the list control in its container. Each row carries one
// pointer of the caller's; texts are set per cell. The operations are those
// the list pane uses, and the notifications reach the virtual operations.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include "lib/larr.h"
#include "lib/lstr.h"
#include "win/ctrl_container.h"

class LListView : public LCtrlContainer {
 public:
  void create(LWin* parentWin);
  void setImageLists(HIMAGELIST small, HIMAGELIST large);
  // LVS_ICON, LVS_SMALLICON, LVS_LIST or LVS_REPORT.
  void setStyle(DWORD view);

  void addColumn(int32_t index, const char* heading, int32_t width, char align);
  void deleteColumns();
  int32_t columnCount();
  int32_t columnWidth(int32_t index);

  int32_t addRow(int32_t at, void* data, int image, const char* firstText);
  void setCell(int32_t row, int32_t column, const char* text);
  // The text of a cell, up to 10,000 bytes.
  LStr cell(int32_t row, int32_t column);
  void* rowData(int32_t row);
  // The row whose pointer is data, or -1.
  int32_t rowOf(const void* data);
  int32_t rowCount();
  void removeRow(int32_t row);
  void clear();
  int32_t focusedRow();
  void selectedRows(LInts& out);
  void selectAll();
  void focusRow(int32_t row, bool select);
  void editLabel(int32_t row);
  // Sorts the rows with `compare`.
  void sortRows();

  virtual void onItemChanged() {}
  virtual void onDblClick() {}
  virtual void onRightClick() {}
  // Non-zero passes the key on to the parent window. Enter comes here
  // alone: the control's own Enter notification calls nothing.
  virtual int onKey(int key) { return key; }
  virtual void onFocus() {}
  virtual void onColumnClick(int32_t) {}
  virtual int nfBeginLabelEdited(int32_t) { return 1; }
  virtual int nfEndLabelEdited(int32_t, const char*) { return 0; }
  virtual int compare(int32_t, int32_t) { return 0; }

  int onNotify(NMHDR* header) override;
};
