// The system's name for the type of a file, found by the file's name alone
// (the file need not exist): the text a file manager shows in its type
// column.
#pragma once

#include "lib/lstr.h"

// Replaces out with the type name of the file name.
void SysFileTypeName(const char* name, LStr& out);
