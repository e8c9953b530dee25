// The type name from the shell, by name only: no file is opened.
#include "lib/sys_file_type.h"

#include <windows.h>

#include <shellapi.h>

void SysFileTypeName(const char* name, LStr& out) {
  SHFILEINFOA info = {};
  out.clear();
  if (SHGetFileInfoA(name, FILE_ATTRIBUTE_NORMAL, &info, sizeof info,
                     SHGFI_TYPENAME | SHGFI_USEFILEATTRIBUTES) != 0)
    out.assign(info.szTypeName);
}
