// The terminal side of a command-line program: the encoding of the text it
// reads and writes, whether a standard stream is a terminal, its arguments,
// binary output and the break key (Ctrl+C). One file per system, as for
// sys.h; nothing here reports messages or throws.
#pragma once

#include "lib/larr.h"

// The standard streams by number.
enum : int { kSysStdin = 0, kSysStdout = 1, kSysStderr = 2 };

// The code page of text in the user's locale. POSIX: the character set of
// the environment's locale, 65001 for UTF-8 and for the plain C locale
// (whose ASCII is a part of it), 932 for the Shift-JIS family, the number of
// a "CPnnn" set; Windows: the ANSI code page.
int SysLocaleCodePage();
// The code page of text read from (kSysStdin) or written to a standard
// stream: on Windows a console's own input or output code page, else the
// locale's.
int SysStreamCodePage(int stream);
// True when the standard stream is a terminal (a console).
bool SysIsTerminal(int stream);
// The program's arguments after its name, as 16-bit text. POSIX decodes
// them from the locale's code page (UTF-8 losslessly, as file names are);
// Windows takes the system's 16-bit command line, so nothing is lost to the
// ANSI code page.
void SysProgramArgs(int argc, char** argv, UStrs& out);
// From now on standard output passes bytes as they are (no line-end
// conversion on Windows).
void SysBinaryStdout();
// From now on a break (Ctrl+C, or Ctrl+Break on Windows) does not end the
// process: it only raises a flag, which SysTakeBreak reads. The handler does
// nothing else, so it is safe whatever the program is doing.
void SysCatchBreak();
// True when a break came since the last call; the flag is cleared.
bool SysTakeBreak();
