// The conditions of the add dialog applied to a file on disk, before any
// record is made for it.
#pragma once

#include <cstdint>

class TCond;

// What the add command knows of a file on disk.
struct TAddCandidate {
  const char* name;  // without its folder
  int64_t time;      // last write, Unix seconds
  int64_t size;
  const char* path;  // the source path
  int32_t attrs;     // kAttrReadOnly, kAttrArchive, kAttrHidden, kAttrSystem
  bool hasFile;      // the archive already has a file record for it
};

// Sizes from here on do not fit a version's size field.
const int64_t kTooLargeSize = int64_t{1} << 31;

// True when the file passes: existing files only, name, date, size, path
// (regular expressions or texts), attributes, in that order. With a size
// condition set, a file too large for the size test is refused with the
// warning "ファイルが大きすぎます: %s" (20000) and the command goes on.
bool FAddCondTest(const TAddCandidate& file, const TCond& cond);
