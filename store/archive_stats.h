// The statistics scan of an archive: the counts, ranges and id sets of its
// TStats, which the condition dialogs offer as candidates and the command
// line shows. Runs on the thread that owns the archive.
#pragma once

#include <cstdint>

class TArchive;

// Does nothing when archive.stats.level is at least `level`. Otherwise
// resets the ranges and counters (the id sets keep what they hold) and
// walks the tree: level 1 reads the tree alone (names, counts, the ranges of
// time and size); level 2 also reads every version's header (TVer::Info,
// which needs a work set) for the store numbers, comments, users and
// check-out users. Folders are counted without the root.
void FScanStats(TArchive& archive, int32_t level);
