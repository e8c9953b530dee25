// Dividing a command line into words.
#pragma once

#include "lib/larr.h"

// Appends the words of a command line to out. Words are separated by white
// space; a double quote starts or ends a run in which white space belongs to
// the word, and the quotes themselves are dropped: -af:"My Files\a.kst" is
// the one word -af:My Files\a.kst, and "" alone is an empty word.
// Backslashes are plain characters (they separate paths), and a double-byte
// character is never taken apart. A quote left open runs to the end of the
// line. A null line appends nothing.
void FSplitCommandLine(const char* commandLine, LStrs& out);
