#include "ui/cond_form.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/app.h"
#include "store/cond.h"
#include "support/recorder.h"
#include "ui/cond_expand.h"

namespace {

std::vector<std::string> entries(const LStrs& history) {
  std::vector<std::string> out;
  for (const LStr* entry : history) out.push_back(entry->ptr);
  return out;
}

class CondFormTest : public testing::Test {
 protected:
  // Distinct texts and flags in every field, so that a field bound to the
  // wrong member shows.
  void fillForm() {
    const char* texts[kFieldCount] = {
        "*.c ; *.h", "26/01/01-26/12/31", "1-3", "x , y", "1k-2k", "src", "2-", "me", "you"};
    for (int32_t field = 0; field < kFieldCount; field++) {
      form.texts[field] = texts[field];
      form.excl[field] = field % 2;
    }
    form.attrWant[0] = kAttrOn;
    form.attrWant[3] = kAttrOff;
    form.existingOnly = 1;
    form.maxVersions = 0;
    form.fromOldest = 1;
    form.commentMode = kCondPartial;
    form.pathMode = kCondRegex;
    form.commentCase = 1;
    form.pathCase = 0;
  }

  RecorderScope recorder;
  TApp app;
  TCond cond;
  TCondForm form;
};

TEST_F(CondFormTest, LoadShowsEveryFieldOfTheConditions) {
  cond.nameText = "a";
  cond.checkoutText = "b";
  cond.sizeExcl = 1;
  cond.attrWant[2] = kAttrOn;
  cond.maxVersions = 7;
  cond.pathMode = kCondPartial;
  cond.pathCase = 1;
  form.load(cond);
  EXPECT_STREQ("a", form.texts[kFieldName].ptr);
  EXPECT_STREQ("b", form.texts[kFieldCheckout].ptr);
  EXPECT_STREQ("", form.texts[kFieldDate].ptr);
  EXPECT_EQ(1, form.excl[kFieldSize]);
  EXPECT_EQ(0, form.excl[kFieldName]);
  EXPECT_EQ(kAttrOn, form.attrWant[2]);
  EXPECT_EQ(kAttrAny, form.attrWant[0]);
  EXPECT_EQ(7, form.maxVersions);
  EXPECT_EQ(kCondPartial, form.pathMode);
  EXPECT_EQ(1, form.pathCase);
}

TEST_F(CondFormTest, OkStoresNormalisedTextsAndSwitchesAndParses) {
  fillForm();
  ASSERT_TRUE(form.save(cond, app));
  EXPECT_STREQ("*.c;*.h", cond.nameText.ptr);
  EXPECT_STREQ("26/01/01-26/12/31", cond.dateText.ptr);
  EXPECT_STREQ("1-3", cond.storeNoText.ptr);
  EXPECT_STREQ("x,y", cond.commentText.ptr);
  EXPECT_STREQ("1k-2k", cond.sizeText.ptr);
  EXPECT_STREQ("src", cond.pathText.ptr);
  EXPECT_STREQ("2-", cond.verText.ptr);
  EXPECT_STREQ("me", cond.userText.ptr);
  EXPECT_STREQ("you", cond.checkoutText.ptr);
  EXPECT_EQ((std::vector<int32_t>{0, 1, 0, 1, 0, 1, 0, 1, 0}),
            (std::vector<int32_t>{cond.nameExcl, cond.dateExcl, cond.storeNoExcl, cond.commentExcl,
                                  cond.sizeExcl, cond.pathExcl, cond.verExcl, cond.userExcl,
                                  cond.checkoutExcl}));
  EXPECT_EQ(kAttrOn, cond.attrWant[0]);
  EXPECT_EQ(kAttrOff, cond.attrWant[3]);
  EXPECT_EQ(1, cond.existingOnly);
  EXPECT_EQ(0, cond.maxVersions);
  EXPECT_EQ(1, cond.fromOldest);
  EXPECT_EQ(kCondPartial, cond.commentMode);
  EXPECT_EQ(kCondRegex, cond.pathMode);
  EXPECT_EQ(1, cond.commentCase);
  // Parsed: the lists are there, the path as a compiled expression.
  ASSERT_NE(nullptr, cond.names);
  EXPECT_EQ(2, cond.names->count);
  ASSERT_NE(nullptr, cond.comments);
  EXPECT_EQ(2, cond.comments->count);
  EXPECT_NE(nullptr, cond.pathRex);
  EXPECT_EQ(1, cond.attrActive);
  EXPECT_EQ(0, recorder->errorTotal());
}

TEST_F(CondFormTest, OkRemembersEachTextInItsOwnHistory) {
  fillForm();
  ASSERT_TRUE(form.save(cond, app));
  EXPECT_EQ((std::vector<std::string>{"", "*.c;*.h"}), entries(app.lmFNames));
  EXPECT_EQ((std::vector<std::string>{"", "26/01/01-26/12/31"}), entries(app.lmDts));
  EXPECT_EQ((std::vector<std::string>{"", "x,y"}), entries(app.lmCmts));
  EXPECT_EQ((std::vector<std::string>{"", "src"}), entries(app.lmPaths));
  EXPECT_EQ((std::vector<std::string>{"", "you"}), entries(app.lmCous));
  // The form shows what was kept, as the boxes will next time.
  EXPECT_STREQ("*.c;*.h", form.texts[kFieldName].ptr);
}

TEST_F(CondFormTest, HistoriesKeepTheLimitOfTheSettings) {
  app.memItemNum = 3;
  for (const char* name : {"a", "b", "c", "b ; c"}) {
    form.texts[kFieldName] = name;
    ASSERT_TRUE(form.save(cond, app));
  }
  EXPECT_EQ((std::vector<std::string>{"b", "c", "b;c"}), entries(app.lmFNames));
  // An equal entry moves to the end; the list does not grow.
  form.texts[kFieldName] = "c";
  ASSERT_TRUE(form.save(cond, app));
  EXPECT_EQ((std::vector<std::string>{"b", "b;c", "c"}), entries(app.lmFNames));
}

TEST_F(CondFormTest, ATextThatDoesNotParseKeepsConditionsAndHistories) {
  cond.nameText = "old";
  cond.Parse();
  form.load(cond);
  form.texts[kFieldName] = "new";
  form.texts[kFieldStoreNo] = "abc";
  EXPECT_FALSE(form.save(cond, app));
  EXPECT_GT(recorder->errorTotal(), 0);
  EXPECT_STREQ("old", cond.nameText.ptr);
  EXPECT_STREQ("", cond.storeNoText.ptr);
  ASSERT_NE(nullptr, cond.names);
  EXPECT_STREQ("old", (*cond.names)[0]->ptr);
  EXPECT_EQ(0, app.lmFNames.count);
  EXPECT_EQ(0, app.lmStnos.count);
  // The user corrects the text: now it goes through.
  form.texts[kFieldStoreNo] = "4";
  EXPECT_TRUE(form.save(cond, app));
  EXPECT_STREQ("new", cond.nameText.ptr);
}

TEST(CondExpand, ButtonTextAndHeightFollowTheFlag) {
  int32_t expanded = 0;
  EXPECT_STREQ(">>", FExpandButtonText(expanded));
  EXPECT_EQ(300, FToggleExpanded(expanded, 300));
  EXPECT_EQ(1, expanded);
  EXPECT_STREQ("<<", FExpandButtonText(expanded));
  EXPECT_EQ(-300, FToggleExpanded(expanded, 300));
  EXPECT_EQ(0, expanded);
  EXPECT_STREQ(">>", FExpandButtonText(expanded));
  // A flag from the settings that is neither 0 nor 1 counts as expanded.
  expanded = 5;
  EXPECT_STREQ("<<", FExpandButtonText(expanded));
  EXPECT_EQ(-300, FToggleExpanded(expanded, 300));
  EXPECT_EQ(0, expanded);
}

}  // namespace
