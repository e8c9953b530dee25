// The sub-commands of kst: their names, help texts and options, and the
// functions that run them on an open archive. A run returns the exit status
// (0 done, 1 failed); it may also throw the integer of a shown error.
#pragma once

#include <cstdint>

#include "cli/cli_request.h"

class TCliArgs;

struct TCliCommand {
  const char* name;
  const char* usage;    // the words after "kst <name>"
  const char* summary;  // one line
  int32_t minPlain;     // plain words, the archive included
  int32_t maxPlain;     // -1: no limit
  int32_t itemWords;    // plain words behind the archive that are archive paths; -1: all
  bool createsArchive;  // a missing archive is made rather than refused
  bool writesArchive;   // holds the archive for writing from load to commit
  void (*declare)(TCliArgs& args, TCliRequest& request);
  int (*run)(TCliContext& context);
};

// The table, ended by an entry whose name is null.
extern const TCliCommand kCliCommands[];
const TCliCommand* FFindCommand(const char* name);

void FDeclareAdd(TCliArgs& args, TCliRequest& request);
void FDeclareList(TCliArgs& args, TCliRequest& request);
void FDeclareCat(TCliArgs& args, TCliRequest& request);
void FDeclareExtract(TCliArgs& args, TCliRequest& request);
void FDeclareFind(TCliArgs& args, TCliRequest& request);
void FDeclareNothing(TCliArgs& args, TCliRequest& request);
void FDeclareRm(TCliArgs& args, TCliRequest& request);

int FRunAdd(TCliContext& context);
int FRunLs(TCliContext& context);
int FRunLog(TCliContext& context);
int FRunCat(TCliContext& context);
int FRunExtract(TCliContext& context);
int FRunFind(TCliContext& context);
int FRunMkdir(TCliContext& context);
int FRunMv(TCliContext& context);
int FRunInfo(TCliContext& context);
int FRunCheck(TCliContext& context);
int FRunRm(TCliContext& context);
