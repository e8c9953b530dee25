// The walker of the extract, delete and search commands: goes through the
// selected records and reports each version that meets a condition set.
// A selected folder stands for every file below it, a selected file for its
// versions, of which at most maxVersions hits are taken, newest first unless
// fromOldest; a selected version is tested alone, outside any limit.
//
// Every hit is handed to the caller's function and then counted in the work
// set's `done` counter, so a work set must exist. The function may throw to
// end the walk, but must not add or remove records of the tree being
// walked. The walker reads version headers (TVer::Info) only for the
// conditions that need them, and does not poll the stop state.
#pragma once

#include "lib/larr.h"

class TCond;
class TFile;
class TRec;
class TVer;

// Receives one version that met the conditions, with the caller's context.
typedef void (*FVerFound)(TVer* ver, void* context);

void FWalkItems(const LArrOf<TRec*>& records, const TCond& cond, FVerFound found, void* context);
// The versions of one file, up to the hit limit.
void FWalkVersions(TFile* file, const TCond& cond, FVerFound found, void* context);
// The tests that a file record alone decides: its name and its path ("/"
// between names, from just below the root).
bool FFileTest(const TFile* file, const TCond& cond);
// Applies every test to one version and reports it when all hold; true
// for a hit.
bool FVerTest(TVer* ver, const TCond& cond, FVerFound found, void* context);
