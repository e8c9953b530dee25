#include "win/toolbar.h"

#include <cstring>

void LToolbar::create(LWin* parentWin) {
  createControl(parentWin, TOOLBARCLASSNAMEA,
                TBSTYLE_FLAT | TBSTYLE_TOOLTIPS | CCS_NODIVIDER | CCS_NORESIZE | CCS_NOPARENTALIGN,
                0);
  SendMessageA(ctrl, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
}

int LToolbar::addSystemPictures(UINT_PTR bitmapId) {
  TBADDBITMAP add = {HINST_COMMCTRL, bitmapId};
  return static_cast<int>(SendMessageA(ctrl, TB_ADDBITMAP, 0, reinterpret_cast<LPARAM>(&add)));
}

void LToolbar::addButton(int32_t id, int image) {
  TBBUTTON button = {};
  button.iBitmap = id == 0 ? 6 : image;
  button.idCommand = id;
  button.fsState = TBSTATE_ENABLED;
  button.fsStyle = id == 0 ? BTNS_SEP : BTNS_BUTTON;
  SendMessageA(ctrl, TB_ADDBUTTONSA, 1, reinterpret_cast<LPARAM>(&button));
}

void LToolbar::enable(int32_t id, bool on) {
  SendMessageA(ctrl, TB_ENABLEBUTTON, id, on ? TRUE : FALSE);
}

int LToolbar::height() {
  RECT rect = {};
  SendMessageA(ctrl, TB_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&rect));
  return rect.bottom + 4;
}

int LToolbar::onNotify(NMHDR* header) {
  switch (header->code) {
    case TTN_GETDISPINFOA: {
      NMTTDISPINFOA* info = reinterpret_cast<NMTTDISPINFOA*>(header);
      LStr text = tipText(static_cast<int32_t>(header->idFrom));
      std::strncpy(tip_, text.ptr, sizeof(tip_) - 2);
      tip_[98] = 0;
      info->lpszText = tip_;
      return 0;
    }
    case TTN_GETDISPINFOW: {
      NMTTDISPINFOW* info = reinterpret_cast<NMTTDISPINFOW*>(header);
      LStr text = tipText(static_cast<int32_t>(header->idFrom));
      int n = MultiByteToWideChar(CP_ACP, 0, text.ptr, text.length, wideTip_, 98);
      wideTip_[n] = 0;
      info->lpszText = wideTip_;
      return 0;
    }
    case TBN_HOTITEMCHANGE: {
      NMTBHOTITEM* hot = reinterpret_cast<NMTBHOTITEM*>(header);
      onHotButton((hot->dwFlags & HICF_LEAVING) ? 0 : hot->idNew);
      return 0;
    }
    default:
      return 1;
  }
}
