// What the open archive needs from the application around it: the paths of
// the work folder, the recent list, and the panes that show the tree. The
// application installs its host; tests install their own.
#pragma once

#include "lib/lstr.h"

class TFolder;

class TArchiveHost {
 public:
  virtual ~TArchiveHost() = default;
  // The untitled archive of this process: "無題" in its work folder.
  virtual void untitledPath(LStr& out) = 0;
  // The update file of this process's commands.
  virtual void updatePath(LStr& out) = 0;
  virtual void addRecent(const char* /*fullPath*/) {}
  virtual void removeRecent(const char* /*fullPath*/) {}
  // The folder the open dialog starts in.
  virtual void setArchiveFolder(const char* /*folder*/) {}
  // The tree was read anew: the tree pane rebuilds itself from the root.
  virtual void treeLoaded(TFolder* /*root*/) {}
  // The archive is closing: the panes let go of every record.
  virtual void treeClosing() {}
  // The shared state of the last command is replaced by a fresh one.
  virtual void resetWork() {}
};
