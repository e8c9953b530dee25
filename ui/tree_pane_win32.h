// TTreePane: the left pane. Its nodes carry no records: a node and its
// record are linked by the chain of names from the root, so the tree stays
// valid when a commit replaces the records.
#pragma once

#include "lib/larr.h"
#include "win/tree_view.h"

class TFolder;
class TMainWin;
class TRec;

class TTreePane : public LTreeView {
 public:
  explicit TTreePane(TMainWin& owner) : owner_(owner) {}

  // Clears the tree and shows the root with its children, selected and
  // expanded.
  void loadRoot(TFolder* root, const char* label, bool untitled);
  // Adds the children of folder below node that have no node yet, in
  // display order. With reorder the nodes are put in that order even when
  // none was added, as on expanding: a rename leaves its node where it was.
  void addChildren(HTREEITEM node, TFolder* folder, bool reorder = false);
  // Gives each folder child of node that has no child nodes its children,
  // so that expand buttons appear one level ahead.
  void loadAhead(HTREEITEM node);
  // Removes the nodes whose records are gone, below node.
  void prune(HTREEITEM node);
  TRec* recordOf(HTREEITEM node);
  HTREEITEM nodeOf(const TRec* rec);
  TRec* selectedRecord() { return recordOf(selected()); }

  void onSelChanged(HTREEITEM node) override;
  void onExpanding(HTREEITEM node) override;
  void onDblClick() override;
  void onRightClick() override;
  void onFocus() override;
  int onKey(int key) override;
  int nfBeginLabelEdited(HTREEITEM node) override;
  int nfEndLabelEdited(HTREEITEM node, const char* text) override;

 private:
  TMainWin& owner_;
};
