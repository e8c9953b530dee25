// Paths taken apart as text: folder, name and extension, and the separators
// at either end. Both "\" and "/" separate wherever a path is taken apart,
// and every scan steps over double-byte characters, since a Shift-JIS trail
// byte can have the value of a backslash. Nothing here touches the file
// system.
#pragma once

#include <cstdint>

#include "lib/lstr.h"

// A copy of a path and four positions in it, found in one scan from the
// start. A name that begins with a dot right behind a separator ("\.txt")
// has no extension, while a dot at index 0 of the whole path does count
// (".txt" has the extension "txt"); the last dot of a name decides.
struct LPathParts {
  LStr path;
  int32_t dirEnd;     // start of the last run of separators; 0 when none
  int32_t nameStart;  // index behind that run; 0 when none
  int32_t dotPos;     // the dot of the extension; nameStart when there is none
  int32_t extStart;   // index behind that dot; the length when there is none

  explicit LPathParts(const char* path);
  // A lone "." (or a name that is only a leading dot) has none.
  bool hasExt() const { return dotPos != nameStart || extStart != path.length; }
};

// A separator byte; the caller makes sure it is not a trail byte.
inline bool FIsSeparator(char c) { return c == '\\' || c == '/'; }
// True when the path begins with a separator, or with a letter and ":";
// false for null.
bool FIsAbsolute(const char* path);
// Appends the system's separator unless the path is empty, already ends in
// a separator, or is a drive alone ("C:", which is a folder as it is).
void FAddSep(LStr& path);
// Removes one final separator, if there is one.
void FDropSep(LStr& path);

// The folder part: without the last run of separators, or with it when
// keepSep is set; empty when the path has no separator.
LStr FDirOf(const char* path, bool keepSep);
// The name behind the last separator.
LStr FNameOf(const char* path);
// The extension of the name, with its dot when withDot is set; empty when
// the name has none.
LStr FExtOf(const char* path, bool withDot);
// The name without its extension.
LStr FBaseOf(const char* path);
// The path with its extension replaced by ext (with or without its dot),
// or given one; an empty ext removes the extension and its dot.
LStr FChangeExt(const char* path, const char* ext);
