// The flows of the main window that do not depend on how it is drawn:
// opening, closing and saving archives, the recent list, plain arguments
// and dropped files, and the start of the long commands. It works on the
// open archive and the settings through their globals and asks the window
// through TMainView. Main thread only.
#pragma once

#include <cstdint>

#include "lib/larr.h"
#include "lib/lstr.h"
#include "ui/selection.h"

class TApp;
class TMainView;
class TRunningCopies;
class TFolder;
class TRec;
class TWorkSet;

class TMainLogic {
 public:
  TMainLogic(TMainView& view, TApp& app) : view_(view), app_(app) {}

  // The window title and the label of the tree's root.
  void updateTitle();
  // Closes the archive (asking to save an untitled one with content); with
  // makeFresh an empty untitled archive follows. False keeps it open.
  bool fcClose(bool makeFresh);
  // The main window is being closed: true when it may go now. While a
  // command runs the user is asked to stop it; after Yes the close is tried
  // again once the worker has gone, as a posted exit command.
  bool closeWindow();
  // Copies the archive to a new path and continues there; false when
  // cancelled or refused.
  bool fcSaveAs();
  void fcOpen();
  // Recent entry `index` (from 0).
  void openRecent(int32_t index);
  // Archives: those open in another copy come forward there; the first of
  // the rest opens here when this window holds an empty untitled archive
  // (and inNewProcessOnly is false); every other one starts a new copy.
  void openArchives(const LStrs& paths, bool inNewProcessOnly);
  // Files from the command line or a drop: a list of archives alone, on an
  // empty untitled archive, is opened; anything else is added.
  void fcDropFiles(const LStrs& paths, bool noDialog);
  // The long commands, each after its dialog (add with noDialog: at once),
  // with the conditions chosen there.
  void fcAdd(const LStrs& paths, bool noDialog);
  void fcExt();
  void fcDel();
  // Search runs on the selection with the kept search conditions; unlike
  // the other long commands it opens its dialog while a command runs, and
  // only the start of the worker is refused then.
  void fcSearch();
  // The file list on the clipboard goes the way of a drop that asks for the
  // add dialog; the clipboard stays held until it is done.
  void fcPaste();
  // The selected versions (a file: its newest), at most ten, each written
  // to its copy in the work folder and opened with the system's default
  // application for it. A copy that fails reads the archive again, and the
  // rest of the selection goes on in the new tree.
  void fcOpenWithApp();
  // A folder "新しいフォルダ" (or "(2)", "(3)"... when taken) as the last
  // child of the tree pane's selected folder; null when busy or when a
  // folder is not selected. The tree is marked dirty; nothing is written.
  TFolder* fcNewFolder();

 private:
  bool holdsEmptyUntitled() const;
  bool checkAddTarget(TRec* target, const LStrs& paths, bool confirm);

  TMainView& view_;
  TApp& app_;
};

// When another copy of the program was running at start, removes each path
// that a running copy has open, bringing that copy forward.
void FForwardToRunning(LStrs& paths, TRunningCopies& copies);
// The archive path that a save dialog's answer stands for: a name ending in
// "." loses the dot and keeps no extension, a name without an extension
// gets ".kst", a name beginning with "." stays as it is.
LStr FSaveAsPath(const char* chosen);
// The answer to another copy that asks whether this one has `asked` open:
// 1 when it equals the open archive's full path, ASCII letters in either
// case and double-byte characters as units; 0 when none is open.
int32_t FAnswerForward(const char* openFullPath, const char* asked);
// The title of the search dialog: "検索", then the path of the one selected
// record or the count of several.
LStr FSearchTitle(const TRecList& records);
// The status report of a command that ended without error; searchRows is
// the number of rows a search left in the list pane.
LStr FCommandReport(int32_t cmdId, const TWorkSet& work, int32_t searchRows);
// True when the file at path is an archive by extension ("kst", exactly)
// and by its first four bytes.
bool FLooksLikeArchive(const char* path);
