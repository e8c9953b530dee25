#include "ui/name_index.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(NameIndex, FindsNamesWhateverTheCaseOfAsciiLetters) {
  TNameIndex index;
  index.add("readme.TXT", 1);
  index.add("報告書.txt", 2);
  index.add("b", 3);
  index.add("a", 4);
  EXPECT_EQ(1, index.find("README.txt"));
  EXPECT_EQ(2, index.find("報告書.TXT"));
  EXPECT_EQ(4, index.find("A"));
  EXPECT_EQ(3, index.find("b"));
  EXPECT_EQ(0, index.find("c"));
  EXPECT_EQ(0, index.find("readme"));
  EXPECT_EQ(0, index.find(""));
}

TEST(NameIndex, TheFirstOfEqualNamesWins) {
  TNameIndex index;
  for (int i = 0; i < 100; i++) index.add(("n" + std::to_string(i % 10)).c_str(), 1 + i);
  index.add("N3", 500);
  for (int i = 0; i < 10; i++) EXPECT_EQ(1 + i, index.find(("N" + std::to_string(i)).c_str()));
}

TEST(NameIndex, EmptyFindsNothing) {
  TNameIndex index;
  EXPECT_EQ(0, index.find("a"));
}

}  // namespace
