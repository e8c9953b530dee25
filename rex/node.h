// The nodes of a compiled regular expression. A pattern becomes a tree of
// URex nodes; every node owns its children, so deleting the root deletes the
// tree. A tree keeps match state (lastCount, nextItem, the captured text), so
// one tree serves one thread at a time.
#pragma once

#include <cstdint>

#include "lib/larr.h"
#include "lib/lobj.h"
#include "lib/lstr.h"
#include "lib/ustr.h"

class URexCtx;

class URex : public LObj {
 public:
  virtual bool isFlat() const { return false; }
  // The number of text units matched at the context's position, or -1. The
  // position may be left anywhere: callers go through URexCtx::call, which
  // puts it back. A non-zero retry asks for another, shorter way than the
  // last one, where the node has one.
  virtual int32_t match(URexCtx& ctx, int retry) = 0;
  // The length of every match when all have the same one, else -1.
  virtual int32_t fixedLength() const { return -1; }
  // Debugging text, one line per node, children indented below.
  virtual void dump(LStr& out, int32_t indent) const = 0;
};

typedef LArrOf<URex*, LDelete<URex*>> URexList;

// Two consecutive items of a sequence.
class URexBin : public URex {
 public:
  URex* left;
  URex* right;

  URexBin(URex* left, URex* right) : left(left), right(right) {}
  ~URexBin() override;
  int32_t match(URexCtx& ctx, int retry) override;
  int32_t fixedLength() const override;
  void dump(LStr& out, int32_t indent) const override;
};

// A run of literal characters.
class URexFlat : public URex {
 public:
  UStr text;

  explicit URexFlat(UChar c) { text.append(c); }
  bool isFlat() const override { return true; }
  int32_t match(URexCtx& ctx, int retry) override;
  int32_t fixedLength() const override { return text.length; }
  void dump(LStr& out, int32_t indent) const override;
};

// "[...]": each item is a pair of low (key) and high (value); a high of 0
// makes the item the single character low.
class URexCharSet : public URex {
 public:
  LIntPairs items;
  int32_t exclude;

  explicit URexCharSet(int32_t exclude) : exclude(exclude) {}
  int32_t match(URexCtx& ctx, int retry) override;
  int32_t fixedLength() const override { return 1; }
  void dump(LStr& out, int32_t indent) const override;
};

// The kinds of URexSpChar, named after their characters.
enum : int32_t { kRexKindLineTop = 94, kRexKindLineEnd = 36, kRexKindWordEdge = 119 };

// A test of the surroundings that consumes nothing.
class URexSpChar : public URex {
 public:
  int32_t kind;

  explicit URexSpChar(int32_t kind) : kind(kind) {}
  int32_t match(URexCtx& ctx, int retry) override;
  int32_t fixedLength() const override { return 0; }
  void dump(LStr& out, int32_t indent) const override;
};

// "*", "+" and "?": a greedy repeat whose retry gives back one repeat.
class URexRepeat : public URex {
 public:
  static const int32_t kNoLimit = 2147483647;
  URex* child;
  int32_t min;
  int32_t max;
  int32_t lastCount = -1;  // repeats of the last match

  URexRepeat(URex* child, int32_t min, int32_t max) : child(child), min(min), max(max) {}
  ~URexRepeat() override;
  int32_t match(URexCtx& ctx, int retry) override;
  void dump(LStr& out, int32_t indent) const override;
};

// Look-around: "~x" followed by x, "!x" not followed by x, "~~x" preceded
// by x, "!!x" not preceded by x. Consumes nothing.
class URexStt : public URex {
 public:
  URex* child;
  int32_t behind;
  int32_t negate;

  URexStt(URex* child, int32_t behind, int32_t negate)
      : child(child), behind(behind), negate(negate) {}
  ~URexStt() override;
  int32_t match(URexCtx& ctx, int retry) override;
  int32_t fixedLength() const override { return 0; }
  void dump(LStr& out, int32_t indent) const override;
};

// "(...)": a group that keeps the text its child matched, unfolded. Groups
// without a name are known by number.
class URexBrace : public URex {
 public:
  URex* child;
  UStr name;
  UStr text;

  explicit URexBrace(URex* child) : child(child) {}
  ~URexBrace() override;
  int32_t match(URexCtx& ctx, int retry) override;
  int32_t fixedLength() const override { return child->fixedLength(); }
  void dump(LStr& out, int32_t indent) const override;
};

// "&": every item matches at the same place; the longest length counts.
class URexAnd : public URex {
 public:
  URexList items;
  int32_t nextItem = 0;  // where URexOr goes on at a retry

  int32_t match(URexCtx& ctx, int retry) override;
  int32_t fixedLength() const override;
  virtual const char* name() const { return "and"; }
  void dump(LStr& out, int32_t indent) const override;
};

// "|": the first item that matches; a retry moves on to the next one.
class URexOr : public URexAnd {
 public:
  int32_t match(URexCtx& ctx, int retry) override;
  int32_t fixedLength() const override;
  const char* name() const override { return "or"; }
};

// Stands in for a group with no content; matches the empty text.
class URexEmpty : public URex {
 public:
  int32_t match(URexCtx&, int) override { return 0; }
  int32_t fixedLength() const override { return 0; }
  void dump(LStr& out, int32_t indent) const override;
};
