// The main window as the decisions of ui/ see it: the questions and dialogs
// it shows, the state of its panes, and the few system services (other
// copies of the program, the shell) that the flows need. The desktop program
// implements it with its window; the tests with a script.
#pragma once

#include <cstdint>

#include "lib/larr.h"
#include "lib/lstr.h"
#include "ui/selection.h"

class TCond;
class TThread;

enum TAnswer : int32_t { kAnswerYes, kAnswerNo, kAnswerCancel };

// An archive file dialog: what it starts with, and what the user chose.
struct TFileChoice {
  LStr folder;            // initial folder
  LStr name;              // initial name (save dialog)
  int32_t filterIdx = 0;  // the filter, as `arcDlgFilterIdx` keeps it
  LStrs chosen;           // full paths, several for the open dialog
};

// The other running copies of the program, as forwarding needs them.
class TRunningCopies {
 public:
  virtual ~TRunningCopies() = default;
  // Another copy of the program that has exactly this archive open comes
  // to the front; false when there is none.
  virtual bool bringForwardCopyWith(const char* fullPath) = 0;
};

class TMainView : public TRunningCopies {
 public:
  // A question box: yes/no, or yes/no/cancel.
  virtual TAnswer ask(const char* question, bool withCancel) = 0;
  // The system's open dialog (several files) and save dialog (one file,
  // default extension "kst"); false when cancelled.
  virtual bool chooseArchivesToOpen(TFileChoice& choice) = 0;
  virtual bool chooseArchiveToSave(TFileChoice& choice) = 0;
  // The system's folder browser; false when cancelled.
  virtual bool chooseFolder(const char* title, LStr& folder) = 0;
  // The dialogs of the long commands; each returns whether the user went on.
  // Add: the sources for target, which the user edits in paths (a folder
  // with its suffix); the comment goes into cond. Extract: the destination
  // of records, which the user edits in destination. Delete: records.
  // The conditions button of each fills cond.
  virtual bool runAddDialog(TRec* target, LStrs& paths, TCond& cond) = 0;
  virtual bool runExtractDialog(LStr& destination, const TRecList& records, TCond& cond) = 0;
  virtual bool runDeleteDialog(const TRecList& records, TCond& cond) = 0;
  // The user's documents folder; false when there is none.
  virtual bool documentsFolder(LStr& folder) = 0;
  // The folder of the running program.
  virtual LStr programFolder() = 0;

  virtual void setTitle(const char* windowTitle, const char* rootLabel) = 0;
  virtual void setStatus(const char* text) = 0;
  // Recomputes the enabled state of the commands (updateCommands).
  virtual void updateCommands() = 0;

  // The panes: the records a command works on (getSelection), the tree
  // pane's selected record, and whether the tree pane has the focus.
  virtual void selection(TRecList& out) = 0;
  virtual TRec* treeSelected() = 0;
  virtual bool treeHasFocus() = 0;

  // The clipboard, held open by the window from open to close ("OpenClipboard()
  // failed" is thrown as an error); while open, the file list on it, false
  // when it holds no file list.
  virtual void openClipboard() = 0;
  virtual bool clipboardFiles(LStrs& paths) = 0;
  virtual void closeClipboard() = 0;
  // Opens a file with the system's default application for it; the shell's
  // result: above 32 for success, 31 when no application is registered.
  virtual int32_t openWithDefaultApp(const char* path) = 0;
  // The conditions dialog of a search, with its title, on the kept search
  // conditions; true when the user pressed OK.
  virtual bool runSearchDialog(const char* title, TCond& cond, const TRecList& selection) = 0;
  // The list pane shows the search view, empty, for the rows to come.
  virtual void clearSearchRows() = 0;
  // The archive was read again from its file: the panes drop their rows.
  virtual void archiveReloaded() = 0;

  // Starts a new copy of the program with one argument (null: none).
  virtual void startCopy(const char* argument) = 0;
  virtual void pause(int32_t milliseconds) = 0;
  // Puts a command in the window's queue, behind what is waiting there.
  virtual void postCommand(int32_t id) = 0;
  // Makes the command the running one and starts it on the worker.
  virtual void startCommand(TThread* thread) = 0;
};
