#include "ui/main_win_win32.h"

#include <windows.h>

#include <commdlg.h>
#include <shellapi.h>
#include <shlobj.h>

#include <cstring>
#include <initializer_list>

#include "app/app.h"
#include "app/config.h"
#include "app/product.h"
#include "app/worker.h"
#include "archive/archive.h"
#include "archive/record.h"
#include "lib/file_util.h"
#include "lib/msg.h"
#include "lib/path_parts.h"
#include "store/work_set.h"
#include "ui/about_dlg_win32.h"
#include "ui/about_text.h"
#include "ui/add_dlg_win32.h"
#include "ui/command_state.h"
#include "ui/command_table.h"
#include "ui/del_dlg_win32.h"
#include "ui/cond_dialogs_win32.h"
#include "ui/desktop_ui_win32.h"
#include "ui/ext_dlg_win32.h"
#include "ui/help_page_win32.h"
#include "ui/options_sheet_win32.h"
#include "ui/pane_logic.h"
#include "ui/running_copies_win32.h"
#include "ui/user_dlg_win32.h"
#include "win/file_list.h"
#include "win/folder_browser.h"
#include "win/program_path.h"
#include "win/prop_sheet.h"
#include "win/shell_icons.h"

const char* const kMainClass = "KST1414";

namespace {
TMainWin* gMainWin = nullptr;

const int kSplitGap = 2;
// Status bar parts in character units, idle and with a command running.
const int32_t kIdleParts[] = {-2, -1, 7, 0};
const int32_t kBusyParts[] = {30, -1, 7, 0};
const char kArchiveFilter[] = "KST ファイル (*.kst)\0*.kst\0すべてのファイル (*.*)\0*.*\0";

// The toolbar's pictures come from the system's standard and view sets.
int pictureOf(int32_t id, int standard, int view) {
  switch (id) {
    case kCmdNew:
      return standard + STD_FILENEW;
    case kCmdOpen:
      return standard + STD_FILEOPEN;
    case kCmdAdd:
      return standard + STD_PASTE;
    case kCmdExtract:
      return standard + STD_COPY;
    case kCmdDelete:
      return standard + STD_DELETE;
    case kCmdNewFolder:
      return view + VIEW_NEWFOLDER;
    case kCmdStop:
      return standard + STD_UNDO;
    case kCmdSearch:
      return standard + STD_FIND;
    default:
      return standard + STD_PROPERTIES;
  }
}

// The paths of a file list, from a drop or the clipboard; empty ones are
// left out.
}  // namespace

TMainWin* FMainWin() { return gMainWin; }

LStr TMainToolbar::tipText(int32_t id) { return FToolTipText(id); }
void TMainToolbar::onHotButton(int32_t id) {
  bool enabled = id != 0 && SendMessageA(ctrl, TB_ISBUTTONENABLED, id, 0) != 0;
  owner_.showHelp(enabled ? id : 0);
}

TMainWin::TMainWin(TApp& app, TConfig& config)
    : app_(app),
      config_(config),
      logic_(*this, app),
      toolbar_(*this),
      tree_(*this),
      list_(*this, app) {
  gMainWin = this;
}

TMainWin::~TMainWin() {
  delete progress_;
  delete menuBar_;
  if (font_ != nullptr) DeleteObject(font_);
  gMainWin = nullptr;
}

void TMainWin::createWindow() {
  FRegisterWinClass(kMainClass);
  ownsLoop = true;
  const TRect32& r = app_.rcMain;
  create(kMainClass, "Kestrom", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, WS_EX_ACCEPTFILES, r.left,
         r.top, r.width, r.height, nullptr, nullptr);
  ShowWindow(hwnd, SW_SHOW);
  SetFocus(tree_.ctrl);
}

int TMainWin::onCreate() {
  // The system's user-interface font, with the Japanese character set.
  NONCLIENTMETRICSA metrics = {};
  metrics.cbSize = sizeof(metrics);
  SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0);
  metrics.lfMessageFont.lfCharSet = SHIFTJIS_CHARSET;
  font_ = CreateFontIndirectA(&metrics.lfMessageFont);

  toolbar_.create(this);
  int standard = toolbar_.addSystemPictures(IDB_STD_SMALL_COLOR);
  int view = toolbar_.addSystemPictures(IDB_VIEW_SMALL_COLOR);
  int32_t buttons = 0;
  const int32_t* ids = FToolbarButtons(&buttons);
  for (int32_t i = 0; i < buttons; i++)
    toolbar_.addButton(ids[i], pictureOf(ids[i], standard, view));
  status_.create(hwnd);
  status_.setFont(font_);
  tree_.create(this);
  tree_.setFont(font_);
  tree_.setImageList(FSystemImages(true));
  list_.create(this);
  list_.setFont(font_);
  list_.start(app_.lvMode);
  buildMenus();
  return 0;
}

void TMainWin::buildMenus() {
  menuBar_ = new LMenu(/*bar=*/true);
  int32_t count = 0;
  const TMenuDef* bar = FMenuBar(&count);
  for (int32_t p = 0; p < count && p < 4; p++) {
    LMenu* popup = new LMenu(false);
    popups_[p] = popup;
    for (int32_t i = 0; i < bar[p].count; i++) {
      if (bar[p].ids[i] == kSeparator)
        popup->separator();
      else
        popup->append(bar[p].ids[i], FMenuText(bar[p].ids[i], true).ptr);
    }
    menuBar_->appendPopup(*popup, bar[p].title);
  }
  fileMenu_ = popups_[0];
  viewMenu_ = popups_[2];
  fillFileMenu();
  SetMenu(hwnd, menuBar_->handle);
}

void TMainWin::fillFileMenu() {
  fileMenu_->removeAll();
  LInts ids;
  FFileMenu(app_.mru.count, ids);
  for (int32_t id : ids) {
    if (id == kSeparator)
      fileMenu_->separator();
    else if (id >= kCmdRecentFirst && id <= kCmdRecentLast)
      fileMenu_->append(
          id, FRecentMenuText(id - kCmdRecentFirst, app_.mru[id - kCmdRecentFirst]->ptr).ptr);
    else
      fileMenu_->append(id, FMenuText(id, true).ptr);
  }
}

void TMainWin::layout() {
  RECT client;
  GetClientRect(hwnd, &client);
  int toolbarHeight = toolbar_.height();
  toolbar_.move(0, 0, client.right, toolbarHeight);
  SendMessageA(status_.hwnd, WM_SIZE, 0, 0);
  status_.setParts(progress_ != nullptr ? kBusyParts : kIdleParts);
  top_ = toolbarHeight;
  bottom_ = client.bottom - status_.height();
  int left = app_.leftWidth;
  tree_.move(0, top_, left, bottom_ - top_);
  list_.move(left + kSplitGap, top_, client.right - left - kSplitGap, bottom_ - top_);
}

int TMainWin::onSize(int, int) {
  layout();
  return 0;
}

bool TMainWin::inSplitter(int x, int y) {
  return x >= app_.leftWidth && x < app_.leftWidth + kSplitGap && y >= top_ && y < bottom_;
}

int32_t TMainWin::splitAt(int x) {
  // Each pane keeps a strip that the pointer can take hold of.
  const int kKeep = 10;
  RECT client;
  GetClientRect(hwnd, &client);
  int most = static_cast<int>(client.right) - kKeep - kSplitGap;
  return x < kKeep ? kKeep : x > most ? most : x;
}

int TMainWin::onLButtonDown(int x, int y) {
  if (!inSplitter(x, y)) return 1;
  dragging_ = true;
  SetCapture(hwnd);
  onMouseMove(x, y);
  return 0;
}

int TMainWin::onMouseMove(int x, int) {
  if (!dragging_) return 1;
  int32_t left = splitAt(x);
  band_.show(hwnd, RECT{left, top_, left + kSplitGap, bottom_});
  return 0;
}

int TMainWin::onLButtonUp(int x, int) {
  if (!dragging_) return 1;
  dragging_ = false;
  ReleaseCapture();
  band_.hide();
  app_.leftWidth = splitAt(x);
  layout();
  // Moved this far at once, the list kept stale pieces of its old picture
  // under Wine: the panes are drawn anew.
  RedrawWindow(hwnd, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
  return 0;
}

int TMainWin::onCaptureLost() {
  // Another window took the mouse in the middle of a drag (a box, a switch
  // to another program): the band goes and the panes stay as they were.
  if (!dragging_) return 1;
  dragging_ = false;
  band_.hide();
  return 0;
}

int TMainWin::onSetCursor() {
  POINT point;
  GetCursorPos(&point);
  ScreenToClient(hwnd, &point);
  if (!dragging_ && !inSplitter(point.x, point.y)) return 1;
  SetCursor(LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_SIZEWE)));
  return 2;
}

TCommandState TMainWin::commandState() {
  TRecList records;
  selection(records);
  TCommandState state;
  state.kinds = FSelKinds(records);
  state.busy = FThread() != nullptr;
  state.allowsFind = FSelectionAllowsFind(records);
  TRec* treeRec = tree_.selectedRecord();
  state.treeOnFolder = treeRec != nullptr && treeRec->isFolder();
  return state;
}

void TMainWin::updateCommands() {
  if (hwnd == nullptr || menuBar_ == nullptr) return;
  TCommandState state = commandState();
  int32_t count = 0;
  const int32_t* ids = FGovernedCommands(&count);
  for (int32_t i = 0; i < count; i++) {
    bool on = FCommandEnabled(ids[i], state);
    for (LMenu* popup : popups_) popup->enable(ids[i], on);
    toolbar_.enable(ids[i], on);
  }
}

void TMainWin::selection(TRecList& out) {
  TRecList listSelected;
  list_.selectedRecords(listSelected);
  FChooseSelection(list_.hasFocus(), listSelected, tree_.selectedRecord(), false, out);
}

int TMainWin::onInitMenuPopup(HMENU menu) {
  if (menu == fileMenu_->handle) fillFileMenu();
  updateCommands();
  if (menu == viewMenu_->handle) {
    for (int32_t id : {kCmdLargeIcons, kCmdSmallIcons, kCmdListMode, kCmdDetails, kCmdAllColumns})
      viewMenu_->check(id, id == list_.modeCommand());
  }
  return 0;
}

void TMainWin::showHelp(int32_t id) {
  LStr help = id == 0 ? LStr() : FHelpText(id, app_.mru);
  status_.setText(1, statusLine_.help(help.ptr));
}

int TMainWin::onMenuSelect(int id, int flags) {
  // 0xFFFF: the menu closed.
  showHelp(flags == 0xFFFF || (flags & MF_POPUP) ? 0 : id);
  return 1;
}

void TMainWin::setStatusPart(int32_t part, const char* text) {
  status_.setText(part, part == 1 ? statusLine_.report(text) : text);
}

void TMainWin::showProgress(bool on) {
  delete progress_;
  progress_ = nullptr;
  if (on) {
    status_.setParts(kBusyParts);
    progress_ = new LProgBar;
    progress_->create(status_.hwnd, status_.partRect(0));
  } else {
    status_.setParts(kIdleParts);
  }
}

void TMainWin::setPercent(int32_t percent) {
  if (progress_ != nullptr) progress_->setPos(percent);
}

int TMainWin::onUser(WPARAM, LPARAM) {
  TDesktopUi* ui = static_cast<TDesktopUi*>(FWorkerUi());
  if (ui != nullptr) ui->showPending();
  return 0;
}

void TMainWin::contextMenu() {
  if (FThread() != nullptr) return;
  LInts ids;
  LInts rows;
  list_.selectedRows(rows);
  FContextMenu(commandState(), list_.hasFocus() && rows.count == 0, ids);
  LMenu menu(false);
  for (int32_t id : ids) {
    if (id == kSeparator)
      menu.separator();
    else
      menu.append(id, FMenuText(id, false).ptr);
  }
  TCommandState state = commandState();
  for (int32_t id : ids)
    if (id != kSeparator) menu.enable(id, FCommandEnabled(id, state));
  POINT point;
  GetCursorPos(&point);
  menu.track(hwnd, point.x, point.y);
}

void TMainWin::treeSelectionChanged(HTREEITEM node) {
  if (FThread() != nullptr || node == nullptr) {
    list_.clear();
    list_.pendingFocus = list_.nextPendingFocus = nullptr;
    return;
  }
  TRec* rec = tree_.recordOf(node);
  if (rec == nullptr) return;
  if (rec->isFolder() && tree_.firstChild(node) == nullptr)
    tree_.addChildren(node, static_cast<TFolder*>(rec));
  list_.refill();
  setStatus(rec->isFolder() ? FFolderStatus(static_cast<TFolder*>(rec)).ptr : "");
  updateCommands();
}

void TMainWin::renamed(TRec*) { updateCommands(); }

void TMainWin::startRename() {
  if (FBusy(1)) return;
  if (list_.hasFocus()) {
    // The focus mark may rest on a row that is not selected; only a
    // selected row is renamed.
    LInts rows;
    list_.selectedRows(rows);
    if (rows.count > 0) list_.editLabel(rows[0]);
    return;
  }
  HTREEITEM node = tree_.selected();
  if (node != nullptr) tree_.editLabel(node);
}

void TMainWin::newFolder() {
  TFolder* folder = logic_.fcNewFolder();
  if (folder == nullptr) return;
  HTREEITEM node = tree_.selected();
  tree_.addChildren(node, static_cast<TFolder*>(folder->parent));
  tree_.expand(node, true);
  list_.refill();
  HWND focus = GetFocus();
  if (focus == tree_.ctrl)
    SetFocus(list_.ctrl);
  else if (focus != list_.ctrl)
    SetFocus(tree_.ctrl);
  int32_t row = list_.rowOf(folder);
  if (row < 0) return;
  list_.focusRow(row, /*select=*/true);
  list_.editLabel(row);
}

void TMainWin::dispatch(int32_t id) {
  if (id >= kCmdRecentFirst && id <= kCmdRecentLast) {
    logic_.openRecent(id - kCmdRecentFirst);
    return;
  }
  if (FIsListMode(id)) {
    list_.storeWidths();
    list_.setMode(id);
    return;
  }
  switch (id) {
    case kCmdNew:
      startCopy(nullptr);
      return;
    case kCmdOpen:
      logic_.fcOpen();
      return;
    case kCmdClose:
      logic_.fcClose(/*makeFresh=*/true);
      return;
    case kCmdSaveAs:
      logic_.fcSaveAs();
      return;
    case kCmdExit:
      PostMessageA(hwnd, WM_CLOSE, 0, 0);
      return;
    case kCmdAdd:
      logic_.fcAdd(LStrs(), /*noDialog=*/false);
      return;
    case kCmdExtract:
      logic_.fcExt();
      return;
    case kCmdDelete:
      logic_.fcDel();
      return;
    case kCmdRename:
      startRename();
      return;
    case kCmdNewFolder:
      newFolder();
      return;
    case kCmdOpenWithApp:
      logic_.fcOpenWithApp();
      return;
    case kCmdPaste:
      logic_.fcPaste();
      return;
    case kCmdSelectAll:
      list_.selectAll();
      return;
    case kCmdStop:
      FRequestStop();
      return;
    case kCmdSearch:
      logic_.fcSearch();
      return;
    case kCmdProperties:
      fcProperties();
      return;
    case kCmdOptions:
      fcOptions();
      return;
    case kCmdAbout:
      fcAbout();
      return;
    case kCmdHomePage:
      openHomePage();
      return;
    case kCmdHelp:
      FOpenHelpPage(hwnd, "index");
      return;
    case kCmdRegister:
      fcRegister();
      return;
    case kCmdWorkerDone: {
      bool failed = FThread() != nullptr && FThread()->error != 0;
      FCompleteCommand();
      // After a failure the archive was read again: rows would point at
      // records of the tree that is gone.
      if (failed) list_.refill();
      updateCommands();
      return;
    }
    default:
      return;
  }
}

void TMainWin::fcAbout() {
  LStrs lines;
  FAboutLines(FProgramPath().ptr, lines);
  TAboutDlg about(lines);
  about.run(hwnd);
}

void TMainWin::fcProperties() {
  // The worker owns the tree while it runs.
  if (FThread() != nullptr) return;
  TRecList records;
  selection(records);
  if (!FSelectionHasProperties(records)) return;
  LPropPage general("PROP_FILE_DLG", "全般");
  LPropSheet sheet(FCommandRow(kCmdProperties)->text);
  sheet.add(general);
  sheet.run(hwnd);
}

void TMainWin::fcOptions() {
  // The worker adds search rows under the columns while it runs.
  if (FThread() != nullptr) return;
  // The page starts from the widths the user sees now.
  list_.storeWidths();
  if (FShowOptions(hwnd, app_, config_)) list_.setMode(list_.modeCommand());
}

void TMainWin::fcRegister() {
  TUserDlg user(app_);
  user.run(hwnd);
}

void TMainWin::openHomePage() {
  ShellExecuteA(hwnd, "open", kHomePage, nullptr, nullptr, SW_SHOWNORMAL);
}

int TMainWin::onCommand(int id, int) {
  dispatch(id);
  return 0;
}

int TMainWin::onSetFocus() {
  SetFocus(lastPane_ != nullptr ? lastPane_ : tree_.ctrl);
  return 0;
}

int TMainWin::onKeyDown(int key) {
  bool ctrl = GetKeyState(VK_CONTROL) < 0;
  int32_t id = FKeyCommand(key, ctrl, FThread() != nullptr);
  if (id == kKeyNextPane) {
    SetFocus(GetFocus() == tree_.ctrl ? list_.ctrl : tree_.ctrl);
    return 0;
  }
  if (id > 0) {
    dispatch(id);
    return 0;
  }
  return id == kKeySwallowed ? 0 : 1;
}

int TMainWin::onDropFiles(HDROP drop) {
  LStrs paths;
  FReadFileList(drop, paths);
  DragFinish(drop);
  logic_.fcDropFiles(paths, /*noDialog=*/GetKeyState(VK_CONTROL) >= 0);
  return 0;
}

LRESULT TMainWin::onCopyData(const COPYDATASTRUCT* data) {
  if (data == nullptr || data->dwData != 0 || data->lpData == nullptr) return 0;
  const char* bytes = static_cast<const char*>(data->lpData);
  LStr asked(bytes, static_cast<int32_t>(strnlen(bytes, data->cbData)));
  TArchive* archive = FArchive();
  if (archive == nullptr || archive->path.empty()) return 0;
  return FAnswerForward(archive->fullPath.ptr, asked.ptr);
}

int TMainWin::onClose() {
  if (!logic_.closeWindow()) return 0;
  WINDOWPLACEMENT placement = {};
  placement.length = sizeof(placement);
  if (GetWindowPlacement(hwnd, &placement)) {
    const RECT& r = placement.rcNormalPosition;
    app_.rcMain = {r.left, r.top, r.right - r.left, r.bottom - r.top};
  }
  list_.storeWidths();
  app_.lvMode = list_.modeCommand();
  return 1;
}

void TMainWin::commandFinished(TThread& thread) {
  TArchive& archive = *FArchive();
  switch (thread.cmdId) {
    case kCmdAdd:
      if (thread.target != nullptr && thread.target->isFolder()) {
        HTREEITEM node = tree_.nodeOf(thread.target);
        if (node != nullptr) {
          tree_.addChildren(node, static_cast<TFolder*>(thread.target));
          tree_.loadAhead(node);
          // The root was expanded while it had no children to show.
          if (node == tree_.root()) tree_.expand(node, true);
        }
      }
      list_.refill();
      break;
    case kCmdDelete: {
      HTREEITEM before = tree_.selected();
      list_.removeRecords(archive.removedRecords);
      tree_.prune(tree_.root());
      if (tree_.selected() != before) list_.refill();
      archive.removedRecords.clear();
      break;
    }
    case kCmdSearch:
      config_.searchBase = nullptr;
      break;
    default:
      break;
  }
  LStr report = FCommandReport(thread.cmdId, *FWorkSet(), list_.rowCount());
  if (!report.empty()) setStatus(report.ptr);
}

TAnswer TMainWin::ask(const char* question, bool withCancel) {
  int answer = MessageBoxA(hwnd, question, "Kestrom",
                           (withCancel ? MB_YESNOCANCEL : MB_YESNO) | MB_ICONQUESTION);
  return answer == IDYES ? kAnswerYes : answer == IDNO ? kAnswerNo : kAnswerCancel;
}

bool TMainWin::chooseArchivesToOpen(TFileChoice& choice) {
  LOpenFiles request;
  request.title = "アーカイブを開く";
  request.filter = kArchiveFilter;
  request.filterIdx = choice.filterIdx;
  request.folder = choice.folder;
  request.several = true;
  if (!FChooseFilesToOpen(hwnd, request)) return false;
  for (const LStr* path : request.chosen) choice.chosen.add(new LStr(*path));
  choice.filterIdx = request.filterIdx;
  return true;
}

bool TMainWin::chooseArchiveToSave(TFileChoice& choice) {
  char name[MAX_PATH * 4] = {};
  std::strncpy(name, choice.name.ptr, sizeof(name) - 1);
  OPENFILENAMEA dialog = {};
  dialog.lStructSize = sizeof(dialog);
  dialog.hwndOwner = hwnd;
  dialog.lpstrFilter = kArchiveFilter;
  dialog.nFilterIndex = choice.filterIdx;
  dialog.lpstrFile = name;
  dialog.nMaxFile = sizeof(name);
  dialog.lpstrInitialDir = choice.folder.empty() ? nullptr : choice.folder.ptr;
  dialog.lpstrTitle = "名前を付けて保存";
  dialog.lpstrDefExt = "kst";
  dialog.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_PATHMUSTEXIST;
  if (!GetSaveFileNameA(&dialog)) return false;
  choice.chosen.add(new LStr(name));
  choice.filterIdx = static_cast<int32_t>(dialog.nFilterIndex);
  return true;
}

bool TMainWin::chooseFolder(const char* title, LStr& folder) {
  return FBrowseForFolder(hwnd, title, folder);
}

bool TMainWin::runAddDialog(TRec* target, LStrs& paths, TCond& cond) {
  TAddDlg dialog(target, paths, cond, app_);
  return dialog.run(hwnd) == IDOK;
}

bool TMainWin::runExtractDialog(LStr& destination, const TRecList& records, TCond& cond) {
  TExtDlg dialog(destination, records, cond, app_, config_);
  return dialog.run(hwnd) == IDOK;
}

bool TMainWin::runDeleteDialog(const TRecList& records, TCond& cond) {
  TDelDlg dialog(records, cond, config_);
  return dialog.run(hwnd) == IDOK;
}

bool TMainWin::documentsFolder(LStr& folder) {
  char path[MAX_PATH] = {};
  if (!SHGetSpecialFolderPathA(hwnd, path, CSIDL_PERSONAL, FALSE)) return false;
  folder = path;
  return true;
}

LStr TMainWin::programFolder() { return FDirOf(FProgramPath().ptr, /*keepSep=*/false); }

void TMainWin::setTitle(const char* windowTitle, const char* rootLabel) {
  SetWindowTextA(hwnd, windowTitle);
  HTREEITEM root = tree_.root();
  if (root != nullptr) tree_.setText(root, rootLabel);
}

bool TMainWin::bringForwardCopyWith(const char* fullPath) {
  return TRunningWindows(hwnd).bringForwardCopyWith(fullPath);
}

void TMainWin::startCopy(const char* argument) {
  LStr quoted;
  if (argument != nullptr) quoted.format("\"%s\"", argument);
  ShellExecuteA(nullptr, "open", FProgramPath().ptr, argument != nullptr ? quoted.ptr : nullptr,
                nullptr, SW_SHOW);
}

void TMainWin::pause(int32_t milliseconds) { Sleep(milliseconds); }

int32_t TMainWin::openWithDefaultApp(const char* path) {
  HINSTANCE result = ShellExecuteA(hwnd, "open", path, nullptr, nullptr, SW_SHOWNORMAL);
  return static_cast<int32_t>(reinterpret_cast<intptr_t>(result));
}

void TMainWin::archiveReloaded() { list_.refill(); }

bool TMainWin::runSearchDialog(const char* title, TCond& cond, const TRecList& selection) {
  return FRunLimitDialog(hwnd, cond, config_.searchExpanded, title, selection);
}

void TMainWin::clearSearchRows() {
  list_.clear();
  list_.switchView(kViewSearch);
}

void TMainWin::openClipboard() {
  if (!OpenClipboard(hwnd)) FWinFail("OpenClipboard()");
}

bool TMainWin::clipboardFiles(LStrs& paths) {
  HANDLE list = GetClipboardData(CF_HDROP);
  if (list == nullptr) return false;
  FReadFileList(static_cast<HDROP>(list), paths);
  return true;
}

void TMainWin::closeClipboard() {
  // Called on the way out of a paste, also after an error: it reports and
  // does not throw.
  if (!CloseClipboard()) FMsg(kMsgSystem, "CloseClipboard() failed");
}

void TMainWin::postCommand(int32_t id) { PostMessageA(hwnd, WM_COMMAND, id, 0); }

void TMainWin::startCommand(TThread* thread) {
  FStartCommand(thread);
  updateCommands();
}
