// The second phase of the add command: each new version is read, compared
// with its predecessor and stored. Files are read and encoded on a pool of
// threads, a few versions ahead, while the blocks are written on the
// command's thread in the order of the versions: so the archive's bytes do
// not depend on the number of threads.
#pragma once

#include <cstdint>

struct TAddOptions;
class TWorkSet;

// Stores work.versions in their order; a dropped version leaves the array
// and its file. Counts the stored versions in work.done and the dropped ones
// in work.skipped. A failure or a stop throws, as on one thread.
void FStoreNewVersions(TWorkSet& work, const TAddOptions& options);
