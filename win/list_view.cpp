#include "win/list_view.h"

#include "lib/fail.h"
#include "lib/msg.h"

namespace {
const int32_t kCellRoom = 10000;

int CALLBACK compareRows(LPARAM a, LPARAM b, LPARAM view) {
  return reinterpret_cast<LListView*>(view)->compare(static_cast<int32_t>(a),
                                                     static_cast<int32_t>(b));
}
}  // namespace

void LListView::create(LWin* parentWin) {
  createControl(parentWin, WC_LISTVIEWA,
                LVS_REPORT | LVS_SHOWSELALWAYS | LVS_EDITLABELS | WS_TABSTOP, WS_EX_CLIENTEDGE);
  SendMessageA(ctrl, LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_FULLROWSELECT, LVS_EX_FULLROWSELECT);
}

void LListView::setImageLists(HIMAGELIST small, HIMAGELIST large) {
  SendMessageA(ctrl, LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(small));
  SendMessageA(ctrl, LVM_SETIMAGELIST, LVSIL_NORMAL, reinterpret_cast<LPARAM>(large));
}

void LListView::setStyle(DWORD view) {
  LONG_PTR style = GetWindowLongPtrA(ctrl, GWL_STYLE);
  SetWindowLongPtrA(ctrl, GWL_STYLE, (style & ~LVS_TYPEMASK) | view);
}

void LListView::addColumn(int32_t index, const char* heading, int32_t width, char align) {
  LVCOLUMNA column = {};
  column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
  column.fmt = align == 'r' ? LVCFMT_RIGHT : LVCFMT_LEFT;
  column.cx = width;
  column.pszText = const_cast<char*>(heading);
  if (SendMessageA(ctrl, LVM_INSERTCOLUMNA, index, reinterpret_cast<LPARAM>(&column)) < 0)
    FError(kMsgGeneral, "ListView_InsertColumn() failed");
}

void LListView::deleteColumns() {
  while (SendMessageA(ctrl, LVM_DELETECOLUMN, 0, 0)) {
  }
}

int32_t LListView::columnCount() {
  HWND header = reinterpret_cast<HWND>(SendMessageA(ctrl, LVM_GETHEADER, 0, 0));
  return static_cast<int32_t>(SendMessageA(header, HDM_GETITEMCOUNT, 0, 0));
}

int32_t LListView::columnWidth(int32_t index) {
  return static_cast<int32_t>(SendMessageA(ctrl, LVM_GETCOLUMNWIDTH, index, 0));
}

int32_t LListView::addRow(int32_t at, void* data, int image, const char* firstText) {
  LVITEMA item = {};
  item.mask = LVIF_TEXT | LVIF_PARAM | LVIF_IMAGE;
  item.iItem = at;
  item.pszText = const_cast<char*>(firstText);
  item.lParam = reinterpret_cast<LPARAM>(data);
  item.iImage = image;
  int32_t row =
      static_cast<int32_t>(SendMessageA(ctrl, LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item)));
  if (row < 0) FError(kMsgGeneral, "ListView_InsertItem() failed");
  return row;
}

void LListView::setCell(int32_t row, int32_t column, const char* text) {
  LVITEMA item = {};
  item.iSubItem = column;
  item.pszText = const_cast<char*>(text);
  SendMessageA(ctrl, LVM_SETITEMTEXTA, row, reinterpret_cast<LPARAM>(&item));
}

LStr LListView::cell(int32_t row, int32_t column) {
  char text[kCellRoom] = {};
  LVITEMA item = {};
  item.iSubItem = column;
  item.pszText = text;
  item.cchTextMax = kCellRoom;
  SendMessageA(ctrl, LVM_GETITEMTEXTA, row, reinterpret_cast<LPARAM>(&item));
  return LStr(text);
}

void* LListView::rowData(int32_t row) {
  LVITEMA item = {};
  item.mask = LVIF_PARAM;
  item.iItem = row;
  if (!SendMessageA(ctrl, LVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&item))) return nullptr;
  return reinterpret_cast<void*>(item.lParam);
}

int32_t LListView::rowOf(const void* data) {
  LVFINDINFOA find = {};
  find.flags = LVFI_PARAM;
  find.lParam = reinterpret_cast<LPARAM>(data);
  return static_cast<int32_t>(
      SendMessageA(ctrl, LVM_FINDITEMA, -1, reinterpret_cast<LPARAM>(&find)));
}

int32_t LListView::rowCount() {
  return static_cast<int32_t>(SendMessageA(ctrl, LVM_GETITEMCOUNT, 0, 0));
}
void LListView::removeRow(int32_t row) { SendMessageA(ctrl, LVM_DELETEITEM, row, 0); }
void LListView::clear() { SendMessageA(ctrl, LVM_DELETEALLITEMS, 0, 0); }

int32_t LListView::focusedRow() {
  return static_cast<int32_t>(SendMessageA(ctrl, LVM_GETNEXTITEM, -1, LVNI_FOCUSED));
}

void LListView::selectedRows(LInts& out) {
  out.clear();
  for (LRESULT row = SendMessageA(ctrl, LVM_GETNEXTITEM, -1, LVNI_SELECTED); row >= 0;
       row = SendMessageA(ctrl, LVM_GETNEXTITEM, row, LVNI_SELECTED))
    out.add(static_cast<int32_t>(row));
}

void LListView::selectAll() {
  LVITEMA item = {};
  item.stateMask = LVIS_SELECTED;
  item.state = LVIS_SELECTED;
  SendMessageA(ctrl, LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&item));
}

void LListView::focusRow(int32_t row, bool select) {
  LVITEMA item = {};
  item.stateMask = LVIS_FOCUSED | (select ? LVIS_SELECTED : 0);
  item.state = item.stateMask;
  SendMessageA(ctrl, LVM_SETITEMSTATE, row, reinterpret_cast<LPARAM>(&item));
  SendMessageA(ctrl, LVM_ENSUREVISIBLE, row, FALSE);
}

void LListView::editLabel(int32_t row) { SendMessageA(ctrl, LVM_EDITLABELA, row, 0); }

void LListView::sortRows() {
  SendMessageA(ctrl, LVM_SORTITEMSEX, reinterpret_cast<WPARAM>(this),
               reinterpret_cast<LPARAM>(compareRows));
}

int LListView::onNotify(NMHDR* header) {
  switch (header->code) {
    case LVN_ITEMCHANGED:
      onItemChanged();
      return 0;
    case NM_DBLCLK:
      onDblClick();
      return 0;
    case NM_RETURN:
      // Enter reached onKey already, with the LVN_KEYDOWN that came first.
      return 0;
    case NM_RCLICK:
      onRightClick();
      return 0;
    case NM_SETFOCUS:
      onFocus();
      return 0;
    case LVN_KEYDOWN: {
      int key = reinterpret_cast<NMLVKEYDOWN*>(header)->wVKey;
      if (onKey(key) != 0) SendMessageA(parent->hwnd, WM_KEYDOWN, key, 0);
      return 0;
    }
    case LVN_COLUMNCLICK:
      onColumnClick(reinterpret_cast<NMLISTVIEW*>(header)->iSubItem);
      return 0;
    case LVN_BEGINLABELEDITA:
      return nfBeginLabelEdited(reinterpret_cast<NMLVDISPINFOA*>(header)->item.iItem) != 0 ? 2 : 0;
    case LVN_ENDLABELEDITA: {
      NMLVDISPINFOA* info = reinterpret_cast<NMLVDISPINFOA*>(header);
      if (info->item.pszText == nullptr) return 0;
      return nfEndLabelEdited(info->item.iItem, info->item.pszText) != 0 ? 2 : 0;
    }
    default:
      return 1;
  }
}
