#include "win/dialog.h"

#include <commctrl.h>

#include "win/ctrl.h"
#include "win/lwin.h"

namespace {

INT_PTR routeTo(LDialog* dialog, HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_INITDIALOG) {
    dialog->hwnd = hwnd;
    SetWindowLongPtrA(hwnd, DWLP_USER, reinterpret_cast<LONG_PTR>(dialog));
  }
  dialog = reinterpret_cast<LDialog*>(GetWindowLongPtrA(hwnd, DWLP_USER));
  if (dialog == nullptr) return FALSE;
  if (message == WM_NCDESTROY) {
    SetWindowLongPtrA(hwnd, DWLP_USER, 0);
    dialog->hwnd = nullptr;
    return FALSE;
  }
  // A thrown integer has been shown to the user already; nothing may
  // unwind into the system's code.
  try {
    return dialog->route(message, wParam, lParam);
  } catch (int) {
    if (message == WM_INITDIALOG) dialog->abandon();
    return TRUE;
  }
}

INT_PTR CALLBACK dialogProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
  LDialog* starting = message == WM_INITDIALOG ? reinterpret_cast<LDialog*>(lParam) : nullptr;
  return routeTo(starting, hwnd, message, wParam, lParam);
}

}  // namespace

INT_PTR CALLBACK FPageProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
  LDialog* starting = nullptr;
  if (message == WM_INITDIALOG)
    starting = reinterpret_cast<LDialog*>(reinterpret_cast<const PROPSHEETPAGEA*>(lParam)->lParam);
  return routeTo(starting, hwnd, message, wParam, lParam);
}

int LDialog::run(HWND owner) {
  LFocusReturn focusBack;
  INT_PTR button = DialogBoxParamA(GetModuleHandleA(nullptr), templateName_, owner, dialogProc,
                                   reinterpret_cast<LPARAM>(this));
  if (button == -1) FWinFail("DialogBoxParam()");
  return static_cast<int>(button);
}

void LDialog::end(int button) { EndDialog(hwnd, button); }

INT_PTR LDialog::route(UINT message, WPARAM wParam, LPARAM) {
  switch (message) {
    case WM_INITDIALOG:
      return initialise();
    case WM_COMMAND:
      return command(LOWORD(wParam), HIWORD(wParam));
    case WM_DROPFILES:
      return answer(onDropFiles(reinterpret_cast<HDROP>(wParam)));
    // F1 anywhere in the dialog; the help button is IDHELP.
    case WM_HELP:
      return answer(onHelp());
    default:
      return FALSE;
  }
}

INT_PTR LDialog::answer(int rc) {
  if (rc == 1) return FALSE;
  SetWindowLongPtrA(hwnd, DWLP_MSGRESULT, rc == 0 ? 0 : TRUE);
  return TRUE;
}

INT_PTR LDialog::initialise() {
  if (!title.empty()) SetWindowTextA(hwnd, title.ptr);
  bool focused = false;
  for (LCtrl* ctrl : ctrls_) {
    ctrl->bind();
    ctrl->load();
    if (ctrl->takesFocus) {
      SetFocus(ctrl->hwnd);
      focused = true;
    }
  }
  for (LCtrl* ctrl : ctrls_) {
    ctrl->afterLoad();
    ctrl->afterInit();
  }
  int rc = onInit();
  if (acceptsFiles) DragAcceptFiles(hwnd, TRUE);
  if (centredOnOwner) centreOnOwner();
  // TRUE lets the system give the focus to the first control.
  return focused || rc == 0 ? FALSE : TRUE;
}

INT_PTR LDialog::command(int id, int code) {
  switch (id) {
    case IDOK:
      if (saveControls() && onOk() != 0) end(IDOK);
      return TRUE;
    case IDCANCEL:
      if (onCancel() != 0) end(IDCANCEL);
      return TRUE;
    case IDHELP:
      return answer(onHelp());
    default:
      for (LCtrl* ctrl : ctrls_) {
        if (ctrl->id != id) continue;
        int rc = ctrl->onCommand(code);
        if (rc != 1) return answer(rc);
      }
      return answer(onCommand(id, code));
  }
}

bool LDialog::saveControls() {
  for (LCtrl* ctrl : ctrls_)
    if (!ctrl->save()) return false;
  return true;
}

void LDialog::centreOnOwner() {
  HWND owner = GetWindow(hwnd, GW_OWNER);
  if (owner == nullptr) return;
  RECT outer;
  RECT own;
  GetWindowRect(owner, &outer);
  GetWindowRect(hwnd, &own);
  int width = own.right - own.left;
  int height = own.bottom - own.top;
  int x = outer.left + (outer.right - outer.left - width) / 2;
  int y = outer.top + (outer.bottom - outer.top - height) / 2;
  SetWindowPos(hwnd, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}
