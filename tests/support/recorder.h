// A reporter for tests: keeps every message and box instead of printing.
#pragma once

#include "lib/larr.h"
#include "lib/msg.h"

class TestRecorder : public LMsg {
 public:
  struct Entry {
    KST_POOLED_NEW
    int number;
    LStr position;
    LStr level;
    LStr text;
  };
  LArrOf<Entry*, LDelete<Entry*>> entries;
  LStrs boxes;  // "title|text"

  void output(int number, const char* position, const char* level, const char* text) override {
    entries.add(new Entry{number, position ? position : "", level, text});
  }
  int showBox(char, const char* title, const char* text) override {
    LStr* box = new LStr(title);
    box->append('|');
    box->append(text);
    boxes.add(box);
    return 1;
  }
  bool has(int number) const {
    for (Entry* e : entries)
      if (e->number == number) return true;
    return false;
  }
};

// Installs a fresh recorder for the life of a test and removes it after.
class RecorderScope {
 public:
  RecorderScope() : recorder(new TestRecorder) { FSetReporter(recorder); }
  ~RecorderScope() { FSetReporter(nullptr); }
  TestRecorder* operator->() { return recorder; }
  TestRecorder* recorder;
};
