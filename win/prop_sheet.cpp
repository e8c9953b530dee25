#include "win/prop_sheet.h"

#include <commctrl.h>

#include "win/lwin.h"

namespace {
// The answer of a property-sheet notification.
INT_PTR notifyResult(HWND page, LONG_PTR value) {
  SetWindowLongPtrA(page, DWLP_MSGRESULT, value);
  return TRUE;
}
}  // namespace

INT_PTR LPropPage::route(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message != WM_NOTIFY) return LDialog::route(message, wParam, lParam);
  switch (reinterpret_cast<const NMHDR*>(lParam)->code) {
    case PSN_SETACTIVE:
      sheet_->startPage = index_;
      return notifyResult(hwnd, 0);
    case PSN_KILLACTIVE:
      // TRUE keeps the page shown.
      return notifyResult(hwnd, saveControls() ? FALSE : TRUE);
    case PSN_APPLY:
      if (!saveControls() || onOk() == 0) return notifyResult(hwnd, PSNRET_INVALID_NOCHANGEPAGE);
      sheet_->saved_++;
      return notifyResult(hwnd, PSNRET_NOERROR);
    default:
      return FALSE;
  }
}

void LPropPage::abandon() { PropSheet_PressButton(GetParent(hwnd), PSBTN_CANCEL); }

void LPropSheet::add(LPropPage& page) {
  page.sheet_ = this;
  page.index_ = pages_.count;
  pages_.add(&page);
}

int32_t LPropSheet::run(HWND owner) {
  LArrOf<HPROPSHEETPAGE> handles;
  for (LPropPage* page : pages_) {
    PROPSHEETPAGEA sheetPage = {};
    sheetPage.dwSize = sizeof(sheetPage);
    sheetPage.dwFlags = PSP_USETITLE;
    sheetPage.hInstance = GetModuleHandleA(nullptr);
    sheetPage.pszTemplate = page->templateName();
    sheetPage.pszTitle = page->tabTitle_.ptr;
    sheetPage.pfnDlgProc = FPageProc;
    sheetPage.lParam = reinterpret_cast<LPARAM>(page);
    HPROPSHEETPAGE handle = CreatePropertySheetPageA(&sheetPage);
    if (handle == nullptr) {
      for (HPROPSHEETPAGE made : handles) DestroyPropertySheetPage(made);
      FWinFail("CreatePropertySheetPage()");
    }
    handles.add(handle);
  }
  PROPSHEETHEADERA header = {};
  header.dwSize = sizeof(header);
  header.dwFlags = PSH_NOAPPLYNOW | PSH_NOCONTEXTHELP;
  header.hwndParent = owner;
  header.hInstance = GetModuleHandleA(nullptr);
  header.pszCaption = caption_.ptr;
  header.nPages = static_cast<UINT>(handles.count);
  header.nStartPage = startPage >= 0 && startPage < pages_.count ? startPage : 0;
  header.phpage = handles.data();
  saved_ = 0;
  LFocusReturn focusBack;
  // From here the sheet owns the pages' handles.
  if (PropertySheetA(&header) == -1) FWinFail("PropertySheet()");
  return saved_;
}
