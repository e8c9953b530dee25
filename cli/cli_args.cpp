#include "cli/cli_args.h"

#include <cstring>

#include "cli/text_width.h"
#include "lib/convert.h"
#include "lib/msg.h"

namespace {
// Where the help texts of the options begin.
const int32_t kHelpColumn = 28;
}  // namespace

void TCliArgs::addSwitch(const char* name, char letter, int32_t* target, int32_t value,
                         const char* help) {
  add(Option{name, letter, kSwitch, target, value, nullptr, nullptr, help});
}

void TCliArgs::addText(const char* name, char letter, LStr* target, bool list,
                       const char* valueName, const char* help) {
  add(Option{name, letter, list ? kList : kText, target, 0, nullptr, valueName, help});
}

void TCliArgs::addNumber(const char* name, char letter, int32_t* target, int32_t min,
                         const char* valueName, const char* help) {
  add(Option{name, letter, kNumber, target, min, nullptr, valueName, help});
}

void TCliArgs::addCustom(const char* name, FApply apply, void* target, const char* valueName,
                         const char* help) {
  add(Option{name, 0, kCustom, target, 0, apply, valueName, help});
}

const TCliArgs::Option* TCliArgs::find(const char* word, const char** inlineValue) const {
  *inlineValue = nullptr;
  if (word[1] != '-') {
    // "-x": a letter alone, its value in the next word.
    if (word[1] == 0 || word[2] != 0) return nullptr;
    for (const Option* option : options_)
      if (option->letter != 0 && option->letter == word[1]) return option;
    return nullptr;
  }
  const char* name = word + 2;
  const char* equals = std::strchr(name, '=');
  size_t length = equals ? static_cast<size_t>(equals - name) : std::strlen(name);
  for (const Option* option : options_) {
    if (std::strlen(option->name) != length || std::strncmp(option->name, name, length) != 0)
      continue;
    if (equals) *inlineValue = equals + 1;
    return option;
  }
  return nullptr;
}

bool TCliArgs::apply(const Option& option, const char* value) const {
  switch (option.kind) {
    case kSwitch:
      *static_cast<int32_t*>(option.target) = option.value;
      return true;
    case kText:
      *static_cast<LStr*>(option.target) = value;
      return true;
    case kList: {
      LStr& list = *static_cast<LStr*>(option.target);
      if (!list.empty()) list.append(',');
      list.append(value);
      return true;
    }
    case kNumber: {
      int32_t errors = FReporter()->errorTotal();
      int32_t number = FParseInt(value);
      if (FReporter()->errorTotal() > errors) return false;
      if (number < option.value) {
        FMsg(kMsgSyntax, "--%s には %d 以上の数を指定してください : %s", option.name, option.value,
             value);
        return false;
      }
      *static_cast<int32_t*>(option.target) = number;
      return true;
    }
    case kCustom:
      return option.apply(value, option.target);
  }
  return false;
}

bool TCliArgs::parse(const LStrs& words, int32_t first, LStrs& plain) const {
  bool optionsEnd = false;
  for (int32_t i = first; i < words.count; i++) {
    const char* word = words[i]->ptr;
    if (optionsEnd || word[0] != '-' || word[1] == 0) {
      plain.add(new LStr(word));
      continue;
    }
    if (std::strcmp(word, "--") == 0) {
      optionsEnd = true;
      continue;
    }
    const char* value;
    const Option* option = find(word, &value);
    if (option == nullptr) {
      FMsg(kMsgSyntax, "オプションが正しくありません : %s", word);
      return false;
    }
    if (option->kind == kSwitch) {
      if (value != nullptr) {
        FMsg(kMsgSyntax, "オプションが正しくありません : %s", word);
        return false;
      }
    } else if (value == nullptr) {
      if (i + 1 >= words.count) {
        FMsg(kMsgSyntax, "オプション %s には値が必要です", word);
        return false;
      }
      value = words[++i]->ptr;
    }
    if (!apply(*option, value)) return false;
  }
  return true;
}

void TCliArgs::helpLines(LStr& out) const {
  for (const Option* option : options_) {
    LStr forms("  ");
    if (option->letter != 0) forms.format("-%c, ", option->letter);
    forms.format("--%s", option->name);
    if (option->kind != kSwitch) forms.format(" %s", option->valueName);
    // The forms are ASCII: no escape in them.
    if (FTextWidth(forms.ptr, kEscapeAsCharacter) >= kHelpColumn) {
      out.append(forms).append('\n');
      forms.clear();
    }
    FAppendPadded(out, forms.ptr, kHelpColumn, 'l', kEscapeAsCharacter);
    out.append(option->help).append('\n');
  }
}
