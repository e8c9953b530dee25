// LTreeView: the tree control in its container. Nodes carry only their
// label and a small integer of the caller's; the operations below are those
// the panes use, and the notifications reach the virtual operations.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include "lib/larr.h"
#include "lib/lstr.h"
#include "win/ctrl_container.h"

class LTreeView : public LCtrlContainer {
 public:
  void create(LWin* parentWin);
  void setImageList(HIMAGELIST images);

  HTREEITEM insert(HTREEITEM parentNode, const char* text, int image, int selectedImage,
                   LPARAM tag);
  void remove(HTREEITEM node);
  void clear();
  LStr text(HTREEITEM node);
  void setText(HTREEITEM node, const char* text);
  HTREEITEM root();
  HTREEITEM firstChild(HTREEITEM node);
  HTREEITEM nextSibling(HTREEITEM node);
  HTREEITEM parentOf(HTREEITEM node);
  HTREEITEM selected();
  void select(HTREEITEM node);
  void expand(HTREEITEM node, bool open);
  void editLabel(HTREEITEM node);
  // Puts the children of a node in the given order.
  void orderChildren(HTREEITEM node, const LArrOf<HTREEITEM>& order);
  // The child of node whose label equals name (ASCII case folded), or null.
  HTREEITEM findChild(HTREEITEM node, const char* name);

  virtual void onSelChanged(HTREEITEM) {}
  virtual void onExpanding(HTREEITEM) {}
  virtual void onDblClick() {}
  virtual void onRightClick() {}
  virtual void onFocus() {}
  // Non-zero passes the key on to the parent window. Enter comes here
  // alone: the control's own Enter notification calls nothing.
  virtual int onKey(int key) { return key; }
  // Non-zero refuses the edit.
  virtual int nfBeginLabelEdited(HTREEITEM) { return 1; }
  // Non-zero keeps the new text; not called for a cancelled edit.
  virtual int nfEndLabelEdited(HTREEITEM, const char*) { return 0; }

  int onNotify(NMHDR* header) override;
};
