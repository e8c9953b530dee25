#include "store/extract_command.h"

#include "archive/archive.h"
#include "lib/fail.h"
#include "lib/file_stream.h"
#include "lib/file_time.h"
#include "lib/file_util.h"
#include "lib/msg.h"
#include "lib/path_parts.h"
#include "lib/sys.h"
#include "store/cond.h"
#include "store/cond_walk.h"
#include "store/extract_places.h"
#include "store/extract_writer.h"
#include "store/held_buf.h"
#include "store/progress_level.h"
#include "store/ver_info.h"
#include "store/version_io.h"
#include "store/work_set.h"

namespace {

struct ExtractRun {
  ExtractRun(const char* dest, TRec* base, TExtractWriter* writer)
      : dest(dest), base(base), writer(writer) {}

  LStr dest;
  TRec* base;
  TExtractPlaces places;
  TExtractWriter* writer;
  // The folder record of the last version taken, whose names passed, with
  // its path below the destination and its place, and whether its folders
  // exist: the files of a folder come one after another, so a folder's
  // names are checked and its folders made once, not once per file.
  const TRec* folder = nullptr;
  LStr folderRelative;
  int32_t folderPlace = TExtractPlaces::kDestination;
  bool folderMade = false;
};

// The warning for a name that the system cannot take as it is.
const char* faultText(SysNameFault fault) {
  switch (fault) {
    case kSysNameInexact:
      return "「%s」は名前の表記が正しくないため展開しません";
    case kSysNameDevice:
      return "「%s」はデバイスの名前なので展開しません";
    case kSysNameAltered:
      return "「%s」は名前が点か空白で終わるため展開しません";
    case kSysNameNoForm:
      return "「%s」はこのシステムの名前に使えない文字を含むため展開しません";
    default:
      return "「%s」は名前に使えない文字を含むため展開しません";
  }
}

void refuse(const TRec* rec, const char* text, const char* other = nullptr) {
  LStr shown;
  rec->displayPath(shown);
  LStr otherShown;
  if (other != nullptr) otherShown.assign(other);
  FMsg(kMsgWarning, text, shown.ptr, otherShown.ptr);
  FWorkSet()->refused++;
}

// Checks one name in the system's own form and takes its place inside
// `*place`, which becomes the name's own; false after a warning for `ver`
// when the system cannot take the name as it is, or when another record of
// this extract took the place.
bool takeName(TVer* ver, const TRec* rec, ExtractRun& run, int32_t* place) {
  const char* name = rec->name();
  SysNameFault fault = SysCheckName(name);
  if (fault != kSysNameOk) {
    refuse(ver, faultText(fault));
    return false;
  }
  if (const TRec* holder = run.places.claim(*place, name, rec, place)) {
    LStr taken;
    holder->displayPath(taken);
    refuse(ver, "「%s」は「%s」と同じ場所に展開されるため展開しません", taken.ptr);
    return false;
  }
  return true;
}

// Makes `folder` the run's folder: its names below the base are taken one
// by one from the top.
bool enterFolder(TVer* ver, const TRec* folder, ExtractRun& run) {
  run.folder = nullptr;
  LArrOf<const TRec*> chain;
  for (const TRec* rec = folder; rec != nullptr && rec != run.base && !rec->isRoot();
       rec = rec->parent)
    chain.add(rec);
  LStr relative;
  int32_t place = TExtractPlaces::kDestination;
  for (int32_t i = chain.count - 1; i >= 0; i--) {
    if (!takeName(ver, chain[i], run, &place)) return false;
    if (!relative.empty()) relative.append(SysPathSeparator());
    relative.append(chain[i]->name());
  }
  run.folder = folder;
  run.folderMade = false;
  run.folderRelative.swap(relative);
  run.folderPlace = place;
  return true;
}

// The path of a version below the destination, or false after a warning
// when a name on the way is not one the system keeps as it is, or when the
// path reaches a file or folder that another record of this extract took.
// Each name is checked in the system's own form; a path joined of such
// names with the system's separator converts name by name, so what is
// opened is the destination and these names, nothing else.
bool destinationOf(TVer* ver, ExtractRun& run, LStr& path) {
  const TRec* file = ver->ownerFile();
  if (file->parent != run.folder && !enterFolder(ver, file->parent, run)) return false;
  int32_t place = run.folderPlace;
  if (!takeName(ver, file, run, &place)) return false;
  path = run.dest;
  path.append(SysPathSeparator());
  if (!run.folderRelative.empty()) {
    path.append(run.folderRelative);
    path.append(SysPathSeparator());
  }
  path.append(file->name());
  // Only for a file that is written: a folder whose files are all refused
  // is not made.
  if (!run.folderMade) FMakeDirs(path.ptr);
  run.folderMade = true;
  return true;
}

void collect(TVer* ver, void* found) { static_cast<LArrOf<TVer*>*>(found)->add(ver); }

void extractOne(TVer* ver, ExtractRun& run) {
  LStr path;
  if (!destinationOf(ver, run, path)) return;
  run.writer->add(ver, path.ptr);
}

}  // namespace

void FExtractVer(TVer* ver, const char* path) {
  THeldBuf raw;
  FReadRaw(ver, raw);
  const TVerInfo* info = ver->Info();
  FMakeDirs(path);
  FWriteExtracted(path, raw, info->createTime, info->accessTime, ver->time);
}

void FWriteExtracted(const char* path, const THeldBuf& raw, int64_t created, int64_t accessed,
                     int64_t modified) {
  {
    // One write of the whole version: through the 1000-byte buffer of a
    // buffered file, an extract of 7 980 headers made 122 766 write calls.
    LFile file;
    file.open(path, 'w', /*mustExist=*/false, /*ignoreBreak=*/true);
    if (!file.isOpen()) FError(kMsgErrorBox, "ファイル「%s」に書き込めません", path);
    if (file.write(raw.data(), raw.size()) != raw.size())
      FError(kMsgErrorBox, "ファイル「%s」に書き込めません", path);
  }
  // The exact inverse of how the times were read, so that they come back as
  // they were, whatever the time zone.
  if (!SysSetFileTimes(path, FUnixToFileTime(created), FUnixToFileTime(accessed),
                       FUnixToFileTime(modified)))
    FError(kMsgErrorBox, "SetFileTime() failed");
}

void FCmdExtract(const LArrOf<TRec*>& records, const char* destDir, TCond* cond, TRec* base) {
  // The versions are found first, so that the bar knows all the bytes.
  LArrOf<TVer*> found;
  FWalkItems(records, *cond, collect, &found);
  int64_t totalBytes = 0;
  for (TVer* ver : found) totalBytes += ver->size;
  TByteProgress progress(totalBytes);
  TExtractWriter writer;
  ExtractRun run(destDir, base, &writer);
  if (run.dest.empty()) run.dest = FArchive()->firstAddPath;
  FDropSep(run.dest);
  for (TVer* ver : found) {
    FShowProgressItem(ver->ownerFile()->name());
    extractOne(ver, run);
    progress.advance(ver->size);
  }
  writer.finish();
}

LStr FVersionViewPath(TVer* ver, const char* workDir) {
  LStr name(ver->name());
  SysNameFault fault = SysCheckName(name.ptr);
  if (fault != kSysNameOk) {
    LStr shown;
    ver->displayPath(shown);
    FMsg(kMsgWarning, faultText(fault), shown.ptr);
    return LStr();
  }
  LStr ext = FExtOf(name.ptr, /*withDot=*/false);
  LStr base = FBaseOf(name.ptr);
  int32_t number = ver->IndexInFile(false) + 1;
  for (int32_t counter = 0;; counter++) {
    LStr path;
    path.format("%s%s-V%d", workDir, base.ptr, number);
    if (counter > 0) path.format("-%d", counter);
    if (!ext.empty()) path.format(".%s", ext.ptr);
    if (FExists(path.ptr) == kExistsNone) return path;
  }
}

LStr FExtractReport(int32_t extracted, int32_t refused) {
  LStr text;
  text.format("%d 個のファイルを展開しました", extracted);
  if (refused != 0) text.format(" (展開しなかったファイル: %d)", refused);
  return text;
}
