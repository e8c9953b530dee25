#include "ui/status_line.h"

const char* TStatusLine::report(const char* text) {
  report_ = text != nullptr ? text : "";
  return report_.ptr;
}

const char* TStatusLine::help(const char* text) {
  return text != nullptr && *text != 0 ? text : report_.ptr;
}
