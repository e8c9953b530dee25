// The search command (2100): the walker over the chosen records, with each
// hit handed to the caller, who shows it as a row.
#pragma once

#include <cstdint>

#include "lib/larr.h"
#include "lib/lstr.h"
#include "store/cond_walk.h"

// Runs on the worker; returns the number of versions found. The same rules
// as FWalkItems hold for found.
int32_t FCmdSearch(const LArrOf<TRec*>& records, const TCond& cond, FVerFound found, void* context);
// The status text after a search that found `count` versions.
LStr FSearchReport(int32_t count);
