// The lines of the about box, from the product's facts and the path of the
// running program.
#pragma once

#include "lib/larr.h"
#include "lib/lstr.h"

// Name and version, the program's full path in brackets, the rights line
// and the home page.
void FAboutLines(const char* programPath, LStrs& lines);
