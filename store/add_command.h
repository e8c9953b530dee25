// The add command: files and folders of the disk become new versions in the
// tree. First every record is built, without reading any content; then each
// new version is read, compared with its predecessor and stored, and one
// commit brings it all into the archive. A failure or a stop before that
// commit leaves the archive as it was.
#pragma once

#include <cstdint>

#include "lib/larr.h"
#include "lib/lstr.h"
#include "lib/sys.h"

class TCond;
class TFile;
class TRec;
class TRecF;
class TVer;

// What the add command takes from the application's settings.
struct TAddOptions {
  int32_t skipEquDtF = 1;  // skip a file of the same date and size without reading it
  int32_t skipEquF = 1;    // drop a version whose content equals its predecessor's
  LStr userTag;            // stored as the user of each new version
  int32_t threads = 0;     // threads that encode; 0: one per core
};

// The suffix that marks a folder among the paths to add, as the add dialog
// lists them; the command takes it off.
constexpr char kFolderSuffix[] = " <folder>";

// Adds paths below target (a folder, or a file to take one more version).
void FCmdAdd(TRec* target, const LStrs& paths, TCond* cond, const TAddOptions& options);
// The line that follows the add's result when entries were left out with a
// warning (links, special files, unreadable files, case pairs).
LStr FNotAddedReport(int32_t refused);
// Whether paths may go into target. A folder takes anything; a file takes
// one source that is a file, else a warning and false. When that source's
// name is not the file's, `question` asks whether to add it as that file
// (empty when there is nothing to ask).
bool FAddTargetTakes(TRec* target, const LStrs& paths, LStr& question);
// The bits of a version's attributes (1 read-only, 2 archive, 4 hidden,
// 8 system) from the system's attribute word.
uint8_t FAttrBits(uint32_t attributes);
// The file record of that name below parent (parent itself when it is a
// file); made when create is set. A folder of that name is an error.
TFile* FFileItem(TRecF* parent, const char* name, bool create);
