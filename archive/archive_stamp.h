// TArchiveStamp: what tells one state of an archive file from every other,
// so that a writer can make sure, under the exclusive write lock and before
// it writes a byte, that the file is still the one whose tree it loaded.
//
// Every commit rewrites the header's positions and the whole footer (the
// string table and the tree) and cuts the file behind it, so a commit
// changes the file's last write time and, unless the tree came out the same
// byte for byte, the footer. The stamp keeps both, with the file's identity
// and length: a file put in the archive's place, or copied over it with its
// old time, differs in identity or in its header and footer bytes.
#pragma once

#include <cstdint>

#include "lib/sys.h"

class LIoFile;

struct TArchiveStamp {
  bool valid = false;  // false: never taken, or the file could not be read
  SysFileStamp file = {};
  uint64_t sum = 0;  // the header and the footer bytes

  bool operator==(const TArchiveStamp& other) const;
  bool operator!=(const TArchiveStamp& other) const { return !(*this == other); }
};

// The stamp of the archive open in `file` for reading; the stream's position
// is left anywhere.
TArchiveStamp FStampArchive(LIoFile& file);
// Under the write lock held through `writer`: throws the error "another
// program changed the archive" unless the file at path is the file that
// writer holds and its stamp is still `loaded`.
void FCheckUnchanged(const char* path, LIoFile& writer, const TArchiveStamp& loaded);
