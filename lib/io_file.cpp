#include "lib/io_file.h"

LIoFile::LIoFile(const char* path, char mode, bool mustExist, bool holdBreak) : LSrm(&file_) {
  file_.open(path, mode, mustExist, holdBreak);
  bufStart = filePos = file_.tell();
}

LIoFile::LIoFile() : LSrm(&file_) {}

bool LIoFile::reopen(const char* path, char mode, bool mustExist) {
  flushBuffer(/*keep=*/false);
  file_.open(path, mode, mustExist, /*ignoreBreak=*/true);
  reset();
  bufStart = filePos = file_.tell();
  return file_.isOpen();
}

LIoFile::~LIoFile() {
  // Buffer, then the file; the base destructor finds no stream and only
  // frees the buffer memory. The data goes to the system, not to the disk:
  // what must survive a crash (the archive and its journal) is flushed by
  // the caller, and a flush to disk per file made extracting many files
  // several times slower.
  flushBuffer(/*keep=*/false);
  file_.close();
  stream = nullptr;
}

void LIoFile::truncate(int32_t position) {
  int32_t at = position < 0 ? tell() : position;
  flushBuffer(/*keep=*/false);
  if (at != bufStart) line = 0;
  file_.truncate(at);
  bufStart = filePos = file_.tell();
}
