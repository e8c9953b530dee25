#include "ui/about_text.h"

#include "app/product.h"

void FAboutLines(const char* programPath, LStrs& lines) {
  lines.clear();
  LStr* line = new LStr;
  line->format("%s  V%s", kProductName, kProductVersion);
  lines.add(line);
  line = new LStr;
  line->format("(%s)", programPath);
  lines.add(line);
  lines.add(new LStr(kRightsLine));
  lines.add(new LStr(kHomePage));
}
