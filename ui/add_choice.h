// TAddChoice: the decisions of the add dialog. Its list of sources (a
// folder stands there with " <folder>" behind its path, which the add
// command takes off again), and which of its buttons are enabled. A file
// takes one source only, and never a folder. Plain state, no window.
#pragma once

#include <cstdint>

#include "lib/larr.h"
#include "lib/lstr.h"

class TAddChoice {
 public:
  // The list starts with paths for a folder target; a file target starts
  // with an empty list, for the user to pick its one source.
  TAddChoice(bool fileTarget, const LStrs& paths);
  TAddChoice(const TAddChoice&) = delete;
  TAddChoice& operator=(const TAddChoice&) = delete;

  const LStrs& entries() const { return entries_; }
  // Adds a path as a file or as a folder; false when the target cannot
  // take it (a file target that has its source, or a folder for a file).
  bool add(const char* path, bool isFolder);
  // Adds a path by what is on disk at it.
  bool addExisting(const char* path);
  // Removes the entry at index and returns the index to select next: the
  // same place, or the last entry, or -1 when the list is empty.
  int32_t remove(int32_t index);

  bool okEnabled() const { return entries_.count > 0; }
  bool removeEnabled(int32_t selected) const { return selected >= 0 && selected < entries_.count; }
  bool fileBrowseEnabled() const { return !fileTarget_ || entries_.count == 0; }
  bool folderBrowseEnabled() const { return !fileTarget_; }
  // The open-file dialog lets the user pick several files for a folder.
  bool picksSeveral() const { return !fileTarget_; }

 private:
  bool fileTarget_;
  LStrs entries_;
};
