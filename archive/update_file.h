// The update file: what a command wants to change in the archive, as a
// sequence of records (i32 position, i32 length, the bytes) ended by the
// position -1. Nothing reaches the archive until the commit copies it.
#pragma once

#include <cstdint>

#include "lib/larr.h"
#include "lib/lstr.h"

class LIoFile;
class TVer;

class TUpdateFile {
 public:
  // A parent field in the update file that waits for the position of a
  // version not stored yet.
  struct TFixup {
    KST_POOLED_NEW
    int32_t at;
    TVer* ver;
  };

  // Creates (or empties) the file; "cannot open system file '%s'" when it
  // cannot be created.
  explicit TUpdateFile(const char* path);
  ~TUpdateFile();
  TUpdateFile(const TUpdateFile&) = delete;
  TUpdateFile& operator=(const TUpdateFile&) = delete;

  // A record whose length is not known when it begins.
  static const int32_t kLengthLater = -1;

  // Starts a record of `length` bytes for archive position pos; returns the
  // position in the update file where its bytes begin. A length given
  // later is patched in by endRecord: a seek back, and two more writes
  // once the record is longer than the stream's buffer.
  int32_t beginRecord(int32_t pos, int32_t length = kLengthLater);
  void endRecord();
  void write(const void* bytes, int32_t n);
  // Overwrites 4 bytes at a position of the update file, then returns to the end.
  void patchI32(int32_t at, int32_t value);
  void addFixup(int32_t at, TVer* ver);
  // Remembers a segment of a block written in this update: such a block is
  // not on disk yet, so freeing it again must not read the archive.
  void noteSegment(int32_t blockPos, int32_t segmentPos, int32_t size);
  // Takes out the segments noted for a block (position and size pairs);
  // false when the block was not written in this update.
  bool takeSegments(int32_t blockPos, LInts& segments);
  void writeEnd();
  void close();
  // Closes and deletes the file.
  void discard();

  LIoFile& stream() { return *file_; }
  const char* path() const { return path_.ptr; }
  LArrOf<TFixup*, LDelete<TFixup*>> fixups;

 private:
  struct TWritten {
    KST_POOLED_NEW
    int32_t blockPos;
    LInts segments;
  };
  LArrOf<TWritten*, LDelete<TWritten*>> written_;

 public:
 private:
  LStr path_;
  LIoFile* file_;
  int32_t recordStart_ = -1;
  int32_t recordLength_ = kLengthLater;
};
