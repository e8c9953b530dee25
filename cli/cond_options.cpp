#include "cli/cond_options.h"

#include <cstring>
#include <initializer_list>

#include "cli/cli_args.h"
#include "lib/lstr.h"
#include "lib/msg.h"
#include "store/cond.h"

namespace {

struct TextCond {
  const char* name;
  const char* notName;
  LStr TCond::*text;
  int32_t TCond::*exclude;
  const char* valueName;
  const char* help;
};

enum : int32_t { kName, kDate, kStore, kComment, kSize, kPath, kVer, kUser, kCheckout };

// In the order of the dialog's fields.
const TextCond kTexts[kTextConds] = {
    {"name", "not-name", &TCond::nameText, &TCond::nameExcl, "PATTERNS",
     "ファイル名 (ワイルドカード * と ?)"},
    {"date", "not-date", &TCond::dateText, &TCond::dateExcl, "RANGES",
     "更新日時 ([[yy]mmdd][.hhmm[ss]], 範囲は a-b)"},
    {"store", "not-store", &TCond::storeNoText, &TCond::storeNoExcl, "RANGES", "格納番号 (1,3-5)"},
    {"comment", "not-comment", &TCond::commentText, &TCond::commentExcl, "TEXTS", "コメント"},
    {"size", "not-size", &TCond::sizeText, &TCond::sizeExcl, "RANGES",
     "サイズ (バイト数, 単位 k m g, 範囲は a-b)"},
    {"path", "not-path", &TCond::pathText, &TCond::pathExcl, "TEXTS", "パス"},
    {"ver", "not-ver", &TCond::verText, &TCond::verExcl, "RANGES", "バージョン番号 (1 が最も古い)"},
    {"user", "not-user", &TCond::userText, &TCond::userExcl, "NAMES", "ユーザー名"},
    {"checkout", "not-checkout", &TCond::checkoutText, &TCond::checkoutExcl, "NAMES",
     "チェックアウトしたユーザー名"},
};

struct ModeWord {
  const char* word;
  int32_t mode;
};
const ModeWord kModes[] = {{"exact", kCondExact}, {"partial", kCondPartial}, {"regex", kCondRegex}};

bool applyAttr(const char* value, void* target) {
  return FParseAttrWants(value, static_cast<TCond*>(target)->attrWant);
}

bool applyCommentMode(const char* value, void* target) {
  return FParseMatchMode(value, &static_cast<TCond*>(target)->commentMode);
}

bool applyPathMode(const char* value, void* target) {
  return FParseMatchMode(value, &static_cast<TCond*>(target)->pathMode);
}

}  // namespace

TCliCondOptions::TCliCondOptions(TCond& cond) : cond_(cond) {
  for (int32_t i = 0; i < kTextConds; i++) {
    bindings_[i][0] = Binding{this, i, false};
    bindings_[i][1] = Binding{this, i, true};
  }
}

void TCliCondOptions::declareText(TCliArgs& args, int32_t index) {
  const TextCond& text = kTexts[index];
  args.addCustom(text.name, applyText, &bindings_[index][0], text.valueName, text.help);
  args.addCustom(text.notName, applyText, &bindings_[index][1], text.valueName,
                 "(この条件に合うものを除く)");
}

bool TCliCondOptions::applyText(const char* value, void* target) {
  const Binding& binding = *static_cast<const Binding*>(target);
  TCliCondOptions& self = *binding.owner;
  const TextCond& text = kTexts[binding.index];
  int32_t form = binding.negated ? 2 : 1;
  int32_t& used = self.used_[binding.index];
  // One exclude box serves the whole field, so the two forms cannot mix.
  if (used != 0 && used != form) {
    FMsg(kMsgSyntax, "--%s と --%s は同時に指定できません", text.name, text.notName);
    return false;
  }
  used = form;
  LStr& field = self.cond_.*text.text;
  if (!field.empty()) field.append(',');
  field.append(value);
  self.cond_.*text.exclude = binding.negated ? 1 : 0;
  return true;
}

void TCliCondOptions::declareAdd(TCliArgs& args) {
  for (int32_t index : {kName, kDate, kSize, kPath}) declareText(args, index);
  args.addCustom("path-mode", applyPathMode, &cond_, "MODE",
                 "パスの判定方法: exact (完全一致), partial (部分一致), regex (正規表現)");
  args.addSwitch("case", 0, &caseSwitch_, 1, "パスの大文字と小文字を区別する");
  args.addCustom("attr", applyAttr, &cond_, "ATTRS",
                 "属性: r a h s (読み取り専用, アーカイブ, 隠し, システム) に + か - (例 r+h-)");
  args.addSwitch("existing-only", 0, &cond_.existingOnly, 1, "既存ファイルのみ追加する");
}

void TCliCondOptions::declareVersions(TCliArgs& args) {
  for (int32_t index = 0; index < kTextConds; index++) declareText(args, index);
  args.addCustom("comment-mode", applyCommentMode, &cond_, "MODE",
                 "コメントの判定方法: exact, partial, regex");
  args.addCustom("path-mode", applyPathMode, &cond_, "MODE",
                 "パスの判定方法: exact, partial, regex");
  args.addSwitch("case", 0, &caseSwitch_, 1, "コメントとパスの大文字と小文字を区別する");
  args.addCustom("attr", applyAttr, &cond_, "ATTRS",
                 "属性: r a h s (読み取り専用, アーカイブ, 隠し, システム) に + か - (例 r+h-)");
  args.addNumber("versions", 0, &cond_.maxVersions, 0, "N",
                 "ファイルごとの検出バージョン数 (0 はすべて, 既定は 1)");
  args.addSwitch("oldest", 0, &cond_.fromOldest, 1, "古いバージョンから検出する");
  args.addSwitch("ver-from-newest", 0, &cond_.verFromNewest, 1,
                 "バージョン番号を新しい方から数える");
}

bool TCliCondOptions::finish() {
  // One switch serves the comment and the path texts alike.
  if (caseSwitch_ != 0) cond_.commentCase = cond_.pathCase = 1;
  return !cond_.Parse();
}

bool FParseAttrWants(const char* text, int32_t* wants) {
  const char letters[] = "rahs";
  const char* p = text;
  do {
    const char* letter = *p != 0 ? std::strchr(letters, *p) : nullptr;
    if (letter == nullptr || (p[1] != '+' && p[1] != '-')) {
      FMsg(kMsgSyntax, "属性の指定が正しくありません : %s", text);
      return false;
    }
    wants[letter - letters] = p[1] == '+' ? kAttrOn : kAttrOff;
    p += 2;
  } while (*p != 0);
  return true;
}

bool FParseMatchMode(const char* text, int32_t* mode) {
  for (const ModeWord& word : kModes) {
    if (std::strcmp(text, word.word) == 0) {
      *mode = word.mode;
      return true;
    }
  }
  FMsg(kMsgSyntax, "判定方法が正しくありません : %s", text);
  return false;
}
