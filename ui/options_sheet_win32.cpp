#include "ui/options_sheet_win32.h"

#include "app/app.h"
#include "app/config.h"
#include "ui/command_table.h"
#include "ui/help_page_win32.h"
#include "ui/resource_ids.h"

int TMoveButton::onClick() {
  lists_.move(move_);
  return 0;
}

TColumnLists::TColumnLists(LDialog& page, int base, const TColumns& set, const char* shownLabel,
                           const char* hiddenLabel)
    : choice_(set),
      shownLabelText_(shownLabel),
      hiddenLabelText_(hiddenLabel),
      shownLabel_(page, base + IDC_OPT_SHOWN_LABEL, shownLabelText_),
      shownList_(page, base + IDC_OPT_SHOWN_LIST, shownNames_, shownSelected_),
      show_(page, base + IDC_OPT_SHOW, *this, kMoveShow),
      hide_(page, base + IDC_OPT_HIDE, *this, kMoveHide),
      up_(page, base + IDC_OPT_UP, *this, kMoveUp),
      down_(page, base + IDC_OPT_DOWN, *this, kMoveDown),
      hiddenLabel_(page, base + IDC_OPT_HIDDEN_LABEL, hiddenLabelText_),
      hiddenList_(page, base + IDC_OPT_HIDDEN_LIST, hiddenNames_, hiddenSelected_) {
  FColumnNames(choice_.shown(), shownNames_);
  FColumnNames(choice_.hidden(), hiddenNames_);
  if (hiddenNames_.count == 0) hiddenSelected_ = -1;
}

void TColumnLists::move(TColumnMove move) {
  switch (move) {
    case kMoveShow:
      hiddenSelected_ = choice_.show(hiddenSelected_);
      break;
    case kMoveHide:
      shownSelected_ = choice_.hide(shownSelected_);
      break;
    case kMoveUp:
      shownSelected_ = choice_.moveUp(shownSelected_);
      break;
    case kMoveDown:
      shownSelected_ = choice_.moveDown(shownSelected_);
      break;
  }
  FColumnNames(choice_.shown(), shownNames_);
  FColumnNames(choice_.hidden(), hiddenNames_);
  shownList_.load();
  hiddenList_.load();
}

int TOptPage::onHelp() {
  FOpenHelpPage(hwnd, "options");
  return 0;
}

TOptGeneralPage::TOptGeneralPage(TApp& app)
    : TOptPage("OPT_GENERAL_DLG", "全般"),
      app_(app),
      skipEquDtF_(app.skipEquDtF),
      skipEquF_(app.skipEquF),
      tmpDirBase_(app.tmpDirBase),
      sameTime_(*this, IDC_OPT_SKIP_SAME_TIME, skipEquDtF_),
      sameContent_(*this, IDC_OPT_SKIP_SAME_CONTENT, skipEquF_),
      tempDir_(*this, IDC_OPT_TEMP_DIR, tmpDirBase_),
      browse_(*this, IDC_OPT_TEMP_BROWSE, tempDir_, "一時ファイルのフォルダ") {}

int TOptGeneralPage::onOk() {
  app_.skipEquDtF = skipEquDtF_;
  app_.skipEquF = skipEquF_;
  app_.tmpDirBase = tmpDirBase_;
  return 1;
}

TOptColumnPage::TOptColumnPage(TApp& app)
    : TOptPage("OPT_COLUMN_DLG", "列の定義"),
      app_(app),
      files_(*this, IDC_OPT_FILE_COLUMNS, app.fcols, "表示する列(&W):", "表示しない列(&Z):"),
      versions_(*this, IDC_OPT_VERSION_COLUMNS, app.vcols, "表示する列(&R):", "表示しない列(&C):") {
}

int TOptColumnPage::onOk() {
  files_.applyTo(app_.fcols);
  versions_.applyTo(app_.vcols);
  return 1;
}

bool FShowOptions(HWND owner, TApp& app, TConfig& config) {
  TOptGeneralPage general(app);
  TOptColumnPage columns(app);
  LPropSheet sheet(FCommandRow(kCmdOptions)->text);
  sheet.add(general);
  sheet.add(columns);
  sheet.startPage = config.optionsPage;
  int32_t saved = sheet.run(owner);
  config.optionsPage = sheet.startPage;
  return saved > 0;
}
