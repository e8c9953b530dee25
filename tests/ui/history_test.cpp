#include "ui/history.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::vector<std::string> entries(const LStrs& history) {
  std::vector<std::string> out;
  for (const LStr* entry : history) out.push_back(entry->ptr);
  return out;
}

TEST(FieldHistory, BlanksAroundSeparatorsGoButNotInsideEntries) {
  EXPECT_EQ(std::string("*.c;*.h,a b"), FNormalisedField("*.c  ; *.h ,  a b").ptr);
  EXPECT_EQ(std::string(" x"), FNormalisedField(" x").ptr);
}

TEST(FieldHistory, FirstEntryBringsAnEmptyChoiceAndTheNormalisedText) {
  LStrs history;
  LStr kept = FRememberField(history, "a ; b", 20);
  EXPECT_EQ(std::string("a;b"), kept.ptr);
  EXPECT_EQ((std::vector<std::string>{"", "a;b"}), entries(history));
}

TEST(FieldHistory, AnEqualEntryMovesToTheEndAndTheListDoesNotGrow) {
  LStrs history;
  FRememberField(history, "a", 20);
  FRememberField(history, "b", 20);
  FRememberField(history, "a", 20);
  EXPECT_EQ((std::vector<std::string>{"", "b", "a"}), entries(history));
  FRememberField(history, "", 20);
  EXPECT_EQ((std::vector<std::string>{"b", "a", ""}), entries(history));
}

TEST(FieldHistory, TheEntryBeyondTheLimitPushesOutTheOldest) {
  LStrs history;
  for (int i = 1; i <= 20; i++) FRememberField(history, std::to_string(i).c_str(), 20);
  // The empty choice was the oldest entry: the twentieth text pushed it out.
  ASSERT_EQ(20, history.count);
  EXPECT_EQ(std::string("1"), history[0]->ptr);
  FRememberField(history, "21", 20);
  EXPECT_EQ(20, history.count);
  EXPECT_EQ(std::string("2"), history[0]->ptr);
  EXPECT_EQ(std::string("21"), history[19]->ptr);
}

TEST(FolderHistory, FinalSeparatorGoesAndEmptyIsNotStored) {
  LStrs history;
  FRememberFolder(history, "", 20);
  EXPECT_EQ(0, history.count);
  FRememberFolder(history, "/tmp/out/", 20);
  FRememberFolder(history, "/srv", 20);
  FRememberFolder(history, "/tmp/out", 20);
  EXPECT_EQ((std::vector<std::string>{"/srv", "/tmp/out"}), entries(history));
  FRememberFolder(history, "/a", 2);
  EXPECT_EQ((std::vector<std::string>{"/tmp/out", "/a"}), entries(history));
}

}  // namespace
