// The options sheet: the general page (how add skips files, the folder of
// the work files) and the column page (the columns of the folder view and
// of the version view). The pages edit copies; only OK puts them into the
// settings. Main thread only.
#pragma once

#include <windows.h>

#include <cstdint>

#include "app/column.h"
#include "lib/larr.h"
#include "lib/lstr.h"
#include "ui/column_choice.h"
#include "win/button.h"
#include "win/check_box.h"
#include "win/dir_button.h"
#include "win/edit_box.h"
#include "win/list_box.h"
#include "win/prop_sheet.h"
#include "win/text_box.h"

class TApp;
class TConfig;
class TColumnLists;

enum TColumnMove { kMoveShow, kMoveHide, kMoveUp, kMoveDown };

// One of the four buttons between a pair of lists.
class TMoveButton : public LButton {
 public:
  TMoveButton(LDialog& page, int id, TColumnLists& lists, TColumnMove move)
      : LButton(page, id), lists_(lists), move_(move) {}
  int onClick() override;

 private:
  TColumnLists& lists_;
  TColumnMove move_;
};

// A pair of lists, shown and hidden columns of one view, with their labels
// and buttons; its controls are numbered from base (resource_ids.h).
class TColumnLists {
 public:
  TColumnLists(LDialog& page, int base, const TColumns& set, const char* shownLabel,
               const char* hiddenLabel);
  void move(TColumnMove move);
  void applyTo(TColumns& set) const { choice_.applyTo(set); }

 private:
  TColumnChoice choice_;
  // The labels are set at run time: their 表 cannot pass the resource
  // compiler.
  LStr shownLabelText_;
  LStr hiddenLabelText_;
  LStrs shownNames_;
  LStrs hiddenNames_;
  int32_t shownSelected_ = 0;
  int32_t hiddenSelected_ = 0;
  LTextBox shownLabel_;
  LListBox shownList_;
  TMoveButton show_;
  TMoveButton hide_;
  TMoveButton up_;
  TMoveButton down_;
  LTextBox hiddenLabel_;
  LListBox hiddenList_;
};

// A page of the options: F1 on it opens the options' page of the help.
class TOptPage : public LPropPage {
 public:
  using LPropPage::LPropPage;
  int onHelp() override;
};

class TOptGeneralPage : public TOptPage {
 public:
  explicit TOptGeneralPage(TApp& app);
  int onOk() override;

 private:
  TApp& app_;
  int32_t skipEquDtF_;
  int32_t skipEquF_;
  LStr tmpDirBase_;
  LCheckBox sameTime_;
  LCheckBox sameContent_;
  LEditBox tempDir_;
  LDirButton browse_;
};

class TOptColumnPage : public TOptPage {
 public:
  explicit TOptColumnPage(TApp& app);
  int onOk() override;

 private:
  TApp& app_;
  TColumnLists files_;
  TColumnLists versions_;
};

// Runs the sheet from the page shown last; true when it ended with OK and
// the settings took the pages' values.
bool FShowOptions(HWND owner, TApp& app, TConfig& config);
