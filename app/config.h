// TConfig: what belongs to this run of the desktop program and is never
// saved: the settings and help paths, whether another copy was running at
// start, the condition sets of the four long commands, the search base that
// the path columns of search rows run from, and the options page shown last.
// One object for the process, made at start-up after TApp.
#pragma once

#include <cstdint>

#include "lib/lstr.h"

class TCond;
class TRec;

class TConfig {
 public:
  TConfig();
  ~TConfig();
  TConfig(const TConfig&) = delete;
  TConfig& operator=(const TConfig&) = delete;

  LStr iniPath;
  LStr helpPath;
  // Set once at start-up when a main window of the program already existed.
  int32_t otherInstance = 0;
  // Where the running search began; its rows' paths run from here (null:
  // from the root).
  TRec* searchBase = nullptr;
  // The page of the options that was shown last; the next run starts there.
  int32_t optionsPage = 0;
  // Whether the conditions dialog shows its expanded part, kept for each
  // command that opens it.
  int32_t extractExpanded = 0;
  int32_t deleteExpanded = 0;
  int32_t searchExpanded = 0;

  // The conditions of add, extract and delete start fresh for each run; the
  // search conditions are kept from one search to the next.
  TCond& freshAddCond() { return fresh(addCond_); }
  TCond& freshExtractCond() { return fresh(extractCond_); }
  TCond& freshDeleteCond() { return fresh(deleteCond_); }
  TCond& searchCond() { return *searchCond_; }

 private:
  TCond& fresh(TCond*& slot);

  TCond* addCond_;
  TCond* extractCond_;
  TCond* deleteCond_;
  TCond* searchCond_;
};

TConfig* FConfig();
void FSetConfig(TConfig* config);
