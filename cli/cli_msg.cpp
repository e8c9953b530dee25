#include "cli/cli_msg.h"

#include "cli/cli_console.h"
#include "lib/liblock.h"

void TCliMsg::output(int number, const char* position, const char* level, const char* text) {
  LStr line;
  if (position) line.format("%s: ", position);
  if (number != 0) line.format("%s %d: ", level, number);
  line.append(text);
  // A plain message may end in its own line end; the console adds one.
  while (line.length > 0 && (line[line.length - 1] == '\n' || line[line.length - 1] == '\r'))
    line.truncate(line.length - 1);
  console_.err(line.ptr);
}

int TCliMsg::showBox(char, const char* title, const char* text) {
  LStr line;
  line.format("%s: ", title);
  line.append(text);
  console_.err(line.ptr);
  return 1;
}

void TCliMsg::errorBoxShown() {
  TMsg::errorBoxShown();
  FLibGuard guard;
  errorBoxes_++;
}
