#include "lib/srm_pos.h"

LSrmPos::LSrmPos(LSrm& srm, const char* name, int32_t lineOffset)
    : name_(name ? name : srm.name()), srm_(&srm), lineOffset_(lineOffset) {}

void LSrmPos::toText(LStr& out) const {
  out.append(name_);
  out.format("(%d)", srm_->lineNumber() + lineOffset_);
}

int32_t LSrmPos::get(int which) const {
  if (which == 0) return srm_->lineNumber() + lineOffset_;
  if (which == 1) return srm_->columnOffset();
  return 0;
}

LPos* FPushStreamPos(LSrm& srm, const char* name, int32_t lineOffset) {
  LPos* pos = new LSrmPos(srm, name, lineOffset);
  FPushPos(pos);
  return pos;
}
