#include "win/status_bar.h"

#include "win/lwin.h"

namespace {
const int kMaxParts = 8;
}

void LStatusBar::create(HWND parent) {
  hwnd = CreateWindowExA(0, STATUSCLASSNAMEA, "", WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP, 0, 0, 0,
                         0, parent, nullptr, GetModuleHandleA(nullptr), nullptr);
  if (hwnd == nullptr) FWinFail("CreateWindowEx()");
}

void LStatusBar::setParts(const int32_t* widths) {
  // A character unit is the average width of the bar's font.
  HDC dc = GetDC(hwnd);
  HGDIOBJ old = SelectObject(dc, reinterpret_cast<HFONT>(SendMessageA(hwnd, WM_GETFONT, 0, 0)));
  TEXTMETRICA metrics = {};
  GetTextMetricsA(dc, &metrics);
  SelectObject(dc, old);
  ReleaseDC(hwnd, dc);
  RECT client;
  GetClientRect(hwnd, &client);
  int n = 0;
  int fixed = 0;
  for (; widths[n] != 0 && n < kMaxParts; n++)
    if (widths[n] > 0) fixed += widths[n] * metrics.tmAveCharWidth;
  int edges[kMaxParts];
  int x = 0;
  for (int i = 0; i < n; i++) {
    if (widths[i] == -1)
      x += client.right - fixed - 16;
    else if (widths[i] > 0)
      x += widths[i] * metrics.tmAveCharWidth;
    edges[i] = i == n - 1 ? -1 : x;
  }
  SendMessageA(hwnd, SB_SETPARTS, n, reinterpret_cast<LPARAM>(edges));
}

void LStatusBar::setText(int32_t part, const char* text) {
  SendMessageA(hwnd, SB_SETTEXTA, part, reinterpret_cast<LPARAM>(text));
}

void LStatusBar::setFont(HFONT font) {
  SendMessageA(hwnd, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
}

int LStatusBar::height() {
  RECT rect;
  GetWindowRect(hwnd, &rect);
  return rect.bottom - rect.top;
}

RECT LStatusBar::partRect(int32_t part) {
  RECT rect = {};
  SendMessageA(hwnd, SB_GETRECT, part, reinterpret_cast<LPARAM>(&rect));
  return rect;
}

LProgBar::~LProgBar() {
  if (hwnd != nullptr) DestroyWindow(hwnd);
}

void LProgBar::create(HWND parent, const RECT& place) {
  hwnd = CreateWindowExA(0, PROGRESS_CLASSA, "", WS_CHILD | WS_VISIBLE, place.left, place.top,
                         place.right - place.left, place.bottom - place.top, parent, nullptr,
                         GetModuleHandleA(nullptr), nullptr);
  if (hwnd == nullptr) FWinFail("CreateWindowEx()");
  SendMessageA(hwnd, PBM_SETRANGE, 0, MAKELPARAM(0, 100));
}

void LProgBar::setPos(int32_t percent) { SendMessageA(hwnd, PBM_SETPOS, percent, 0); }
