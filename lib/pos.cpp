#include "lib/pos.h"

#include "lib/larr.h"
#include "lib/liblock.h"

namespace {
LArrOf<LPos*>* gPositions = nullptr;
LStr* gSourceText = nullptr;
}  // namespace

int32_t LPos::get(int) const { return 0; }
void LPos::set(const char*, int32_t) {}
void LPos::setName(const char*) {}
void LPos::setLine(int32_t) {}
void LPos::setOffset(int32_t) {}

LNnPos::LNnPos(const char* name, int32_t line)
    : name_(name), line_(line), linePointer_(nullptr), format_("%s(%d)") {}

LNnPos::LNnPos(const char* name, const int32_t* linePointer)
    : name_(name), line_(kNoLine), linePointer_(linePointer), format_("%s(%d)") {}

LPos* LNnPos::clone() const {
  LNnPos* copy = new LNnPos(name_.ptr, line_);
  copy->linePointer_ = linePointer_;
  copy->lineOffset_ = lineOffset_;
  copy->format_ = format_;
  return copy;
}

void LNnPos::toText(LStr& out) const {
  if (linePointer_) line_ = *linePointer_;
  if (line_ == kNoLine)
    out.append(name_);
  else
    out.format(format_.ptr, name_.ptr, line_ + lineOffset_);
}

int32_t LNnPos::get(int which) const {
  if (linePointer_) line_ = *linePointer_;
  return which == 0 ? line_ : 0;
}

void LNnPos::set(const char* name, int32_t line) {
  name_.assign(name);
  line_ = line;
}

void FPushPos(LPos* pos) {
  FLibGuard guard;
  if (gPositions == nullptr) gPositions = new LArrOf<LPos*>;
  gPositions->add(pos);
}

void FPopPos(bool destroy) {
  LPos* top;
  {
    FLibGuard guard;
    if (gPositions == nullptr || gPositions->count == 0) return;
    top = gPositions->pop();
  }
  if (destroy) delete top;
}

LPos* FTopPos() {
  FLibGuard guard;
  return gPositions ? gPositions->last() : nullptr;
}

LPos* FPushNamePos(const char* name, int32_t line) {
  LPos* pos = new LNnPos(name, line);
  FPushPos(pos);
  return pos;
}

LPos* FPushNamePosRef(const char* name, const int32_t* linePointer) {
  LPos* pos = new LNnPos(name, linePointer);
  FPushPos(pos);
  return pos;
}

void FPosText(LStr& out) {
  FLibGuard guard;
  LPos* top = gPositions ? gPositions->last() : nullptr;
  if (top) top->toText(out);
  if (gSourceText) {
    out.append(": ");
    out.append(*gSourceText);
  }
}

void FSetSourceText(const char* text) {
  FLibGuard guard;
  delete gSourceText;
  gSourceText = text ? new LStr(text) : nullptr;
}

int32_t FPosGet(int which) {
  LPos* top = FTopPos();
  return top ? top->get(which) : 0;
}

void FPosSetLine(int32_t line) {
  if (LPos* top = FTopPos()) top->setLine(line);
}

void FPosSetName(const char* name) {
  if (LPos* top = FTopPos()) top->setName(name);
}

void FClearPositions() {
  FLibGuard guard;
  if (gPositions == nullptr) return;
  for (LPos* pos : *gPositions) delete pos;
  delete gPositions;
  gPositions = nullptr;
}
