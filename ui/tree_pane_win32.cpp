#include "ui/tree_pane_win32.h"

#include "app/worker.h"
#include "archive/archive.h"
#include "archive/record.h"
#include "ui/command_state.h"
#include "ui/command_table.h"
#include "ui/main_win_win32.h"
#include "ui/name_index.h"
#include "ui/pane_logic.h"
#include "win/shell_icons.h"

namespace {
HTREEITEM insertChild(LTreeView& tree, HTREEITEM node, TRec* child) {
  bool folder = child->isFolder() != 0;
  return tree.insert(node, child->name(), FIconOf(child->name(), folder, false),
                     FIconOf(child->name(), folder, folder), /*tag=*/0);
}
}  // namespace

void TTreePane::loadRoot(TFolder* root, const char* label, bool untitled) {
  clear();
  if (root == nullptr) return;
  // The icon of an archive file, made up for the untitled one.
  int icon = FIconOf(untitled ? "1.kst" : label, false, false);
  HTREEITEM node = insert(nullptr, label, icon, icon, /*tag=*/0);
  addChildren(node, root);
  loadAhead(node);
  select(node);
  expand(node, true);
}

void TTreePane::addChildren(HTREEITEM node, TFolder* folder, bool reorder) {
  TRecList children;
  FTreeChildren(folder, children);
  TNameIndex present;
  for (HTREEITEM child = firstChild(node); child != nullptr; child = nextSibling(child))
    present.add(text(child).ptr, reinterpret_cast<intptr_t>(child));
  LArrOf<HTREEITEM> order;
  for (TRec* child : children) {
    HTREEITEM existing = reinterpret_cast<HTREEITEM>(present.find(child->name()));
    if (existing == nullptr) {
      existing = insertChild(*this, node, child);
      reorder = true;
    }
    order.add(existing);
  }
  if (reorder) orderChildren(node, order);
}

void TTreePane::loadAhead(HTREEITEM node) {
  for (HTREEITEM child = firstChild(node); child != nullptr; child = nextSibling(child)) {
    TRec* rec = recordOf(child);
    if (rec != nullptr && rec->isFolder() && firstChild(child) == nullptr)
      addChildren(child, static_cast<TFolder*>(rec));
  }
}

void TTreePane::prune(HTREEITEM node) {
  TRec* rec = recordOf(node);
  HTREEITEM child = firstChild(node);
  while (child != nullptr) {
    HTREEITEM next = nextSibling(child);
    TRec* childRec =
        rec != nullptr ? static_cast<TRecF*>(rec)->findChild(text(child).ptr) : nullptr;
    if (childRec == nullptr) {
      if (selected() == child) select(node);
      remove(child);
    } else {
      prune(child);
    }
    child = next;
  }
}

TRec* TTreePane::recordOf(HTREEITEM node) {
  if (node == nullptr || FArchive()->root == nullptr) return nullptr;
  LArrOf<HTREEITEM> chain;
  for (HTREEITEM n = node; n != nullptr; n = parentOf(n)) chain.add(n);
  TRec* rec = FArchive()->root;
  // The last of the chain is the root node; the names below it lead down.
  for (int32_t i = chain.count - 2; i >= 0 && rec != nullptr; i--)
    rec = rec->isFolder() ? static_cast<TRecF*>(rec)->findChild(text(chain[i]).ptr) : nullptr;
  return rec;
}

HTREEITEM TTreePane::nodeOf(const TRec* rec) {
  LArrOf<const char*> names;
  rec->pathNames(names);
  HTREEITEM node = root();
  for (int32_t i = 0; i < names.count && node != nullptr; i++) node = findChild(node, names[i]);
  return node;
}

void TTreePane::onSelChanged(HTREEITEM node) { owner_.treeSelectionChanged(node); }

void TTreePane::onExpanding(HTREEITEM node) {
  if (FThread() != nullptr) return;
  TRec* rec = recordOf(node);
  if (rec != nullptr && rec->isFolder())
    addChildren(node, static_cast<TFolder*>(rec), /*reorder=*/true);
  loadAhead(node);
}

void TTreePane::onDblClick() {
  if (FThread() == nullptr) owner_.dispatch(kCmdOpenWithApp);
}

void TTreePane::onFocus() { owner_.paneFocused(ctrl); }

void TTreePane::onRightClick() {
  // The node under the pointer becomes the selection the menu is about.
  TVHITTESTINFO hit = {};
  GetCursorPos(&hit.pt);
  ScreenToClient(ctrl, &hit.pt);
  HTREEITEM node = reinterpret_cast<HTREEITEM>(
      SendMessageA(ctrl, TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit)));
  if (node != nullptr) select(node);
  owner_.contextMenu();
}

int TTreePane::onKey(int key) {
  if (FThread() != nullptr) {
    if (key == kKeyEsc) owner_.dispatch(kCmdStop);
    return 0;
  }
  if (key == kKeyEnter) {
    onDblClick();
    return 0;
  }
  return key;
}

int TTreePane::nfBeginLabelEdited(HTREEITEM node) {
  return FThread() != nullptr || node == root() ? 1 : 0;
}

int TTreePane::nfEndLabelEdited(HTREEITEM node, const char* text) {
  TRec* rec = recordOf(node);
  if (rec == nullptr || !FRenameRecord(rec, text)) return 0;
  owner_.renamed(rec);
  return 1;
}
