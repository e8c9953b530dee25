#include "win/lwin.h"

#include <cstdio>

#include "lib/fail.h"
#include "lib/msg.h"

namespace {

// Class names made up for classes without one of their own.
char gClassNames[8][16];
unsigned gClassCount = 0;

LRESULT CALLBACK winProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_NCCREATE) {
    const CREATESTRUCTA* create = reinterpret_cast<const CREATESTRUCTA*>(lParam);
    LWin* win = static_cast<LWin*>(create->lpCreateParams);
    win->hwnd = hwnd;
    SetWindowLongPtrA(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(win));
  }
  LWin* win = reinterpret_cast<LWin*>(GetWindowLongPtrA(hwnd, GWLP_USERDATA));
  if (win == nullptr) return DefWindowProcA(hwnd, message, wParam, lParam);
  // A thrown integer has been shown to the user already; nothing may
  // unwind into the system's code.
  try {
    return win->route(message, wParam, lParam);
  } catch (int) {
    return 0;
  }
}

LRESULT result(int rc, HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
  if (rc == 0) return 0;
  if (rc == 1) return DefWindowProcA(hwnd, message, wParam, lParam);
  return TRUE;
}

}  // namespace

LWin::~LWin() {
  if (hwnd != nullptr) {
    SetWindowLongPtrA(hwnd, GWLP_USERDATA, 0);
    DestroyWindow(hwnd);
  }
}

void LWin::create(const char* className, const char* title, DWORD style, DWORD exStyle, int x,
                  int y, int width, int height, HWND parent, HMENU menu) {
  if (CreateWindowExA(exStyle, className, title, style, x, y, width, height, parent, menu,
                      GetModuleHandleA(nullptr), this) == nullptr)
    FWinFail("CreateWindowEx()");
}

LRESULT LWin::route(UINT message, WPARAM wParam, LPARAM lParam) {
  HWND h = hwnd;
  switch (message) {
    case WM_CREATE:
      onCreate();
      return 0;
    case WM_CLOSE:
      return result(onClose(), h, message, wParam, lParam);
    case WM_DESTROY: {
      int rc = onDestroy();
      if (ownsLoop) PostQuitMessage(0);
      return result(rc, h, message, wParam, lParam);
    }
    case WM_NCDESTROY:
      SetWindowLongPtrA(h, GWLP_USERDATA, 0);
      hwnd = nullptr;
      return DefWindowProcA(h, message, wParam, lParam);
    case WM_SIZE:
      return result(onSize(LOWORD(lParam), HIWORD(lParam)), h, message, wParam, lParam);
    case WM_SETFOCUS:
      return result(onSetFocus(), h, message, wParam, lParam);
    case WM_COMMAND: {
      int rc = onCommand(LOWORD(wParam), HIWORD(wParam));
      if (rc != 0 && forwardTo != nullptr) return SendMessageA(forwardTo, message, wParam, lParam);
      return result(rc, h, message, wParam, lParam);
    }
    case WM_USER: {
      int rc = onUser(wParam, lParam);
      if (rc != 0 && forwardTo != nullptr) return SendMessageA(forwardTo, message, wParam, lParam);
      return result(rc, h, message, wParam, lParam);
    }
    case WM_NOTIFY:
      return result(onNotify(reinterpret_cast<NMHDR*>(lParam)), h, message, wParam, lParam);
    case WM_KEYDOWN:
      return result(onKeyDown(static_cast<int>(wParam)), h, message, wParam, lParam);
    case WM_LBUTTONDOWN:
      return result(
          onLButtonDown(static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))), h,
          message, wParam, lParam);
    case WM_LBUTTONUP:
      return result(
          onLButtonUp(static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))), h,
          message, wParam, lParam);
    case WM_MOUSEMOVE:
      return result(
          onMouseMove(static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))), h,
          message, wParam, lParam);
    case WM_CAPTURECHANGED:
      return result(onCaptureLost(), h, message, wParam, lParam);
    case WM_INITMENUPOPUP:
      return result(onInitMenuPopup(reinterpret_cast<HMENU>(wParam)), h, message, wParam, lParam);
    case WM_MENUSELECT:
      return result(onMenuSelect(LOWORD(wParam), HIWORD(wParam)), h, message, wParam, lParam);
    case WM_DROPFILES:
      return result(onDropFiles(reinterpret_cast<HDROP>(wParam)), h, message, wParam, lParam);
    case WM_COPYDATA:
      return onCopyData(reinterpret_cast<const COPYDATASTRUCT*>(lParam));
    case WM_SETCURSOR:
      return result(onSetCursor(), h, message, wParam, lParam);
    default:
      return DefWindowProcA(h, message, wParam, lParam);
  }
}

const char* FRegisterWinClass(const char* name) {
  if (name == nullptr) {
    if (gClassCount >= sizeof(gClassNames) / sizeof(gClassNames[0])) FWinFail("RegisterClassEx()");
    char* made = gClassNames[gClassCount];
    std::snprintf(made, sizeof(gClassNames[0]), "Orva%u", gClassCount);
    gClassCount++;
    name = made;
  }
  WNDCLASSEXA wc = {};
  wc.cbSize = sizeof(wc);
  wc.style = CS_DBLCLKS;
  wc.lpfnWndProc = winProc;
  wc.hInstance = GetModuleHandleA(nullptr);
  wc.hCursor = LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW));
  wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
  wc.hIcon = LoadIconA(nullptr, reinterpret_cast<LPCSTR>(IDI_APPLICATION));
  wc.lpszClassName = name;
  if (RegisterClassExA(&wc) == 0) FWinFail("RegisterClassEx()");
  return name;
}

void FWinFail(const char* call) { FError(kMsgSystem, "%s failed", call); }
