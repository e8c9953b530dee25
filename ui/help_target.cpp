#include "ui/help_target.h"

#include "lib/file_util.h"
#include "lib/path_parts.h"
#include "lib/sys.h"

LStr FHelpTarget(const char* helpPath, const char* page) {
  if (FExists(helpPath) == kExistsFile) return LStr(helpPath);
  LStr html = FDirOf(helpPath, /*keepSep=*/true);
  html.append("help");
  html.append(SysPathSeparator());
  html.append(page);
  html.append(".html");
  if (FExists(html.ptr) == kExistsFile) return html;
  return LStr();
}
