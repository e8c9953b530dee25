// The texts of the list columns: what a folder, file or version row shows in
// each column of column.h. A file row shows its newest version, a version
// row the version itself; a folder row fills only the name and the two path
// columns.
//
// Columns 6 to 15 read the version's header (TVer::Info), so a work set must
// exist and the calling thread must own the archive.
#pragma once

#include <cstdint>

#include "lib/lstr.h"

class TRec;

// The text of column `id` in the row of rec. The path columns of files and
// versions run from base (null: the root); those of folders from the root.
// An id that no row shows gives "".
LStr FColumnText(TRec* rec, int32_t id, const TRec* base);
// A number with a comma after every third digit from the right, and a
// leading "-" when it is negative.
LStr FGroupDigits(int64_t value);
// The four attribute letters in the order r a h s (read-only, archive,
// hidden, system), with "-" for each bit that is clear.
LStr FAttrLetters(uint8_t attrs);
