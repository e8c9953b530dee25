#include "archive/folder_host.h"

#include "lib/path_parts.h"

LStr TFolderHost::join(const char* name) const {
  LStr path(folder_);
  FAddSep(path);
  path.append(name);
  return path;
}
