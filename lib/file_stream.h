// LHandle and LFile: unbuffered streams over an open file of the platform
// layer. A failed system call reports message 17000 with the name of the
// file operation ("ReadFile()", "WriteFile()", "SetFilePointer()",
// "CloseHandle()", "SetEndOfFile()") followed by the system's text, and the
// operation returns what it has. Operations on a stream that is not open do
// nothing and return 0.
#pragma once

#include <cstdint>

#include "lib/lstr.h"
#include "lib/stream.h"
#include "lib/sys.h"

class LHandle : public LStream {
 public:
  // Takes over an open file (or none); the file is closed with the stream.
  explicit LHandle(SysFile file = kSysNoFile) : handle(file) {}
  ~LHandle() override;
  LHandle(const LHandle&) = delete;

  int32_t read(void* buffer, int32_t size) override;
  int32_t write(const void* buffer, int32_t size) override;
  // A negative position goes to the end. Positions beyond 2 GB are not
  // reachable.
  int32_t seek(int32_t position) override;
  int32_t tell() override { return isOpen() ? position_ : 0; }
  void flush() override;
  bool isOpen() override { return handle != kSysNoFile; }
  void close() override;
  // Ends the file at position (after seeking there), or here when negative.
  void truncate(int32_t position) override;
  const char* name() override { return "Windows HANDLE"; }
  // The system's file, for the calls that no stream offers.
  SysFile systemFile() const { return handle; }

 protected:
  SysFile handle;

 private:
  // The file's cursor: only this object moves it.
  int32_t position_ = 0;
};

// A file opened by path. While a file opened for writing with ignoreBreak is
// open, the break signal (Ctrl+C) is held off, so it cannot cut a write short.
class LFile : public LHandle {
 public:
  LFile() = default;
  ~LFile() override;

  // mode is 'r' (read; others may read and write; the file must exist),
  // 'w' (write; created or emptied; others may only read) or 'a' (write;
  // created when missing; positioned at the end). Any other mode ends the
  // process (internal failure 1130). A file that does not open is reported
  // only when mustExist is set ("cannot open %s"). Closes a file opened
  // before. Returns non-zero when the file is not open.
  int open(const char* path, char mode, bool mustExist, bool ignoreBreak);
  // Pushes written data to the disk; a file open for reading has none.
  void flush() override;
  // Also lets the break signal through again.
  void close() override;
  // The path of the file.
  const char* name() override { return path_.ptr; }

 private:
  enum BreakMode : int32_t {
    kBreakNone = 0,
    kBreakIgnoreWhileWriting = 1,
    kBreakHeld = 2,
  };
  char mode_ = 0;
  int32_t breakMode_ = kBreakNone;
  LStr path_;
};
