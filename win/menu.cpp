#include "win/menu.h"

#include "win/lwin.h"

LMenu::LMenu(bool bar) : handle(bar ? CreateMenu() : CreatePopupMenu()) {
  if (handle == nullptr) FWinFail("CreateMenu() or CreatePopupMenu()");
}

LMenu::~LMenu() {
  if (owned) DestroyMenu(handle);
}

void LMenu::append(int32_t id, const char* text) { AppendMenuA(handle, MF_STRING, id, text); }
void LMenu::separator() { AppendMenuA(handle, MF_SEPARATOR, 0, nullptr); }

void LMenu::appendPopup(LMenu& popup, const char* title) {
  AppendMenuA(handle, MF_POPUP, reinterpret_cast<UINT_PTR>(popup.handle), title);
  popup.owned = false;  // destroyed with this menu
}

void LMenu::check(int32_t id, bool on) {
  CheckMenuItem(handle, id, MF_BYCOMMAND | (on ? MF_CHECKED : MF_UNCHECKED));
}

void LMenu::enable(int32_t id, bool on) {
  EnableMenuItem(handle, id, MF_BYCOMMAND | (on ? MF_ENABLED : MF_GRAYED));
}

void LMenu::removeAll() {
  while (GetMenuItemCount(handle) > 0) DeleteMenu(handle, 0, MF_BYPOSITION);
}

void LMenu::track(HWND owner, int x, int y) {
  if (!TrackPopupMenuEx(handle, TPM_LEFTALIGN | TPM_RIGHTBUTTON, x, y, owner, nullptr))
    FWinFail("TrackPopupMenuEx()");
}
