// The kst program: reads its command line, runs one sub-command on an
// archive and gives the exit status: 0 done, 1 after an error (or a stop),
// 2 for a usage error. Messages go to standard error, results to standard
// output, both in the encoding of the terminal.
#pragma once

#include "lib/larr.h"
#include "lib/lstr.h"

struct TCliCommand;
struct TCliRequest;

int FKstMain(int argc, char** argv);
// Runs with words already in the system code page (words[0] the
// sub-command); the reporter and the worker's interface must be installed.
int FKstRun(const LStrs& words);

// Reads the words of a sub-command (words[0] its name) into request: the
// options, the plain words and the conditions. False after a usage error was
// reported; true also when only help was asked for (request.help).
bool FParseRequest(const TCliCommand& command, const LStrs& words, TCliRequest& request);
// The help of one sub-command, or of the program when command is null.
LStr FHelpText(const TCliCommand* command);
