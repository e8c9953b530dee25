// The extract command: versions come back out of the archive as files, with
// their modification, creation and access times. The archive is only read.
#pragma once

#include <cstdint>

#include "lib/larr.h"
#include "lib/lstr.h"

class TCond;
class THeldBuf;
class TRec;
class TVer;

// Writes every version that the conditions select below records to destDir
// (empty: the first path added since the archive was opened), at its path
// relative to base (null: the root). A version whose path holds a name the
// system cannot take as it is, or reaches a file that another record of
// this extract took, is refused with a warning and counted in `refused` of
// the work set (the walker counts it in `done` as well).
void FCmdExtract(const LArrOf<TRec*>& records, const char* destDir, TCond* cond, TRec* base);
// Writes one version to one path, creating its folders; an existing file is
// overwritten.
void FExtractVer(TVer* ver, const char* path);
// Writes raw bytes to path, whose folders exist, and gives the file the
// times (Unix seconds); on any thread.
void FWriteExtracted(const char* path, const THeldBuf& raw, int64_t created, int64_t accessed,
                     int64_t modified);
// The result of an extract: the versions written, and those refused with a
// warning (a name the system cannot take, a place taken by another record).
LStr FExtractReport(int32_t extracted, int32_t refused);
// The path under which a version is opened for viewing: the work folder, the
// name without its extension, "-V" and the version's number, a counter when
// that path exists already, and the extension. Empty, after a warning, for
// a name that could leave the work folder.
LStr FVersionViewPath(TVer* ver, const char* workDir);
