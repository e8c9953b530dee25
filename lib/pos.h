// Source positions that prefix numbered messages: a stack of LPos objects
// whose top says where the program is reading ("settings.ini(12)").
#pragma once

#include <cstdint>

#include "lib/lobj.h"
#include "lib/lstr.h"

class LPos : public LObj {
 public:
  virtual LPos* clone() const { return nullptr; }
  virtual void toText(LStr& out) const = 0;
  virtual const char* name() const { return nullptr; }
  virtual int32_t get(int which) const;
  virtual void set(const char* name, int32_t line);
  virtual void setName(const char* name);
  virtual void setLine(int32_t line);
  virtual void setOffset(int32_t offset);
};

// A name and a line number, or a name alone.
class LNnPos : public LPos {
 public:
  static const int32_t kNoLine = INT32_MIN;
  LNnPos(const char* name, int32_t line);
  LNnPos(const char* name, const int32_t* linePointer);
  LPos* clone() const override;
  void toText(LStr& out) const override;
  const char* name() const override { return name_.ptr; }
  int32_t get(int which) const override;
  void set(const char* name, int32_t line) override;
  void setName(const char* name) override { name_.assign(name); }
  void setLine(int32_t line) override { line_ = line; }
  void setOffset(int32_t offset) override { lineOffset_ = offset; }
  void setFormat(const char* format) { format_.assign(format); }

 private:
  LStr name_;
  mutable int32_t line_;
  const int32_t* linePointer_;
  int32_t lineOffset_ = 0;
  LStr format_;
};

void FPushPos(LPos* pos);
void FPopPos(bool destroy);
LPos* FTopPos();
LPos* FPushNamePos(const char* name, int32_t line);
LPos* FPushNamePosRef(const char* name, const int32_t* linePointer);
// The text of the top position, then ": " and the source text if one is set.
void FPosText(LStr& out);
// An optional text appended to every position; null clears it.
void FSetSourceText(const char* text);
// Forwarding to the top position; nothing (or 0) when the stack is empty.
int32_t FPosGet(int which);
void FPosSetLine(int32_t line);
void FPosSetName(const char* name);
// Empties the stack, deleting what it holds.
void FClearPositions();

// Pushes a position for one scope.
class LPosScope {
 public:
  explicit LPosScope(LPos* pos) { FPushPos(pos); }
  ~LPosScope() { FPopPos(true); }
  LPosScope(const LPosScope&) = delete;
  LPosScope& operator=(const LPosScope&) = delete;
};
