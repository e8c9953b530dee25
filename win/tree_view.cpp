#include "win/tree_view.h"

#include "lib/fail.h"
#include "lib/msg.h"
#include "lib/strfunc.h"

void LTreeView::create(LWin* parentWin) {
  createControl(parentWin, WC_TREEVIEWA,
                TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT | TVS_SHOWSELALWAYS |
                    TVS_EDITLABELS | WS_TABSTOP,
                WS_EX_CLIENTEDGE);
}

void LTreeView::setImageList(HIMAGELIST images) {
  SendMessageA(ctrl, TVM_SETIMAGELIST, TVSIL_NORMAL, reinterpret_cast<LPARAM>(images));
}

HTREEITEM LTreeView::insert(HTREEITEM parentNode, const char* text, int image, int selectedImage,
                            LPARAM tag) {
  TVINSERTSTRUCTA item = {};
  item.hParent = parentNode == nullptr ? TVI_ROOT : parentNode;
  item.hInsertAfter = TVI_LAST;
  item.item.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_PARAM;
  item.item.pszText = const_cast<char*>(text);
  item.item.iImage = image;
  item.item.iSelectedImage = selectedImage;
  item.item.lParam = tag;
  HTREEITEM node = reinterpret_cast<HTREEITEM>(
      SendMessageA(ctrl, TVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item)));
  if (node == nullptr) FError(kMsgGeneral, "TreeView_InsertItem() failed");
  return node;
}

void LTreeView::remove(HTREEITEM node) {
  if (!SendMessageA(ctrl, TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(node)))
    FWinFail("TreeView_DeleteItem()");
}

void LTreeView::clear() {
  SendMessageA(ctrl, TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
}

LStr LTreeView::text(HTREEITEM node) {
  char buffer[1024] = {};
  TVITEMA item = {};
  item.mask = TVIF_TEXT;
  item.hItem = node;
  item.pszText = buffer;
  item.cchTextMax = sizeof(buffer);
  SendMessageA(ctrl, TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&item));
  return LStr(buffer);
}

void LTreeView::setText(HTREEITEM node, const char* text) {
  TVITEMA item = {};
  item.mask = TVIF_TEXT;
  item.hItem = node;
  item.pszText = const_cast<char*>(text);
  SendMessageA(ctrl, TVM_SETITEMA, 0, reinterpret_cast<LPARAM>(&item));
}

namespace {
HTREEITEM next(HWND ctrl, UINT relation, HTREEITEM node) {
  return reinterpret_cast<HTREEITEM>(
      SendMessageA(ctrl, TVM_GETNEXTITEM, relation, reinterpret_cast<LPARAM>(node)));
}
int CALLBACK byTag(LPARAM a, LPARAM b, LPARAM) { return a < b ? -1 : a > b ? 1 : 0; }
}  // namespace

HTREEITEM LTreeView::root() { return next(ctrl, TVGN_ROOT, nullptr); }
HTREEITEM LTreeView::firstChild(HTREEITEM node) { return next(ctrl, TVGN_CHILD, node); }
HTREEITEM LTreeView::nextSibling(HTREEITEM node) { return next(ctrl, TVGN_NEXT, node); }
HTREEITEM LTreeView::parentOf(HTREEITEM node) { return next(ctrl, TVGN_PARENT, node); }
HTREEITEM LTreeView::selected() { return next(ctrl, TVGN_CARET, nullptr); }

void LTreeView::select(HTREEITEM node) {
  SendMessageA(ctrl, TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(node));
}

void LTreeView::expand(HTREEITEM node, bool open) {
  SendMessageA(ctrl, TVM_EXPAND, open ? TVE_EXPAND : TVE_COLLAPSE, reinterpret_cast<LPARAM>(node));
}

void LTreeView::editLabel(HTREEITEM node) {
  SendMessageA(ctrl, TVM_EDITLABELA, 0, reinterpret_cast<LPARAM>(node));
}

void LTreeView::orderChildren(HTREEITEM node, const LArrOf<HTREEITEM>& order) {
  // The tag of each child becomes its rank for the one sort.
  for (int32_t i = 0; i < order.count; i++) {
    TVITEMA item = {};
    item.mask = TVIF_PARAM;
    item.hItem = order[i];
    item.lParam = i;
    SendMessageA(ctrl, TVM_SETITEMA, 0, reinterpret_cast<LPARAM>(&item));
  }
  TVSORTCB sort = {node, byTag, 0};
  SendMessageA(ctrl, TVM_SORTCHILDRENCB, 0, reinterpret_cast<LPARAM>(&sort));
}

HTREEITEM LTreeView::findChild(HTREEITEM node, const char* name) {
  for (HTREEITEM child = firstChild(node); child != nullptr; child = nextSibling(child))
    if (FStrCmp(text(child).ptr, name, /*ignoreCase=*/true) == 0) return child;
  return nullptr;
}

int LTreeView::onNotify(NMHDR* header) {
  switch (header->code) {
    case TVN_SELCHANGEDA:
      onSelChanged(reinterpret_cast<NMTREEVIEWA*>(header)->itemNew.hItem);
      return 0;
    case TVN_ITEMEXPANDINGA: {
      NMTREEVIEWA* tree = reinterpret_cast<NMTREEVIEWA*>(header);
      if (tree->action & TVE_EXPAND) onExpanding(tree->itemNew.hItem);
      return 0;
    }
    case NM_DBLCLK:
      onDblClick();
      return 1;  // the control's own expanding goes on
    case NM_RETURN:
      // Enter reached onKey already, with the TVN_KEYDOWN that came first.
      return 2;
    case NM_RCLICK:
      onRightClick();
      return 2;
    case NM_SETFOCUS:
      onFocus();
      return 0;
    case TVN_KEYDOWN: {
      int key = reinterpret_cast<NMTVKEYDOWN*>(header)->wVKey;
      if (onKey(key) != 0) SendMessageA(parent->hwnd, WM_KEYDOWN, key, 0);
      return 0;
    }
    case TVN_BEGINLABELEDITA:
      return nfBeginLabelEdited(reinterpret_cast<NMTVDISPINFOA*>(header)->item.hItem) != 0 ? 2 : 0;
    case TVN_ENDLABELEDITA: {
      NMTVDISPINFOA* info = reinterpret_cast<NMTVDISPINFOA*>(header);
      if (info->item.pszText == nullptr) return 0;
      return nfEndLabelEdited(info->item.hItem, info->item.pszText) != 0 ? 2 : 0;
    }
    default:
      return 1;
  }
}
