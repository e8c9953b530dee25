// What the fuzz targets share: a reporter that keeps quiet about the faults
// they provoke by the thousand, and a check that stops the run on a finding.
#pragma once

#include "lib/msg.h"

class SilentReporter : public LMsg {
 public:
  void output(int, const char*, const char*, const char*) override {}
  int showBox(char, const char*, const char*) override { return 1; }
};

inline void check(bool condition) {
  if (!condition) __builtin_trap();
}
