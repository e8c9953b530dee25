#include "ui/column_choice.h"

#include <gtest/gtest.h>

#include <vector>

#include "lib/lstr.h"

namespace {

std::vector<int32_t> ids(const LInts& list) {
  return std::vector<int32_t>(list.begin(), list.end());
}

std::vector<int32_t> idsOf(const TColumns& set) {
  std::vector<int32_t> out;
  for (const TColumn* column : set) out.push_back(column->id);
  return out;
}

// A set with the ids and widths given as pairs.
void fill(TColumns& set, std::initializer_list<int32_t> pairs) {
  std::vector<int32_t> flat(pairs);
  FSetColumns(set, flat.data(), static_cast<int32_t>(flat.size() / 2));
}

TEST(ColumnChoiceLists, ShownInSetOrderHiddenInIdOrder) {
  TColumns set;
  fill(set, {9, 100, 1, 164, 4, 69});
  TColumnChoice choice(set);
  EXPECT_EQ((std::vector<int32_t>{9, 1, 4}), ids(choice.shown()));
  EXPECT_EQ((std::vector<int32_t>{2, 3, 5, 6, 7, 8, 10, 11, 12, 13, 14, 15, 16, 17}),
            ids(choice.hidden()));
}

TEST(ColumnChoiceLists, UnknownAndRepeatedIdsOfTheSettingsAreDropped) {
  TColumns set;
  fill(set, {0, 50, 3, 46, 18, 50, 3, 80, -1, 10});
  TColumnChoice choice(set);
  EXPECT_EQ((std::vector<int32_t>{3}), ids(choice.shown()));
  EXPECT_EQ(16, choice.hidden().count);
}

TEST(ColumnChoiceLists, NamesAreTheHeadings) {
  LInts list;
  list.add(kColName);
  list.add(kColCheckout);
  LStrs names;
  names.add(new LStr("stale"));
  FColumnNames(list, names);
  ASSERT_EQ(2, names.count);
  EXPECT_STREQ("名前", names[0]->ptr);
  EXPECT_STREQ("チェックアウト", names[1]->ptr);
}

class ColumnMoves : public ::testing::Test {
 protected:
  ColumnMoves() { fill(set, {1, 164, 3, 46, 4, 69}); }
  TColumns set;
};

TEST_F(ColumnMoves, HideKeepsTheIndexOrTakesTheLast) {
  TColumnChoice choice(set);
  EXPECT_EQ(1, choice.hide(1));
  EXPECT_EQ((std::vector<int32_t>{1, 4}), ids(choice.shown()));
  // The hidden entry goes to its id's place.
  EXPECT_EQ(3, choice.hidden()[1]);
  EXPECT_EQ(0, choice.hide(1));
  EXPECT_EQ((std::vector<int32_t>{1}), ids(choice.shown()));
}

TEST_F(ColumnMoves, TheLastShownColumnStays) {
  fill(set, {5, 125});
  TColumnChoice choice(set);
  EXPECT_EQ(0, choice.hide(0));
  EXPECT_EQ((std::vector<int32_t>{5}), ids(choice.shown()));
  EXPECT_EQ(16, choice.hidden().count);
}

TEST_F(ColumnMoves, ShowAppendsAndKeepsTheHiddenSelection) {
  TColumnChoice choice(set);
  // Hidden: 2 5 6 ... 17; the last one leaves, the selection moves up.
  int32_t last = choice.hidden().count - 1;
  EXPECT_EQ(last - 1, choice.show(last));
  EXPECT_EQ((std::vector<int32_t>{1, 3, 4, 17}), ids(choice.shown()));
  EXPECT_EQ(0, choice.show(0));
  EXPECT_EQ((std::vector<int32_t>{1, 3, 4, 17, 2}), ids(choice.shown()));
  EXPECT_EQ(5, choice.hidden()[0]);
}

TEST_F(ColumnMoves, ShowingEveryColumnEmptiesTheHiddenList) {
  TColumnChoice choice(set);
  int32_t selected = 0;
  while (choice.hidden().count > 0) selected = choice.show(selected);
  EXPECT_EQ(-1, selected);
  EXPECT_EQ(17, choice.shown().count);
}

TEST_F(ColumnMoves, UpAndDownSwapWithTheNeighbour) {
  TColumnChoice choice(set);
  EXPECT_EQ(0, choice.moveUp(1));
  EXPECT_EQ((std::vector<int32_t>{3, 1, 4}), ids(choice.shown()));
  EXPECT_EQ(2, choice.moveDown(1));
  EXPECT_EQ((std::vector<int32_t>{3, 4, 1}), ids(choice.shown()));
  // At the ends nothing moves.
  EXPECT_EQ(0, choice.moveUp(0));
  EXPECT_EQ(2, choice.moveDown(2));
  EXPECT_EQ((std::vector<int32_t>{3, 4, 1}), ids(choice.shown()));
}

TEST_F(ColumnMoves, NoSelectionChangesNothing) {
  TColumnChoice choice(set);
  EXPECT_EQ(-1, choice.hide(-1));
  EXPECT_EQ(-1, choice.show(-1));
  EXPECT_EQ(-1, choice.moveUp(-1));
  EXPECT_EQ(-1, choice.moveDown(-1));
  EXPECT_EQ(3, choice.hide(3));
  EXPECT_EQ(14, choice.show(14));
  EXPECT_EQ((std::vector<int32_t>{1, 3, 4}), ids(choice.shown()));
  EXPECT_EQ(14, choice.hidden().count);
}

TEST_F(ColumnMoves, ApplyKeepsStayingColumnsAndWidensNewOnes) {
  set[1]->width = 333;
  set[1]->state = 7;
  TColumn* kept = set[1];
  TColumnChoice choice(set);
  choice.hide(0);                          // 3 4
  choice.show(choice.hidden().count - 1);  // 3 4 17
  choice.moveUp(2);                        // 3 17 4
  choice.applyTo(set);
  EXPECT_EQ((std::vector<int32_t>{3, 17, 4}), idsOf(set));
  EXPECT_EQ(kept, set[0]);
  EXPECT_EQ(333, set[0]->width);
  EXPECT_EQ(7, set[0]->state);
  EXPECT_EQ(164, set[1]->width);
  EXPECT_EQ(69, set[2]->width);
}

TEST_F(ColumnMoves, AColumnHiddenAndShownAgainKeepsItsWidth) {
  set[1]->width = 333;
  TColumnChoice choice(set);
  choice.hide(1);
  // The hidden list starts 2 3 ...; the column 3 comes back.
  choice.show(1);
  choice.applyTo(set);
  EXPECT_EQ((std::vector<int32_t>{1, 4, 3}), idsOf(set));
  // The set still had the record: the column stayed in it.
  EXPECT_EQ(333, set[2]->width);
}

TEST(ColumnChoiceApply, AnEmptyChoiceLeavesTheSet) {
  TColumns set;
  fill(set, {99, 40});
  TColumnChoice choice(set);
  choice.applyTo(set);
  ASSERT_EQ(1, set.count);
  EXPECT_EQ(99, set[0]->id);
}

}  // namespace
