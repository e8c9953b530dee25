// Files and folders as whole things: existence, size, creating and removing
// folder trees, moving a file. Every step goes through the platform layer;
// failures are numbered messages, so callers go on after a warning.
#pragma once

#include <cstdint>

#include "lib/lstr.h"

// The platform's full path. A failure reports 17000 and gives the path as
// it was.
LStr FFullPath(const char* path);

enum : int { kExistsNone = 0, kExistsFile = 1, kExistsFolder = 2 };
// What is at the path: kExistsNone (also for null), kExistsFile or
// kExistsFolder.
int FExists(const char* path);
// The size of a file, or -1 when it cannot be opened for reading, is a
// folder, or path is null.
int64_t FFileSize(const char* path);

// Creates every missing folder of the folder part of path (the part before
// its last separator), so that a file of that path can be created. A failure
// is not reported here: it shows when the file is opened.
void FMakeDirs(const char* path);
// Removes a folder with all its contents, read-only files included; links to
// folders are removed, never followed. A folder that cannot be removed is
// reported (17000). True when the folder is gone.
bool FRemoveTree(const char* path);

// Moves a file: renames it, or, where a rename cannot (another drive, or an
// existing target), copies it over the target and deletes the source.
// Returns 0 when the file is at `to` and gone from `from`, 1 when it was
// copied but `from` could not be deleted, -1 when `to` does not hold it.
// Failures are warnings; with mustWork set they are reported as errors too.
int FRenameOrCopy(const char* from, const char* to, bool mustWork);
