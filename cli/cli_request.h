// What one command line asks for: the words of a sub-command read into the
// options of every command, of which each command declares the ones it
// takes.
#pragma once

#include <cstdint>

#include "cli/cond_options.h"
#include "lib/larr.h"
#include "lib/lstr.h"
#include "store/cond.h"

class TCliConsole;
class TCliSession;
class TCliUi;

struct TCliRequest {
  TCliRequest() : condOptions(cond) {}
  TCliRequest(const TCliRequest&) = delete;
  TCliRequest& operator=(const TCliRequest&) = delete;

  LStrs plain;    // the plain words: the archive first
  LStr settings;  // --settings: another settings file
  int32_t help = 0;
  LStr to;              // add: the folder, or the file, to add into
  int32_t threads = 0;  // add: the threads that encode; 0 for one per core
  LStr dest;            // extract: the destination folder
  int32_t version = 0;  // cat: 1 is the oldest; 0 the newest
  int32_t all = 0;      // ls, log, find: every column
  TCond cond;
  TCliCondOptions condOptions;
};

// What a command works with.
struct TCliContext {
  TCliSession& session;
  TCliConsole& console;
  TCliUi& ui;
  TCliRequest& request;
};
