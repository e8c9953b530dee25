// The work folder of this process ("app-N" below a shared temporary
// subfolder) and the lock file that guards choosing and removing such
// folders when several copies start or end at once.
#pragma once

class TApp;

// Takes the lock file: up to 30 tries, 100 ms apart; after that a note is
// shown and the caller goes on without the lock.
void FLock(TApp& app);
void FUnlock(TApp& app);
// Resolves the temporary base and subfolder (filling the settings that are
// empty), picks the first free "app-N" folder, creates it, and sets the
// update path and the user tag.
void FMakeWorkDir(TApp& app);
// Removes this process's work folder with everything in it.
void FRemoveWorkDir(TApp& app);
// Under the lock, removes the shared subfolder with everything in it (for
// the last copy of the program to end).
void FRemoveSharedDir(TApp& app);
