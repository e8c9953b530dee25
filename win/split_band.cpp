#include "win/split_band.h"

void LSplitBand::show(HWND window, const RECT& place) {
  hide();
  window_ = window;
  place_ = place;
  invert();
  shown_ = true;
}

void LSplitBand::hide() {
  if (!shown_) return;
  invert();
  shown_ = false;
}

void LSplitBand::invert() {
  // The window clips its children, and the band crosses them: the clipping
  // is off while the band is drawn.
  LONG_PTR style = GetWindowLongPtrA(window_, GWL_STYLE);
  SetWindowLongPtrA(window_, GWL_STYLE, style & ~WS_CLIPCHILDREN);
  HDC dc = GetDC(window_);
  PatBlt(dc, place_.left, place_.top, place_.right - place_.left, place_.bottom - place_.top,
         DSTINVERT);
  ReleaseDC(window_, dc);
  SetWindowLongPtrA(window_, GWL_STYLE, style);
}
