#include "ui/cond_button_win32.h"

#include "ui/command_dialog_texts.h"
#include "ui/cond_dialogs_win32.h"
#include "win/dialog.h"

int TCondButton::onClick() {
  if (expanded_ == nullptr)
    FRunAddCondDialog(dialog_.hwnd, cond_);
  else
    FRunLimitDialog(dialog_.hwnd, cond_, *expanded_, "", *selection_);
  setText(FCondCaption(text().ptr, cond_).ptr);
  return 0;
}
