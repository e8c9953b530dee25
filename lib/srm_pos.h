// LSrmPos: the position of a buffered stream as a message prefix, "name(line)".
// Its line is read live from the stream, so a position on the stack follows
// the reader as it advances.
#pragma once

#include <cstdint>

#include "lib/lstr.h"
#include "lib/pos.h"
#include "lib/srm.h"

class LSrmPos : public LPos {
 public:
  // The stream is watched, not owned; it must outlive the position. A null
  // name takes the stream's name.
  LSrmPos(LSrm& srm, const char* name, int32_t lineOffset);

  void toText(LStr& out) const override;
  const char* name() const override { return name_.ptr; }
  // 0: the line plus the offset; 1: the column offset in the stream.
  int32_t get(int which) const override;
  void setName(const char* name) override { name_.assign(name); }
  void setOffset(int32_t offset) override { lineOffset_ = offset; }

 private:
  LStr name_;
  LSrm* srm_;
  int32_t lineOffset_;
};

// Pushes an LSrmPos for srm; returns it (the stack owns it).
LPos* FPushStreamPos(LSrm& srm, const char* name, int32_t lineOffset);
