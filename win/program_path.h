// The full path of the running program, from which its help and its new
// copies are found.
#pragma once

#include "lib/lstr.h"

LStr FProgramPath();
