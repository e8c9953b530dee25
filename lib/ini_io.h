// LIniIo: what a settings field function works with. One field function both
// reads and writes its variable, according to the mode; the helpers here are
// the shared grammar of the settings text:
//   token     bytes up to "(", ")", ",", CR, LF or the end; blanks belong to it
//   skipping  blanks, CR, LF and ";" comments up to the line end, before names
//             and structural bytes
//   list      "(" items separated by "," ")"
// Every reading failure is a numbered message 15001 (counted as an error);
// reading goes on, and the variable keeps its value. A bad value costs the
// rest of its line.
#pragma once

#include <cstdint>

#include "lib/lstr.h"
#include "lib/srm.h"

struct LIniIo {
  LSrm* stream;
  int32_t mode;         // 'w' when writing, anything else when reading
  int32_t depth = 0;    // nesting level; each written line starts with this many blanks
  int32_t compact = 0;  // the compact flag of the entry being written
  // The reporter's error count when the reading began, and whether the
  // reading was given up for too many errors.
  int32_t errorBase = 0;
  bool aborted = false;

  LIniIo(LSrm& srm, int32_t mode) : stream(&srm), mode(mode) {}
  bool writing() const { return mode == 'w'; }

  // Skips blanks, line ends and comments; returns the next byte, unread, or
  // -1 at the end.
  int skip();
  // Skips, then consumes expected; anything else is reported and left unread.
  bool require(char expected);
  // Reads a token (see above) into out, replacing its content.
  void readToken(LStr& out);
  // Reports a syntax error (15001).
  void error(const char* fmt, ...) __attribute__((format(printf, 2, 3)));
  // True once the errors since errorBase are more than 10; the first time,
  // reports that the reading is given up.
  bool tooManyErrors();
};

// A field function: writes *target, or reads it, according to io.mode.
typedef void (*LIniField)(void* target, LIniIo& io);

// An item of a list: writes item index, or reads the item that comes as
// item index (0 for the first).
typedef void (*LIniItem)(void* context, int32_t index, LIniIo& io);

// Writes count items as "(" item "," item ... ")", or reads such a list,
// calling item once per item read. With textItems an item starts right after
// "(" or ","; otherwise blanks, line ends and comments before items are
// skipped as well. A missing "," or ")" is reported and ends the list.
void FIniList(LIniIo& io, void* context, int32_t count, LIniItem item, bool textItems);
