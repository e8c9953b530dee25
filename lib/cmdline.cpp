#include "lib/cmdline.h"

#include "lib/chartype.h"

void FSplitCommandLine(const char* commandLine, LStrs& out) {
  if (commandLine == nullptr) return;
  const char* p = commandLine;
  for (;;) {
    while (*p && FIsSpace(static_cast<unsigned char>(*p))) p++;
    if (*p == 0) return;
    LStr* word = new LStr;
    bool quoted = false;
    for (; *p && (quoted || !FIsSpace(static_cast<unsigned char>(*p))); p++) {
      if (*p == '"') {
        quoted = !quoted;
      } else if (FIsLeadByte(static_cast<unsigned char>(*p)) && p[1] != 0) {
        word->append(p, 2);
        p++;
      } else {
        word->append(*p);
      }
    }
    out.add(word);
  }
}
