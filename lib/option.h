// Option descriptors: each names one option and points at the caller's
// variable that it sets. An argument is this option when it starts with "-"
// or "/", then the name (ASCII case folded), then either its end or ":" and
// the value; so "-olx" is never taken for "ol", whatever the order of the
// table. A bad value is reported (15000, or 35000 for a float with trailing
// text) and the argument still counts as recognised, so it is never taken
// for a file name.
//
// Names and targets are not owned: the caller keeps them alive as long as
// the table. Lists that a descriptor creates on first use belong to the
// caller, who deletes them.
#pragma once

#include <cstdint>

#include "lib/larr.h"
#include "lib/lobj.h"
#include "lib/lstr.h"
#include "lib/ustr.h"

class LOptBase : public LObj {
 public:
  const char* name;

  explicit LOptBase(const char* name) : name(name) {}
  // Non-zero when the argument is this option, whether or not its value
  // was good; 0 when it is not.
  virtual int parse(const char* argument) = 0;

 protected:
  // The value behind the name and ":" (empty when there is none), or null
  // when the argument is not this option.
  const char* valueOf(const char* argument) const;
};

template <typename T>
class LOptOf : public LOptBase {
 public:
  T* target;

  LOptOf(const char* name, T* target) : LOptBase(name), target(target) {}
};

// A number; FParseSize units are accepted ("64k").
class LIntOpt : public LOptOf<int32_t> {
 public:
  static const int32_t kValueRequired = -10000;  // as defaultValue
  int32_t min;
  int32_t max;  // negative: no upper limit
  int32_t defaultValue;

  LIntOpt(const char* name, int32_t* target, int32_t min, int32_t max, int32_t defaultValue)
      : LOptOf(name, target), min(min), max(max), defaultValue(defaultValue) {}
  int parse(const char* argument) override;
};

class LDblOpt : public LOptOf<double> {
 public:
  using LOptOf::LOptOf;
  int parse(const char* argument) override;
};

// Flags: "1" or nothing sets setBits, "2" sets altBits, "0" clears both.
class LMskOpt : public LOptOf<uint32_t> {
 public:
  static const uint32_t kNoBits = 0xFFFFFFFF;  // altBits when there is no "2"
  uint32_t setBits;
  uint32_t altBits;

  LMskOpt(const char* name, uint32_t* target, uint32_t setBits, uint32_t altBits)
      : LOptOf(name, target), setBits(setBits), altBits(altBits) {}
  int parse(const char* argument) override;
};

// Takes no value; sets the target to `value`.
class LSwitchOpt : public LOptOf<int32_t> {
 public:
  int32_t value;

  LSwitchOpt(const char* name, int32_t* target, int32_t value)
      : LOptOf(name, target), value(value) {}
  int parse(const char* argument) override;
};

// Points the target into the argument itself, which must outlive its use.
class LStrOpt : public LOptOf<const char*> {
 public:
  const char* defaultValue;  // for an empty value, unless null

  LStrOpt(const char* name, const char** target, const char* defaultValue)
      : LOptOf(name, target), defaultValue(defaultValue) {}
  int parse(const char* argument) override;
};

class LStrcOpt : public LOptOf<LStr> {
 public:
  const char* defaultValue;  // for an empty value, unless null

  LStrcOpt(const char* name, LStr* target, const char* defaultValue)
      : LOptOf(name, target), defaultValue(defaultValue) {}
  int parse(const char* argument) override;
};

// The value converted to 16-bit text.
class UStrOpt : public LOptOf<UStr> {
 public:
  const UChar* defaultValue;  // for an empty value, unless null

  UStrOpt(const char* name, UStr* target, const UChar* defaultValue)
      : LOptOf(name, target), defaultValue(defaultValue) {}
  int parse(const char* argument) override;
};

// Appends the value to a list, as it stands or split at "," by FSplit with
// `mode`.
class LStrsOpt : public LOptOf<LStrs*> {
 public:
  bool split;
  int mode;

  LStrsOpt(const char* name, LStrs** target, bool split, int mode)
      : LOptOf(name, target), split(split), mode(mode) {}
  int parse(const char* argument) override;
};

// "1,3-5,-7": numbers and ranges of at most 100 numbers.
class LIntsOpt : public LOptOf<LInts*> {
 public:
  using LOptOf::LOptOf;
  int parse(const char* argument) override;
};

struct LDtPair {
  KST_POOLED_NEW
  int64_t low;
  int64_t high;
};
typedef LArrOf<LDtPair*, LDelete<LDtPair*>> LDtPairs;

// Pair lists "a-b,c": a piece without "-" is a pair of two equal members.
// A list left empty is deleted and the target set back to null.
class LStrPairsOpt : public LOptOf<LStrPairs*> {
 public:
  using LOptOf::LOptOf;
  int parse(const char* argument) override;
};

class LIntPairsOpt : public LOptOf<LIntPairs*> {
 public:
  using LOptOf::LOptOf;
  int parse(const char* argument) override;
};

// Date-times in either form of FParseTime; the high member of a pair is the
// end of its range, so "240105" alone covers that whole day.
class LDtPairsOpt : public LOptOf<LDtPairs*> {
 public:
  using LOptOf::LOptOf;
  int parse(const char* argument) override;
};

// A date-time in either form of FParseTime, as seconds since 1970.
class LDtOpt : public LOptOf<int64_t> {
 public:
  using LOptOf::LOptOf;
  int parse(const char* argument) override;
};

// The option table: owned descriptors, asked in the order they were added.
class LOptTable {
 public:
  LArrOf<LOptBase*, LDelete<LOptBase*>> items;

  void addInt(const char* name, int32_t* target, int32_t min, int32_t max, int32_t defaultValue);
  void addDbl(const char* name, double* target);
  void addMsk(const char* name, uint32_t* target, uint32_t setBits, uint32_t altBits);
  void addSwitch(const char* name, int32_t* target, int32_t value);
  void addStr(const char* name, const char** target, const char* defaultValue);
  void addStrc(const char* name, LStr* target, const char* defaultValue);
  void addUStr(const char* name, UStr* target, const UChar* defaultValue);
  void addStrs(const char* name, LStrs** target, bool split, int mode);
  void addInts(const char* name, LInts** target);
  void addStrPairs(const char* name, LStrPairs** target);
  void addIntPairs(const char* name, LIntPairs** target);
  void addDt(const char* name, int64_t* target);
  void addDtPairs(const char* name, LDtPairs** target);

  // The first non-zero result of the descriptors' parse, or 0 when none
  // took the argument (a plain argument such as a file name).
  int parseArg(const char* argument);
};
