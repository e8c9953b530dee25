// The words of one sub-command. Options are written "--name VALUE",
// "--name=VALUE" or, for those with a letter, "-x VALUE"; a switch is
// "--name" alone; "--" ends the options, so that a plain word may begin with
// "-". Every other word is plain. Each option is a descriptor that points at
// the caller's variable, and the table also writes the help lines.
//
// Usage errors are reported as error 15001 through the reporter.
#pragma once

#include <cstdint>

#include "lib/larr.h"
#include "lib/lstr.h"

class TCliArgs {
 public:
  // Checks and applies the value of a custom option; false when it was
  // refused, after the function reported why.
  typedef bool (*FApply)(const char* value, void* target);

  TCliArgs() = default;
  TCliArgs(const TCliArgs&) = delete;
  TCliArgs& operator=(const TCliArgs&) = delete;

  // A switch sets *target to value.
  void addSwitch(const char* name, char letter, int32_t* target, int32_t value, const char* help);
  // A text option keeps its last value; with `list`, every further value is
  // appended behind a ",", so that a repeated option lists alternatives.
  void addText(const char* name, char letter, LStr* target, bool list, const char* valueName,
               const char* help);
  // A whole number, not below `min`.
  void addNumber(const char* name, char letter, int32_t* target, int32_t min, const char* valueName,
                 const char* help);
  void addCustom(const char* name, FApply apply, void* target, const char* valueName,
                 const char* help);

  // Reads words[first..]; plain words are appended to `plain`. False after
  // a usage error.
  bool parse(const LStrs& words, int32_t first, LStrs& plain) const;
  // One line per option: the forms and the help text.
  void helpLines(LStr& out) const;

 private:
  enum Kind { kSwitch, kText, kList, kNumber, kCustom };
  struct Option {
    KST_POOLED_NEW
    const char* name;
    char letter;
    Kind kind;
    void* target;
    int32_t value;  // a switch's value, a number's least value
    FApply apply;
    const char* valueName;
    const char* help;
  };
  const Option* find(const char* word, const char** inlineValue) const;
  bool apply(const Option& option, const char* value) const;
  void add(const Option& option) { options_.add(new Option(option)); }

  LArrOf<Option*, LDelete<Option*>> options_;
};
