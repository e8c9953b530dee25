// The delete command: selected versions, files and folders leave the tree.
// Every version whose reference is deleted is first read out whole into an
// evacuation file in the work folder, and afterwards encoded anew against
// its new next newer version, keeping its block position so that what
// refers to it stays readable. The archive changes only at the commit.
#pragma once

#include <cstdint>

#include "lib/larr.h"
#include "lib/lstr.h"

class TRec;
class TRecF;
class TVer;

// Deletes the records; returns the number of versions deleted, which is
// also the work set's `done`.
int32_t FCmdDelete(const LArrOf<TRec*>& records);
// The versions of a selection (every version below a selected file or
// folder), and, when folders is given, the selected folders.
void FCollectDeleted(const LArrOf<TRec*>& records, LArrOf<TVer*>& versions, LArrOf<TRec*>* folders);
// Walks the whole tree and lists, in walk order, the versions whose
// reference block is one of the deleted ones.
void FFindDependents(TRecF* root, LArrOf<TVer*>& dependents);
// The evacuation file of the index-th dependent: "kst-#evac-%04d.tmp" in the
// work folder.
LStr FEvacPath(int32_t index);
// Unlinks and destroys the files of the selected versions that have no
// version left.
void FPruneFiles(const LArrOf<TRec*>& records);
// Unlinks and destroys every selected file and folder with what it holds.
void FRemoveSelected(const LArrOf<TRec*>& records);
// The report of a finished delete.
LStr FDeleteReport(int32_t versions);
