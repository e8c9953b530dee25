#include <gtest/gtest.h>

#include "cond_fixture.h"
#include "store/cond_walk.h"
#include "store/search_cmd.h"

namespace {
typedef std::vector<TVer*> Vers;

// root: A/{x.txt (3 versions), B/{y.c (2)}}, z.txt (1)
class WalkTest : public CondTest {
 protected:
  WalkTest() {
    a = archive->root->addFolder("A");
    x = makeFile(a, "x.txt", 3);
    y = makeFile(a->addFolder("B"), "y.c", 2);
    z = makeFile(archive->root, "z.txt", 1);
  }
  Vers walk(std::initializer_list<TRec*> selection) {
    LArrOf<TRec*> records;
    for (TRec* record : selection) records.add(record);
    FoundVersions found;
    FWalkItems(records, cond, FoundVersions::add, &found);
    return found.list;
  }
  void parse() { ASSERT_FALSE(cond.Parse()); }

  TCond cond;
  TFolder* a;
  TFile *x, *y, *z;
};
}  // namespace

TEST_F(WalkTest, LimitDirectionAndSelectedVersions) {
  EXPECT_EQ(walk({a}), (Vers{x->version(2), y->version(1)}));  // the newest below A
  EXPECT_EQ(FWorkSet()->done, 2);
  // A selected version is tested alone, outside the limit.
  EXPECT_EQ(walk({x->version(0), x->version(1)}), (Vers{x->version(0), x->version(1)}));
  cond.maxVersions = 0;
  EXPECT_EQ(walk({x}), (Vers{x->version(2), x->version(1), x->version(0)}));
  cond.maxVersions = 1;
  cond.fromOldest = 1;
  EXPECT_EQ(walk({a}), (Vers{x->version(0), y->version(0)}));
  // The limit counts hits: the newest fails and the two older ones are taken.
  cond.fromOldest = 0;
  cond.maxVersions = 2;
  cond.sizeText = "10-20";
  parse();
  EXPECT_EQ(walk({x}), (Vers{x->version(1), x->version(0)}));
}

TEST_F(WalkTest, FileAndVersionConditions) {
  cond.maxVersions = 0;
  cond.nameText = "*.c";
  parse();
  EXPECT_EQ(walk({archive->root, x->version(0)}), (Vers{y->version(1), y->version(0)}));
  cond.nameText = "";
  cond.pathText = "A/B/y.c";
  parse();
  EXPECT_EQ(walk({archive->root}), (Vers{y->version(1), y->version(0)}));
  cond.pathText = "";
  cond.verText = "2";
  parse();
  EXPECT_EQ(walk({a}), (Vers{x->version(1), y->version(1)}));
  cond.verFromNewest = 1;
  EXPECT_EQ(walk({a}), (Vers{x->version(1), y->version(0)}));
  cond.verText = "";
  cond.storeNoText = "8";
  cond.attrWant[0] = kAttrOn;
  parse();
  infoOf(x->version(2))->storeNo = 8;
  infoOf(x->version(1))->attrs = kAttrReadOnly;
  infoOf(x->version(0))->storeNo = 8;
  infoOf(x->version(0))->attrs = kAttrReadOnly;
  EXPECT_EQ(walk({x}), (Vers{x->version(0)}));
}

TEST_F(WalkTest, SearchCountsAndReports) {
  LArrOf<TRec*> records;
  records.add(archive->root);
  FoundVersions found;
  cond.maxVersions = 0;
  EXPECT_EQ(FCmdSearch(records, cond, FoundVersions::add, &found), 6);
  EXPECT_EQ(found.list.size(), 6u);
  EXPECT_STREQ(FSearchReport(0).ptr, "見つかりませんでした");
  EXPECT_STREQ(FSearchReport(6).ptr, "6 個のバージョンが見つかりました");
}
