// POSIX has no registry of type names; the name is the one that Windows
// gives a type it does not know: the extension in capitals and "ファイル".
#include "lib/sys_file_type.h"

#include "lib/path_parts.h"

void SysFileTypeName(const char* name, LStr& out) {
  LStr ext = FExtOf(name, /*withDot=*/false);
  ext.toUpper();
  out.clear();
  if (!ext.empty()) out.append(ext).append(' ');
  out.append("ファイル");
}
