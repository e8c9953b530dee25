// A fresh folder below the system's temporary folder for one test, removed
// with everything in it when the test ends.
#pragma once

#include "lib/lstr.h"

class TestTempDir {
 public:
  TestTempDir();
  ~TestTempDir();
  TestTempDir(const TestTempDir&) = delete;
  TestTempDir& operator=(const TestTempDir&) = delete;
  // The folder, without a trailing separator.
  const char* path() const { return path_.ptr; }
  // The folder joined with a name (8-bit text in the system code page).
  LStr file(const char* name) const;

 private:
  LStr path_;
};

// Removes a folder tree through the platform layer; true when it is gone.
bool TestRemoveTree(const char* path);
