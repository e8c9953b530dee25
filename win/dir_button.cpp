#include "win/dir_button.h"

#include "win/dialog.h"
#include "win/folder_browser.h"

int LDirButton::onClick() {
  LStr folder = box_.text();
  if (FBrowseForFolder(dialog_.hwnd, title_.ptr, folder)) box_.setText(folder.ptr);
  return 0;
}
