#include "win/combo_box.h"

#include <string>

void LComboBox::load() {
  SendMessageA(hwnd, CB_RESETCONTENT, 0, 0);
  for (const LStr* choice : choices_)
    SendMessageA(hwnd, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(choice->ptr));
  setText(text_.ptr);
}

bool LComboBox::save() {
  text_ = text();
  return true;
}

LStr LComboBox::current() const {
  LRESULT index = SendMessageA(hwnd, CB_GETCURSEL, 0, 0);
  if (index == CB_ERR) return text();
  LRESULT length = SendMessageA(hwnd, CB_GETLBTEXTLEN, index, 0);
  if (length == CB_ERR) return text();
  std::string buffer(static_cast<size_t>(length) + 1, '\0');
  SendMessageA(hwnd, CB_GETLBTEXT, index, reinterpret_cast<LPARAM>(buffer.data()));
  LStr chosen;
  chosen.assign(buffer.data(), static_cast<int32_t>(length));
  return chosen;
}

// The text of a choice reaches the edit part only after CBN_SELCHANGE; the
// dialog is told of the change either way and reads current().
int LComboBox::onCommand(int code) {
  if (code != CBN_EDITCHANGE && code != CBN_SELCHANGE) return 1;
  return onChange();
}
