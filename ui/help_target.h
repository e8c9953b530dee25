// Which file the help commands open: the compiled help file beside the
// program when it is there, otherwise the page of the HTML help that ships
// in the "help" folder beside it.
#pragma once

#include "lib/lstr.h"

// The file to open for the help page `page` (a name without extension,
// "index" for the whole program), given the compiled help file's path.
// Empty when neither exists.
LStr FHelpTarget(const char* helpPath, const char* page);
