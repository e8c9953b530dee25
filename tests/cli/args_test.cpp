// The words of a command line: the option forms, the conditions they fill,
// and the checks that turn bad input into a usage error.
#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

#include "cli/cli_args.h"
#include "cli/commands.h"
#include "cli/cond_options.h"
#include "cli/kst_main.h"
#include "lib/chartype.h"
#include "support/recorder.h"

namespace {

// A command name and its words.
void wordsOf(const char* command, std::initializer_list<const char*> list, LStrs& words) {
  words.add(new LStr(command));
  for (const char* word : list) words.add(new LStr(word));
}

bool contains(const LStr& text, const char* part) {
  return std::string(text.ptr).find(part) != std::string::npos;
}

// The messages are compared in the program's language.
class JapaneseScope {
 public:
  JapaneseScope() : saved_(FGetLang()) { FSetLang('J'); }
  ~JapaneseScope() { FSetLang(saved_); }

 private:
  int32_t saved_;
};

class ArgsTest : public testing::Test {
 protected:
  ArgsTest() {
    args.addSwitch("all", 'a', &all, 1, "");
    args.addText("dest", 'd', &dest, /*list=*/false, "DEST", "");
    args.addText("name", 0, &names, /*list=*/true, "P", "");
    args.addNumber("count", 'n', &count, 1, "N", "");
  }
  // Parses words behind a command name; the plain words go to `plain`.
  bool parse(std::initializer_list<const char*> list) {
    LStrs words;
    wordsOf("cmd", list, words);
    plain.clear();
    return args.parse(words, 1, plain);
  }
  LStr lastMessage() const {
    return recorder.recorder->entries.count ? recorder.recorder->entries.last()->text : LStr();
  }

  JapaneseScope japanese;
  RecorderScope recorder;
  TCliArgs args;
  int32_t all = 0;
  LStr dest;
  LStr names;
  int32_t count = 0;
  LStrs plain;
};

TEST_F(ArgsTest, OptionFormsAndPlainWords) {
  ASSERT_TRUE(parse({"x", "--dest", "a b", "y", "-a", "--count=7", "-n", "8"}));
  EXPECT_EQ(all, 1);
  EXPECT_STREQ(dest.ptr, "a b");
  EXPECT_EQ(count, 8);  // the last one counts
  ASSERT_EQ(plain.count, 2);
  EXPECT_STREQ(plain[0]->ptr, "x");
  EXPECT_STREQ(plain[1]->ptr, "y");

  // After "--" every word is plain; a lone "-" is plain anyway.
  ASSERT_TRUE(parse({"--", "--dest", "-a", "-"}));
  EXPECT_EQ(plain.count, 3);
}

TEST_F(ArgsTest, ListOptionsGatherAlternatives) {
  ASSERT_TRUE(parse({"--name", "*.txt", "--name=*.c,*.h", "--dest", "a", "--dest", "b"}));
  EXPECT_STREQ(names.ptr, "*.txt,*.c,*.h");
  EXPECT_STREQ(dest.ptr, "b");
}

TEST_F(ArgsTest, BadWordsAreUsageErrors) {
  struct Case {
    std::initializer_list<const char*> words;
    const char* message;
  } cases[] = {
      {{"--bogus"}, "オプションが正しくありません : --bogus"},
      {{"-q"}, "オプションが正しくありません : -q"},
      {{"-ad"}, "オプションが正しくありません : -ad"},
      {{"-d=x"}, "オプションが正しくありません : -d=x"},
      {{"--all=yes"}, "オプションが正しくありません : --all=yes"},
      {{"--dest"}, "オプション --dest には値が必要です"},
      {{"--count", "0"}, "--count には 1 以上の数を指定してください : 0"},
      {{"--count", "abc"}, "「abc」を数値として解釈できません"},
  };
  for (const Case& c : cases) {
    EXPECT_FALSE(parse(c.words)) << c.message;
    EXPECT_STREQ(lastMessage().ptr, c.message);
  }
  EXPECT_TRUE(recorder->has(kMsgSyntax));
}

TEST_F(ArgsTest, HelpLinesNameEveryForm) {
  LStr help;
  args.helpLines(help);
  EXPECT_TRUE(contains(help, "-a, --all")) << help.ptr;
  EXPECT_TRUE(contains(help, "-d, --dest DEST")) << help.ptr;
  EXPECT_TRUE(contains(help, "--name P")) << help.ptr;
}

class RequestTest : public testing::Test {
 protected:
  bool parse(const char* command, std::initializer_list<const char*> list) {
    LStrs words;
    wordsOf(command, list, words);
    return FParseRequest(*FFindCommand(command), words, request);
  }
  JapaneseScope japanese;
  RecorderScope recorder;
  TCliRequest request;
};

TEST_F(RequestTest, ConditionsFillTheDialogFields) {
  ASSERT_TRUE(parse("find", {"a.kst",
                             "/docs",
                             "--name",
                             "*.txt",
                             "--name",
                             "*.md",
                             "--not-size",
                             "10k-20k",
                             "--comment",
                             "rev",
                             "--comment-mode",
                             "partial",
                             "--path-mode",
                             "regex",
                             "--path",
                             "^src/",
                             "--case",
                             "--attr",
                             "r+h-",
                             "--versions",
                             "0",
                             "--oldest",
                             "--ver-from-newest",
                             "--ver",
                             "1-2",
                             "--user",
                             "host/me",
                             "--not-checkout",
                             "x",
                             "--store",
                             "3",
                             "--date",
                             "240101-241231"}))
      << recorder->entries.last()->text.ptr;
  const TCond& cond = request.cond;
  EXPECT_STREQ(cond.nameText.ptr, "*.txt,*.md");
  EXPECT_EQ(cond.nameExcl, 0);
  EXPECT_STREQ(cond.sizeText.ptr, "10k-20k");
  EXPECT_EQ(cond.sizeExcl, 1);
  EXPECT_EQ(cond.checkoutExcl, 1);
  EXPECT_EQ(cond.commentMode, kCondPartial);
  EXPECT_EQ(cond.pathMode, kCondRegex);
  EXPECT_EQ(cond.commentCase, 1);
  EXPECT_EQ(cond.pathCase, 1);
  EXPECT_EQ(cond.attrWant[0], kAttrOn);
  EXPECT_EQ(cond.attrWant[1], kAttrAny);
  EXPECT_EQ(cond.attrWant[2], kAttrOff);
  EXPECT_EQ(cond.attrWant[3], kAttrAny);
  EXPECT_EQ(cond.maxVersions, 0);
  EXPECT_EQ(cond.fromOldest, 1);
  EXPECT_EQ(cond.verFromNewest, 1);
  // Parse has built the lists the walker reads.
  ASSERT_NE(cond.names, nullptr);
  EXPECT_EQ(cond.names->count, 2);
  ASSERT_NE(cond.sizes, nullptr);
  // The range picker's units: the high member reaches to the end of its unit.
  EXPECT_EQ((*cond.sizes)[0]->key, 10 * 1024);
  EXPECT_EQ((*cond.sizes)[0]->value, 21 * 1024 - 1);
  ASSERT_NE(cond.pathRex, nullptr);
  ASSERT_NE(cond.vers, nullptr);
  ASSERT_NE(cond.dates, nullptr);
  EXPECT_EQ(cond.attrActive, 1);
  EXPECT_EQ(request.plain.count, 2);
}

TEST_F(RequestTest, DefaultsAreTheDialogsDefaults) {
  ASSERT_TRUE(parse("extract", {"a.kst"}));
  EXPECT_EQ(request.cond.maxVersions, 1);
  EXPECT_EQ(request.cond.names, nullptr);
  EXPECT_EQ(request.cond.attrActive, 0);
  EXPECT_EQ(request.cond.Level(), 0);
}

TEST_F(RequestTest, AddTakesItsOwnOptions) {
  ASSERT_TRUE(parse("add", {"a.kst", "src", "--to", "/in", "--comment", "note", "--existing-only",
                            "--name", "*.c"}));
  EXPECT_STREQ(request.to.ptr, "/in");
  EXPECT_STREQ(request.cond.addComment.ptr, "note");
  EXPECT_STREQ(request.cond.commentText.ptr, "");
  EXPECT_EQ(request.cond.existingOnly, 1);
  // Version conditions mean nothing to files on disk.
  EXPECT_FALSE(parse("add", {"a.kst", "src", "--versions", "2"}));
}

TEST_F(RequestTest, WordsAreCheckedBeforeAnythingRuns) {
  struct Case {
    const char* command;
    std::initializer_list<const char*> words;
    const char* message;
  } cases[] = {
      {"log", {"a.kst"}, "引数が足りません"},
      {"mv", {"a.kst", "/a", "b", "c"}, "引数が多すぎます : c"},
      {"cat", {"a.kst", "a.txt"}, "アーカイブ内のパスは「/」で始めてください : a.txt"},
      {"add", {"a.kst", "src", "--to", "in"}, "アーカイブ内のパスは「/」で始めてください : in"},
      {"find",
       {"a.kst", "--name", "a", "--not-name", "b"},
       "--name と --not-name は同時に指定できません"},
      {"find", {"a.kst", "--attr", "r"}, "属性の指定が正しくありません : r"},
      {"find", {"a.kst", "--attr", "x+"}, "属性の指定が正しくありません : x+"},
      {"find", {"a.kst", "--path-mode", "Exact"}, "判定方法が正しくありません : Exact"},
      {"find", {"a.kst", "--size", "1-x"}, ""},
  };
  for (const Case& c : cases) {
    TCliRequest fresh;
    LStrs words;
    wordsOf(c.command, c.words, words);
    int32_t errors = FReporter()->errorTotal();
    EXPECT_FALSE(FParseRequest(*FFindCommand(c.command), words, fresh)) << c.message;
    EXPECT_GT(FReporter()->errorTotal(), errors) << c.message;
    if (*c.message) {
      EXPECT_STREQ(recorder->entries.last()->text.ptr, c.message);
    }
  }
  // The new name of mv is a name, not a path.
  EXPECT_TRUE(parse("mv", {"a.kst", "/a", "b"}));
}

TEST_F(RequestTest, HelpNeedsNoOtherWord) {
  ASSERT_TRUE(parse("log", {"--help"}));
  EXPECT_EQ(request.help, 1);
  LStr help = FHelpText(FFindCommand("find"));
  EXPECT_EQ(std::string(help.ptr).find("使い方: kst find"), 0u);
  EXPECT_TRUE(contains(help, "--not-checkout"));
  EXPECT_FALSE(contains(FHelpText(FFindCommand("add")), "--versions"));
}

TEST(AttrWantsTest, LettersInAnyOrder) {
  RecorderScope recorder;
  int32_t wants[4] = {kAttrAny, kAttrAny, kAttrAny, kAttrAny};
  ASSERT_TRUE(FParseAttrWants("s+a-", wants));
  EXPECT_EQ(wants[0], kAttrAny);
  EXPECT_EQ(wants[1], kAttrOff);
  EXPECT_EQ(wants[2], kAttrAny);
  EXPECT_EQ(wants[3], kAttrOn);
  EXPECT_FALSE(FParseAttrWants("", wants));
  EXPECT_FALSE(FParseAttrWants("r+h", wants));
  EXPECT_FALSE(FParseAttrWants("R+", wants));
}

}  // namespace
