// LIoFile: the buffered file, an LSrm over an LFile that it owns. The file is
// opened by the constructor (with the break signal held off while writing);
// isOpen() tells whether that worked. The destructor writes the buffer out to
// the system and closes the file; flush() also asks the system to put the
// data on the disk, for what must survive a crash.
#pragma once

#include <cstdint>

#include "lib/file_stream.h"
#include "lib/srm.h"

class LIoFile : public LSrm {
 public:
  // mode and mustExist as for LFile::open. In mode 'a' the stream starts at
  // the end of the file. holdBreak false lets the break signal through while
  // the file is open for writing: for a file held open across a long task
  // whose few writes the caller guards itself.
  LIoFile(const char* path, char mode, bool mustExist, bool holdBreak = true);
  // A stream with no file open yet.
  LIoFile();
  ~LIoFile() override;

  // Writes out and closes the file open now, if any, and opens another one
  // with a fresh buffer. True when it opened.
  bool reopen(const char* path, char mode, bool mustExist);

  // Writes the buffer out and ends the file at position, or at the cursor
  // when negative; the cursor is then at that position.
  void truncate(int32_t position) override;
  const char* name() override { return file_.name(); }
  SysFile systemFile() const { return file_.systemFile(); }

 private:
  LFile file_;
};
