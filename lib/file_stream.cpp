#include "lib/file_stream.h"

#include "lib/fail.h"
#include "lib/msg.h"

namespace {
const int kBadFileMode = 1130;
}

LHandle::~LHandle() { LHandle::close(); }

int32_t LHandle::read(void* buffer, int32_t size) {
  if (!isOpen() || size <= 0) return 0;
  int32_t done = 0;
  if (!SysReadFile(handle, buffer, size, &done)) FMsg(kMsgSystem, "ReadFile()");
  position_ += done;
  return done;
}

int32_t LHandle::write(const void* buffer, int32_t size) {
  if (!isOpen()) return 0;
  int32_t done = 0;
  if (!SysWriteFile(handle, buffer, size, &done)) FMsg(kMsgSystem, "WriteFile()");
  position_ += done;
  return done;
}

int32_t LHandle::seek(int32_t position) {
  if (!isOpen()) return 0;
  int64_t result = 0;
  if (SysSeekFile(handle, position < 0 ? -1 : position, &result))
    position_ = static_cast<int32_t>(result);
  else
    FMsg(kMsgSystem, "SetFilePointer()");
  return position_;
}

void LHandle::flush() {
  // A failure to flush is not reported: the data is with the system either way.
  if (isOpen()) SysFlushFile(handle);
}

void LHandle::close() {
  if (!isOpen()) return;
  if (!SysCloseFile(handle)) FMsg(kMsgSystem, "CloseHandle()");
  handle = kSysNoFile;
  position_ = 0;
}

void LHandle::truncate(int32_t position) {
  if (!isOpen()) return;
  if (position >= 0) seek(position);
  if (!SysTruncateFile(handle)) FMsg(kMsgSystem, "SetEndOfFile()");
}

LFile::~LFile() { LFile::close(); }

int LFile::open(const char* path, char mode, bool mustExist, bool ignoreBreak) {
  close();
  path_.assign(path);
  if (mode != 'r' && mode != 'w' && mode != 'a') FInternalNum(kBadFileMode);
  mode_ = mode;
  breakMode_ = ignoreBreak ? kBreakIgnoreWhileWriting : kBreakNone;
  if (mode != 'r' && ignoreBreak) {
    SysHoldBreak();
    breakMode_ = kBreakHeld;
  }
  handle = SysOpenFile(path, mode);
  if (!isOpen()) {
    if (mustExist) FMsg(kMsgSystem, FLangText("%s を開けません", "cannot open %s"), path);
    close();
    return 1;
  }
  if (mode == 'a') seek(-1);
  return 0;
}

void LFile::flush() {
  if (mode_ != 'r') LHandle::flush();
}

void LFile::close() {
  LHandle::close();
  if (breakMode_ == kBreakHeld) {
    SysReleaseBreak();
    breakMode_ = kBreakIgnoreWhileWriting;
  }
}
