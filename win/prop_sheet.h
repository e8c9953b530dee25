// LPropSheet and LPropPage: a modal property sheet of pages, each page a
// dialog of its own template with bound controls. Leaving a page saves its
// controls; a refusal keeps the page shown. OK saves every page that was
// opened and runs its onOk. Main thread only.
#pragma once

#include <windows.h>

#include <cstdint>

#include "lib/larr.h"
#include "lib/lobj.h"
#include "lib/lstr.h"
#include "win/dialog.h"

class LPropSheet;

class LPropPage : public LDialog {
 public:
  LPropPage(const char* templateName, const char* tabTitle)
      : LDialog(templateName), tabTitle_(tabTitle) {}

  INT_PTR route(UINT message, WPARAM wParam, LPARAM lParam) override;
  void abandon() override;

 private:
  friend class LPropSheet;
  LStr tabTitle_;
  LPropSheet* sheet_ = nullptr;
  int32_t index_ = 0;
};

class LPropSheet : public LObj {
 public:
  // The page shown first; after a run, the page that was shown last.
  int32_t startPage = 0;

  explicit LPropSheet(const char* caption) : caption_(caption) {}
  LPropSheet(const LPropSheet&) = delete;
  LPropSheet& operator=(const LPropSheet&) = delete;

  // The sheet does not own its pages, which must outlive the run.
  void add(LPropPage& page);
  // Shows the sheet until it is closed; returns the number of pages saved
  // (0 when cancelled). "CreatePropertySheetPage() failed",
  // "PropertySheet() failed".
  int32_t run(HWND owner);

 private:
  friend class LPropPage;
  LStr caption_;
  LArrOf<LPropPage*> pages_;
  int32_t saved_ = 0;
};
