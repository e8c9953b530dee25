// TMainWin: the one main window of a running copy. It owns the toolbar,
// the status bar, the two panes and the menus, turns every gesture into a
// command id, and asks ui/'s decisions what each id does, what is enabled
// and what the menus hold. Main thread only.
#pragma once

#include <cstdint>

#include "lib/lstr.h"
#include "ui/command_state.h"
#include "ui/list_pane_win32.h"
#include "ui/main_logic.h"
#include "ui/main_view.h"
#include "ui/status_line.h"
#include "ui/tree_pane_win32.h"
#include "win/lwin.h"
#include "win/menu.h"
#include "win/split_band.h"
#include "win/status_bar.h"
#include "win/toolbar.h"

class TApp;
class TConfig;
class TRec;

// The window class by which other copies find this one.
extern const char* const kMainClass;

class TMainToolbar : public LToolbar {
 public:
  explicit TMainToolbar(TMainWin& owner) : owner_(owner) {}
  LStr tipText(int32_t id) override;
  void onHotButton(int32_t id) override;

 private:
  TMainWin& owner_;
};

class TMainWin : public LWin, public TMainView {
 public:
  TMainWin(TApp& app, TConfig& config);
  ~TMainWin() override;

  void createWindow();
  TMainLogic& logic() { return logic_; }
  TTreePane& tree() { return tree_; }
  TListPane& list() { return list_; }
  LStatusBar& status() { return status_; }

  void dispatch(int32_t id);
  void contextMenu();
  void treeSelectionChanged(HTREEITEM node);
  // A pane renamed a record.
  void renamed(TRec* rec);
  // A pane got the keyboard; the window gives it back there when it is
  // active again.
  void paneFocused(HWND pane) { lastPane_ = pane; }
  // The status-bar help of a command id over the remembered text; 0 ends
  // the help and brings that text back.
  void showHelp(int32_t id);
  // The worker's command ended without error: panes follow, report shown.
  void commandFinished(TThread& thread);
  // The progress control in the status bar, while a command runs.
  void showProgress(bool on);
  void setPercent(int32_t percent);
  void setStatusPart(int32_t part, const char* text);

  // TMainView
  TAnswer ask(const char* question, bool withCancel) override;
  bool chooseArchivesToOpen(TFileChoice& choice) override;
  bool chooseArchiveToSave(TFileChoice& choice) override;
  bool chooseFolder(const char* title, LStr& folder) override;
  bool runAddDialog(TRec* target, LStrs& paths, TCond& cond) override;
  bool runExtractDialog(LStr& destination, const TRecList& records, TCond& cond) override;
  bool runDeleteDialog(const TRecList& records, TCond& cond) override;
  bool documentsFolder(LStr& folder) override;
  LStr programFolder() override;
  void setTitle(const char* windowTitle, const char* rootLabel) override;
  void setStatus(const char* text) override { setStatusPart(1, text); }
  void updateCommands() override;
  void selection(TRecList& out) override;
  TRec* treeSelected() override { return tree_.selectedRecord(); }
  bool treeHasFocus() override { return GetFocus() == tree_.ctrl; }
  bool bringForwardCopyWith(const char* fullPath) override;
  void startCopy(const char* argument) override;
  void pause(int32_t milliseconds) override;
  int32_t openWithDefaultApp(const char* path) override;
  void archiveReloaded() override;
  bool runSearchDialog(const char* title, TCond& cond, const TRecList& selection) override;
  void clearSearchRows() override;
  void openClipboard() override;
  bool clipboardFiles(LStrs& paths) override;
  void closeClipboard() override;
  void postCommand(int32_t id) override;
  void startCommand(TThread* thread) override;

  // LWin
  int onCreate() override;
  int onClose() override;
  int onSize(int width, int height) override;
  int onSetFocus() override;
  int onCommand(int id, int code) override;
  int onKeyDown(int key) override;
  int onLButtonDown(int x, int y) override;
  int onLButtonUp(int x, int y) override;
  int onMouseMove(int x, int y) override;
  int onCaptureLost() override;
  int onSetCursor() override;
  int onInitMenuPopup(HMENU menu) override;
  int onMenuSelect(int id, int flags) override;
  int onDropFiles(HDROP drop) override;
  LRESULT onCopyData(const COPYDATASTRUCT* data) override;
  int onUser(WPARAM wParam, LPARAM lParam) override;

 private:
  void buildMenus();
  void fillFileMenu();
  void layout();
  TCommandState commandState();
  void startRename();
  void newFolder();
  void fcAbout();
  void fcProperties();
  void fcOptions();
  void openHomePage();
  void fcRegister();
  bool inSplitter(int x, int y);
  // The width of the left pane for a splitter released at x.
  int32_t splitAt(int x);

  TApp& app_;
  TConfig& config_;
  TMainLogic logic_;
  TMainToolbar toolbar_;
  LStatusBar status_;
  LProgBar* progress_ = nullptr;
  TTreePane tree_;
  TListPane list_;
  LMenu* menuBar_ = nullptr;
  LMenu* fileMenu_ = nullptr;
  LMenu* viewMenu_ = nullptr;
  LMenu* popups_[4] = {};
  HFONT font_ = nullptr;
  bool dragging_ = false;
  LSplitBand band_;
  HWND lastPane_ = nullptr;
  int32_t top_ = 0;     // below the toolbar
  int32_t bottom_ = 0;  // above the status bar
  TStatusLine statusLine_;
};

// The main window, or null.
TMainWin* FMainWin();
