#include <gtest/gtest.h>

#include "archive/string_table.h"
#include "cond_fixture.h"
#include "store/cond_match.h"

TEST_F(CondTest, ParseBuildsAndReplacesTheLists) {
  TCond cond;
  cond.nameText = "*.txt;*.c, read me ";
  cond.storeNoText = "1-3,5";
  cond.commentText = "a+,b";
  cond.pathText = "   ";
  cond.commentMode = kCondRegex;
  EXPECT_FALSE(cond.Parse());
  ASSERT_EQ(cond.names->count, 3);
  EXPECT_STREQ((*cond.names)[2]->ptr, "read me");
  ASSERT_EQ(cond.storeNos->count, 2);
  EXPECT_EQ((*cond.storeNos)[0]->value, 3);
  EXPECT_EQ((*cond.storeNos)[1]->key, 5);
  EXPECT_EQ(cond.commentRex->count, 2);
  EXPECT_EQ(cond.paths, nullptr);  // blanks set no condition
  EXPECT_EQ(cond.attrActive, 0);

  cond.nameText = "";
  cond.commentMode = kCondPartial;
  cond.attrWant[2] = kAttrOff;
  EXPECT_FALSE(cond.Parse());
  EXPECT_EQ(cond.names, nullptr);
  EXPECT_EQ(cond.commentRex, nullptr);
  EXPECT_EQ(cond.attrActive, 1);
}

TEST_F(CondTest, ParseRefusesBadValues) {
  struct Bad {
    LStr TCond::*field;
    const char* text;
  };
  for (const Bad& bad : {Bad{&TCond::sizeText, "ten"}, Bad{&TCond::storeNoText, "1-2-3"},
                         Bad{&TCond::dateText, "13/45"}, Bad{&TCond::pathText, "a)"}}) {
    TCond cond;
    cond.pathMode = kCondRegex;
    cond.*bad.field = bad.text;
    EXPECT_TRUE(cond.Parse()) << bad.text;
  }
  EXPECT_TRUE(recorder->has(kMsgGeneral));
}

TEST(CondLevel, ExpandedFieldsGiveTwo) {
  TCond cond;
  cond.sizeText = "  ";
  EXPECT_EQ(cond.Level(), 0);
  cond.existingOnly = 1;
  EXPECT_EQ(cond.Level(), 1);
  cond.attrWant[3] = kAttrOn;
  EXPECT_EQ(cond.Level(), 2);
  for (auto field : {&TCond::nameText, &TCond::dateText, &TCond::storeNoText, &TCond::commentText,
                     &TCond::sizeText, &TCond::pathText, &TCond::verText, &TCond::userText,
                     &TCond::checkoutText}) {
    TCond one;
    one.*field = "1";
    bool expanded = field != &TCond::nameText && field != &TCond::dateText &&
                    field != &TCond::storeNoText && field != &TCond::commentText;
    EXPECT_EQ(one.Level(), expanded ? 2 : 1);
  }
}

TEST_F(CondTest, NameSizeDateAndAttributeTests) {
  TCond cond;
  cond.nameExcl = cond.sizeExcl = cond.dateExcl = 1;
  // Unset conditions hold, whatever their exclude flags say.
  EXPECT_TRUE(FNameTest("a.txt", cond) && FSizeTest(5, cond) && FDateTest(5, cond));
  EXPECT_TRUE(FAttrTest(15, cond));

  cond.nameText = "*.txt,read*";
  cond.sizeText = "10-20,-5";
  cond.Parse();
  cond.dates = new LDtPairs;
  cond.dates->add(new LDtPair{100, 200});
  for (int32_t excl : {0, 1}) {
    cond.nameExcl = cond.sizeExcl = cond.dateExcl = excl;
    bool in = excl == 0;
    EXPECT_EQ(FNameTest("a.TXT", cond), in);
    EXPECT_EQ(FNameTest("a.txt.bak", cond), !in);
    EXPECT_EQ(FNameTest("Makefile", cond), !in);  // "*" as an extension is not "txt"
    EXPECT_EQ(FNameTest("README", cond), in);     // "read*" fits every extension
    EXPECT_EQ(FNameTest("readme.md", cond), in);
    EXPECT_EQ(FSizeTest(20, cond) && FSizeTest(5, cond), in);  // "-5" runs from 0
    EXPECT_EQ(FSizeTest(6, cond) || FSizeTest(21, cond), !in);
    EXPECT_EQ(FDateTest(100, cond) && FDateTest(200, cond), in);
    EXPECT_EQ(FDateTest(201, cond), !in);
  }
  cond.attrWant[0] = kAttrOn;
  cond.attrWant[3] = kAttrOff;
  EXPECT_TRUE(FAttrTest(kAttrReadOnly | kAttrHidden, cond));
  EXPECT_FALSE(FAttrTest(kAttrHidden, cond));
  EXPECT_FALSE(FAttrTest(kAttrReadOnly | kAttrSystem, cond));
}

TEST_F(CondTest, CommentAndPathModes) {
  TVer* ver = makeFile(archive->root, "f", 1)->version(0);
  infoOf(ver)->commentId = FStrings().lookupOrAdd("Docs/Bug 12 表示");
  struct Case {
    int32_t mode;
    int32_t keepCase;
    const char* text;
    bool fits;
  };
  const Case cases[] = {
      {kCondExact, 0, "docs/bug 12 表示", true},
      {kCondExact, 1, "docs/bug 12 表示", false},
      {kCondExact, 0, "Bug", false},
      {kCondPartial, 0, "bug 1", true},
      {kCondPartial, 1, "bug 1", false},
      {kCondPartial, 1, "x,Bug", true},
      {kCondPartial, 0, "\\", false},  // the second byte of 表 is no character
      {kCondRegex, 0, "Bug [0-9]+", true},
      {kCondRegex, 0, "^docs", false},
  };
  for (const Case& c : cases) {
    for (int32_t excl : {0, 1}) {
      TCond cond;
      cond.commentMode = cond.pathMode = c.mode;
      cond.commentCase = cond.pathCase = c.keepCase;
      cond.commentExcl = cond.pathExcl = excl;
      cond.commentText = cond.pathText = c.text;
      ASSERT_FALSE(cond.Parse()) << c.text;
      bool expected = c.fits != (excl != 0);
      bool comment = c.mode == kCondRegex ? FCommentRexTest(ver, cond) : FCommentTest(ver, cond);
      EXPECT_EQ(comment, expected) << c.mode << " " << c.keepCase << " " << c.text;
      EXPECT_EQ(FPathCondTest("Docs/Bug 12 表示", cond), expected) << c.text;
    }
  }
}

TEST_F(CondTest, VersionInfoTests) {
  TFile* file = makeFile(archive->root, "f", 3);
  TVer* oldest = file->version(0);
  TVer* newest = file->version(2);
  infoOf(oldest)->storeNo = 4;
  infoOf(oldest)->userId = FStrings().lookupOrAdd("Alice");
  infoOf(oldest)->checkoutId = FStrings().lookupOrAdd("bob");
  TCond cond;
  cond.storeNoText = "3-4";
  cond.verText = "1";
  cond.userText = "alice,Alice";
  cond.checkoutText = "Bob";
  cond.Parse();
  EXPECT_TRUE(FStoreNoTest(oldest, cond) && FVerNoTest(oldest, cond) && FUserTest(oldest, cond));
  EXPECT_FALSE(FVerNoTest(newest, cond));
  EXPECT_FALSE(FCheckoutTest(oldest, cond));  // byte for byte
  cond.verFromNewest = 1;
  EXPECT_TRUE(FVerNoTest(newest, cond));
  cond.storeNoExcl = cond.verExcl = cond.userExcl = cond.checkoutExcl = 1;
  EXPECT_FALSE(FStoreNoTest(oldest, cond) || FVerNoTest(newest, cond) || FUserTest(oldest, cond));
  EXPECT_TRUE(FCheckoutTest(oldest, cond));

  infoOf(oldest)->commentId = FStrings().count() + 1;
  cond.commentText = "x";
  cond.Parse();
  EXPECT_THROW(FCommentTest(oldest, cond), int);
  ASSERT_EQ(recorder->boxes.count, 1);
  EXPECT_NE(recorder->boxes[0]->find("Internal Error #1578", 20, 0), -1);
}
