#include "win/shell_icons.h"

#include <windows.h>

#include <shellapi.h>

HIMAGELIST FSystemImages(bool small) {
  char windows[MAX_PATH];
  GetWindowsDirectoryA(windows, sizeof(windows));
  SHFILEINFOA info = {};
  return reinterpret_cast<HIMAGELIST>(
      SHGetFileInfoA(windows, 0, &info, sizeof(info),
                     SHGFI_SYSICONINDEX | (small ? SHGFI_SMALLICON : SHGFI_LARGEICON)));
}

int FIconOf(const char* name, bool folder, bool open) {
  SHFILEINFOA info = {};
  UINT flags =
      SHGFI_SYSICONINDEX | SHGFI_SMALLICON | SHGFI_USEFILEATTRIBUTES | (open ? SHGFI_OPENICON : 0);
  SHGetFileInfoA(name, folder ? FILE_ATTRIBUTE_DIRECTORY : FILE_ATTRIBUTE_NORMAL, &info,
                 sizeof(info), flags);
  return info.iIcon;
}
