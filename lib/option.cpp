#include "lib/option.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "lib/convert.h"
#include "lib/msg.h"
#include "lib/time_parse.h"

namespace {
char foldAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }
}  // namespace

const char* LOptBase::valueOf(const char* argument) const {
  if (argument == nullptr || (argument[0] != '-' && argument[0] != '/')) return nullptr;
  const char* p = argument + 1;
  for (const char* n = name; *n; n++, p++)
    if (foldAscii(*p) != foldAscii(*n)) return nullptr;
  if (*p == 0) return p;
  return *p == ':' ? p + 1 : nullptr;
}

int LIntOpt::parse(const char* argument) {
  const char* value = valueOf(argument);
  if (value == nullptr) return 0;
  int64_t number = defaultValue;
  if (*value == 0 && defaultValue == kValueRequired) {
    // The caller's value stays as it was.
    FMsg(kMsgGeneral, "value required: %s", argument);
    return 1;
  }
  if (*value != 0) number = FParseSize(value, /*upper=*/false);
  int64_t high = max >= 0 ? max : INT32_MAX;
  if (number < min) {
    FMsg(kMsgGeneral, "too small option number: %s: %lld < %d", argument,
         static_cast<long long>(number), min);
  } else if (number > high) {
    FMsg(kMsgGeneral, "too big option number: %s: %lld > %lld", argument,
         static_cast<long long>(number), static_cast<long long>(high));
  }
  // Stored even when reported; only what a 32-bit target cannot hold is cut.
  *target = static_cast<int32_t>(std::clamp<int64_t>(number, INT32_MIN, INT32_MAX));
  return 1;
}

int LDblOpt::parse(const char* argument) {
  const char* value = valueOf(argument);
  if (value == nullptr) return 0;
  if (*value == 0) {
    FMsg(kMsgGeneral, "float value required: %s", argument);
    return 1;
  }
  char* end;
  *target = std::strtod(value, &end);
  if (*end != 0) FMsg(kMsgCountedWarning, "illegal float format: %s", value);
  return 1;
}

int LMskOpt::parse(const char* argument) {
  const char* value = valueOf(argument);
  if (value == nullptr) return 0;
  if (*value == 0 || std::strcmp(value, "1") == 0) {
    *target |= setBits;
  } else if (std::strcmp(value, "2") == 0 && altBits != kNoBits) {
    *target |= altBits;
  } else if (std::strcmp(value, "0") == 0) {
    *target &= ~setBits;
    if (altBits != kNoBits) *target &= ~altBits;
  } else {
    FMsg(kMsgGeneral, "illegal mask option value: %s", value);
  }
  return 1;
}

int LSwitchOpt::parse(const char* argument) {
  const char* value = valueOf(argument);
  if (value == nullptr) return 0;
  if (*value != 0) FMsg(kMsgGeneral, "illegal switch option: %s", argument);
  *target = this->value;
  return 1;
}

int LStrOpt::parse(const char* argument) {
  const char* value = valueOf(argument);
  if (value == nullptr) return 0;
  *target = *value != 0 || defaultValue == nullptr ? value : defaultValue;
  return 1;
}

int LStrcOpt::parse(const char* argument) {
  const char* value = valueOf(argument);
  if (value == nullptr) return 0;
  target->assign(*value == 0 && defaultValue != nullptr ? defaultValue : value);
  return 1;
}

int UStrOpt::parse(const char* argument) {
  const char* value = valueOf(argument);
  if (value == nullptr) return 0;
  if (*value == 0 && defaultValue != nullptr) {
    target->assign(defaultValue);
  } else {
    target->clear();
    FToUStr(value, -1, *target);
  }
  return 1;
}

int LDtOpt::parse(const char* argument) {
  const char* value = valueOf(argument);
  if (value == nullptr) return 0;
  *target = FParseTime(value, /*upper=*/false);
  return 1;
}

void LOptTable::addInt(const char* name, int32_t* target, int32_t min, int32_t max,
                       int32_t defaultValue) {
  items.add(new LIntOpt(name, target, min, max, defaultValue));
}
void LOptTable::addDbl(const char* name, double* target) { items.add(new LDblOpt(name, target)); }
void LOptTable::addMsk(const char* name, uint32_t* target, uint32_t setBits, uint32_t altBits) {
  items.add(new LMskOpt(name, target, setBits, altBits));
}
void LOptTable::addSwitch(const char* name, int32_t* target, int32_t value) {
  items.add(new LSwitchOpt(name, target, value));
}
void LOptTable::addStr(const char* name, const char** target, const char* defaultValue) {
  items.add(new LStrOpt(name, target, defaultValue));
}
void LOptTable::addStrc(const char* name, LStr* target, const char* defaultValue) {
  items.add(new LStrcOpt(name, target, defaultValue));
}
void LOptTable::addUStr(const char* name, UStr* target, const UChar* defaultValue) {
  items.add(new UStrOpt(name, target, defaultValue));
}
void LOptTable::addStrs(const char* name, LStrs** target, bool split, int mode) {
  items.add(new LStrsOpt(name, target, split, mode));
}
void LOptTable::addInts(const char* name, LInts** target) { items.add(new LIntsOpt(name, target)); }
void LOptTable::addStrPairs(const char* name, LStrPairs** target) {
  items.add(new LStrPairsOpt(name, target));
}
void LOptTable::addIntPairs(const char* name, LIntPairs** target) {
  items.add(new LIntPairsOpt(name, target));
}
void LOptTable::addDt(const char* name, int64_t* target) { items.add(new LDtOpt(name, target)); }
void LOptTable::addDtPairs(const char* name, LDtPairs** target) {
  items.add(new LDtPairsOpt(name, target));
}

int LOptTable::parseArg(const char* argument) {
  for (LOptBase* option : items) {
    int result = option->parse(argument);
    if (result != 0) return result;
  }
  return 0;
}
