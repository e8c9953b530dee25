// The terminal on Windows: console code pages, the 16-bit command line and
// the console's control handler.
#include "lib/sys_terminal.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <shellapi.h>

#include <cstdio>

#include "lib/ustr.h"

namespace {

// Raised by the control handler, which the system runs on a thread of its own.
volatile LONG gBreak = 0;

BOOL WINAPI onControl(DWORD event) {
  if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) return FALSE;
  InterlockedExchange(&gBreak, 1);
  return TRUE;
}

}  // namespace

int SysLocaleCodePage() { return static_cast<int>(GetACP()); }

int SysStreamCodePage(int stream) {
  if (!SysIsTerminal(stream)) return SysLocaleCodePage();
  UINT codePage = stream == kSysStdin ? GetConsoleCP() : GetConsoleOutputCP();
  return codePage != 0 ? static_cast<int>(codePage) : SysLocaleCodePage();
}

bool SysIsTerminal(int stream) { return _isatty(stream) != 0; }

void SysProgramArgs(int /*argc*/, char** /*argv*/, UStrs& out) {
  int count = 0;
  LPWSTR* words = CommandLineToArgvW(GetCommandLineW(), &count);
  if (words == nullptr) return;
  for (int i = 1; i < count; i++) out.add(new UStr(reinterpret_cast<const UChar*>(words[i])));
  LocalFree(words);
}

void SysBinaryStdout() {
  std::fflush(stdout);
  _setmode(_fileno(stdout), _O_BINARY);
}

void SysCatchBreak() { SetConsoleCtrlHandler(onControl, TRUE); }

bool SysTakeBreak() { return InterlockedExchange(&gBreak, 0) != 0; }
