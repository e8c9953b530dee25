// Error boxes and internal failures.
//
// FError shows a topmost box titled "Kestrom エラー" (with " #number" when
// the number is above 0), tells the reporter that an error was shown, and
// throws the plain integer 2; catching code only cleans up. FWarn and FInfo
// show their boxes and return. The program throws plain integers: 1 for
// stopped by the user, 2 for an error already shown.
//
// FInternal is for programming errors: it writes "Internal Error: " and the
// text to the console and ends the process with code 2, without unwinding.
#pragma once

#include <cstdarg>

enum : int { kThrowStopped = 1, kThrowError = 2 };

[[noreturn]] void FError(int number, const char* fmt, ...) __attribute__((format(printf, 2, 3)));
[[noreturn]] void FErrorV(int number, const char* fmt, va_list args);
int FWarn(int number, const char* fmt, ...) __attribute__((format(printf, 2, 3)));
int FWarnV(int number, const char* fmt, va_list args);
int FInfo(int number, const char* fmt, ...) __attribute__((format(printf, 2, 3)));
int FInfoV(int number, const char* fmt, va_list args);
// The word of a box's title for its kind: 'e' error, 'w' warning, 'm'
// message.
const char* FBoxKindWord(char kind);
// FError(3000, "Internal Error #%d", n): a broken invariant the user sees.
[[noreturn]] void FInternalBox(int n);
// The archive file's form is not correct: FError(3000) with the format text.
[[noreturn]] void FFormatError(int n);

[[noreturn]] void FInternal(const char* fmt, ...) __attribute__((format(printf, 1, 2)));
[[noreturn]] void FInternalNum(int n);
// The process exit of this layer: waits for a console that was opened to be
// read, then exits.
[[noreturn]] void FExit(int code);
// True once FExit has begun.
bool FExiting();
// Writes text to the program's console (stderr where there is one).
void FConsole(const char* text);
