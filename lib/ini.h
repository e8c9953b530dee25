// LIni: the settings text as a table. Each entry pairs a key with a variable
// and a field function (ini_fields.h), and the same table both writes the
// file and reads it, so the order and spelling of the keys stand once.
//
// Written form: one line per key, "name=value" and CR LF, each line starting
// with as many blanks as the nesting depth. Reading goes through the file
// rather than the table: blanks, line ends and ";" comment lines are
// skipped, each "name=" calls the key's field function, and a key that comes
// twice is read twice (the later value wins). A bad line is reported (15001),
// costs only its key and the reading goes on; after more than 10 errors it
// stops with "Too many error. Abort reading configuration/ini file.".
#pragma once

#include <cstdint>

#include "lib/alloc.h"
#include "lib/ini_io.h"
#include "lib/larr.h"
#include "lib/lobj.h"

class LIni : public LObj {
 public:
  // name is not copied and must outlive the table. A leading "/" (not part
  // of the key) marks an entry written compactly: a nested table on one line.
  void add(const char* name, void* target, LIniField field);
  // Reads the whole stream; messages carry the stream's name and line.
  void read(LIniIo& io);
  void write(LIniIo& io);

 private:
  struct Key {
    KST_POOLED_NEW
    const char* name;
    void* target;
    LIniField field;
    int32_t compact;
  };
  LArrOf<Key*, LDelete<Key*>> keys;

  friend void FIniTable(void* target, LIniIo& io);
  // Reads entries up to the end of the stream, or for a nested table up to
  // its closing ")".
  void readEntries(LIniIo& io, bool nested);
  // Reads one "name=value" whose first byte is next; false for a bad line.
  void readEntry(LIniIo& io, int next);
  void writeEntries(LIniIo& io);
  void callField(const Key& key, LIniIo& io);
  const Key* find(const LStr& name) const;
};

// An LIni nested in another, written "(" with its keys one level deeper on
// lines of their own and ")"; a compact entry is written "(a=1,b=2)".
void FIniTable(void* target, LIniIo& io);
