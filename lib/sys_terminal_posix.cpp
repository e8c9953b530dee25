// The terminal on POSIX: the locale's character set, isatty and SIGINT.
#include "lib/sys_terminal.h"

#include <langinfo.h>
#include <locale.h>
#include <signal.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>

#include "lib/convert.h"
#include "lib/lstr.h"
#include "lib/utf8.h"

namespace {

const int kUtf8 = 65001;
const int kShiftJis = 932;

// Raised by the break handler; a signal handler may touch nothing else.
volatile sig_atomic_t gBreak = 0;

void onBreak(int) { gBreak = 1; }

// The character set's name in upper case without "-" and "_", so that
// "UTF-8", "utf8" and "UTF_8" read alike.
LStr plainName(const char* name) {
  LStr plain;
  for (const char* p = name; *p; p++) {
    if (*p == '-' || *p == '_') continue;
    plain.append(*p >= 'a' && *p <= 'z' ? static_cast<char>(*p - 'a' + 'A') : *p);
  }
  return plain;
}

// A number behind a prefix ("CP1252", "WINDOWS1252"), or 0.
int numberAfter(const LStr& name, const char* prefix) {
  size_t n = std::strlen(prefix);
  if (std::strncmp(name.ptr, prefix, n) != 0 || name.ptr[n] == 0) return 0;
  char* end;
  long value = std::strtol(name.ptr + n, &end, 10);
  return *end == 0 && value > 0 && value < 65536 ? static_cast<int>(value) : 0;
}

int codePageOf(const char* codeset) {
  LStr name = plainName(codeset);
  if (name.equals("SHIFTJIS", false) || name.equals("SJIS", false) ||
      name.equals("WINDOWS31J", false) || name.equals("MSKANJI", false))
    return kShiftJis;
  if (int number = numberAfter(name, "CP")) return number;
  if (int number = numberAfter(name, "WINDOWS")) return number;
  // UTF-8 itself, the C locale's ASCII, and any set the conversions do not
  // know: UTF-8 is what a terminal of today shows.
  return kUtf8;
}

}  // namespace

int SysLocaleCodePage() {
  // The environment's locale, asked without making it the process's own.
  locale_t locale = newlocale(LC_CTYPE_MASK, "", static_cast<locale_t>(0));
  if (locale == static_cast<locale_t>(0)) return kUtf8;
  int codePage = codePageOf(nl_langinfo_l(CODESET, locale));
  freelocale(locale);
  return codePage;
}

int SysStreamCodePage(int /*stream*/) { return SysLocaleCodePage(); }

bool SysIsTerminal(int stream) { return isatty(stream) == 1; }

void SysProgramArgs(int argc, char** argv, UStrs& out) {
  int codePage = SysLocaleCodePage();
  for (int i = 1; i < argc; i++) {
    UStr* arg = new UStr;
    if (codePage == kUtf8)
      FUtf8ToUtf16(argv[i], -1, *arg, /*lossless=*/true);
    else
      FToUStr(argv[i], -1, *arg, codePage, "", "");
    out.add(arg);
  }
}

void SysBinaryStdout() {}

void SysCatchBreak() {
  struct sigaction action = {};
  action.sa_handler = onBreak;
  sigemptyset(&action.sa_mask);
  // No SA_RESTART: a read of the terminal that the break interrupts returns,
  // so a question on the terminal sees a second Ctrl+C.
  action.sa_flags = 0;
  sigaction(SIGINT, &action, nullptr);
}

bool SysTakeBreak() {
  if (gBreak == 0) return false;
  gBreak = 0;
  return true;
}
