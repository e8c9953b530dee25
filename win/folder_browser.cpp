#include "win/folder_browser.h"

#include <shlobj.h>

namespace {
int CALLBACK startIn(HWND window, UINT message, LPARAM, LPARAM folder) {
  if (message == BFFM_INITIALIZED) SendMessageA(window, BFFM_SETSELECTIONA, TRUE, folder);
  return 0;
}
}  // namespace

bool FBrowseForFolder(HWND owner, const char* title, LStr& folder) {
  char chosen[MAX_PATH] = {};
  BROWSEINFOA browse = {};
  browse.hwndOwner = owner;
  browse.pszDisplayName = chosen;
  browse.lpszTitle = title;
  browse.ulFlags = BIF_RETURNONLYFSDIRS | BIF_NEWDIALOGSTYLE;
  browse.lpfn = startIn;
  browse.lParam = reinterpret_cast<LPARAM>(folder.ptr);
  LPITEMIDLIST item = SHBrowseForFolderA(&browse);
  if (item == nullptr) return false;
  bool found = SHGetPathFromIDListA(item, chosen) != FALSE;
  CoTaskMemFree(item);
  if (found) folder = chosen;
  return found;
}
