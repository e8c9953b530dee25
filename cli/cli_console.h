// The program's standard streams. Standard output carries the results
// (lines of text, or raw bytes); standard error the messages and, when it is
// a terminal, one status line (the progress) that every message moves
// aside. Text comes in as core text (system code page, with escapes) and
// goes out in each stream's own code page.
//
// Safe to call from the main thread and the worker. The writes are ordered
// by the library-wide lock, which also guards the status texts and every
// allocation: one lock, so that no order of taking two can deadlock.
#pragma once

#include <cstdint>

#include "cli/text_width.h"
#include "lib/lstr.h"

class TCliConsole {
 public:
  TCliConsole();
  ~TCliConsole();
  TCliConsole(const TCliConsole&) = delete;
  TCliConsole& operator=(const TCliConsole&) = delete;

  // One line on standard output.
  void out(const char* text);
  // Raw bytes on standard output; false when not all could be written.
  bool outBytes(const void* bytes, int64_t size);
  // One line on standard error.
  void err(const char* text);
  // Replaces the status line ("" takes it away). Only a terminal shows it.
  void status(const char* text);
  bool showsStatus() const { return errTerminal_; }
  // How the escapes of core text look on standard output and on standard
  // error.
  TEscapeForm outEscapes() const { return escapesIn(outCodePage_); }
  TEscapeForm errEscapes() const { return escapesIn(errCodePage_); }
  // Asks a yes/no question on the terminal. Without a terminal to ask, at
  // the end of the input or after a break the answer is yes: a question
  // that nobody can answer must not hold the program.
  bool ask(const char* question);

 private:
  // The terminal form of core text in a code page; a message that the
  // conversion itself reports comes back here and goes out unconverted.
  LStr convert(const char* text, int codePage);
  // UTF-8 has every character; any other code page shows the escape.
  static TEscapeForm escapesIn(int codePage);
  void writeErr(const LStr& bytes);
  void clearStatus();
  void drawStatus();

  int outCodePage_;
  int errCodePage_;
  bool errTerminal_;
  bool inTerminal_;
  int32_t converting_ = 0;
  LStr status_;              // core text of the status line
  int32_t statusWidth_ = 0;  // columns it takes on the screen now
};
