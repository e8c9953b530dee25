#include "lib/msg.h"

#include <gtest/gtest.h>

#include "lib/fail.h"
#include "lib/pos.h"
#include "lib/sys.h"
#include "support/recorder.h"

TEST(Msg, LevelsFollowTheNumber) {
  EXPECT_STREQ(FMsgLevel(0), "Message");
  EXPECT_STREQ(FMsgLevel(15000), "Error");
  EXPECT_STREQ(FMsgLevel(19999), "Error");
  EXPECT_STREQ(FMsgLevel(20000), "Warning");
  EXPECT_STREQ(FMsgLevel(39998), "Warning");
  EXPECT_STREQ(FMsgLevel(39999), "Note");
}

TEST(Msg, CountersAndQuiet) {
  RecorderScope rec;
  FMsg(15000, "bad %d", 1);
  FMsg(9999, "uncounted error");
  FMsg(20000, "plain warning");
  FMsg(35000, "counted");
  FMsg(39999, "note");
  EXPECT_EQ(rec->errorTotal(), 1);
  EXPECT_EQ(rec->issueTotal(), 3);
  EXPECT_STREQ(rec->entries[4]->level.ptr, "Note");
  rec->quiet = 1;
  EXPECT_EQ(FMsg(39999, "dropped"), 0);
  EXPECT_EQ(FMsg(35000, "dropped"), 0);
  EXPECT_EQ(rec->entries.count, 5);
  EXPECT_EQ(rec->issueTotal(), 3);
}

TEST(Msg, SuppressionRefusesClassNumbers) {
  RecorderScope rec;
  rec->suppress(17000);
  ASSERT_EQ(rec->entries.count, 1);
  EXPECT_STREQ(rec->entries[0]->text.ptr, "cannot supress message 17000");
  rec->suppress(17001);
  EXPECT_EQ(FMsg(17001, "hidden"), 0);
  EXPECT_EQ(rec->entries.count, 1);
  EXPECT_EQ(rec->errorTotal(), 1);  // only the refusal counted
  rec->suppressList("35001,35002");
  EXPECT_TRUE(rec->isSuppressed(35002));
  EXPECT_FALSE(rec->isSuppressed(0));
}

TEST(Msg, SystemTextIsAppended) {
  RecorderScope rec;
  ASSERT_EQ(SysOpenFile("no-such-folder/no-such-file", 'r'), kSysNoFile);
  FMsg(17000, "cannot open");
  ASSERT_EQ(rec->entries.count, 1);
  LStr text = rec->entries[0]->text;
  EXPECT_EQ(std::string(text.ptr).rfind("cannot open: ", 0), 0u) << text.ptr;
  EXPECT_GT(text.length, 14);
  EXPECT_EQ(std::string(text.ptr).find('\n'), std::string::npos);
}

TEST(Msg, PositionsPrefixReports) {
  RecorderScope rec;
  FPopPos(true);  // an empty stack is fine
  FPushNamePos("settings.ini", 12);
  FMsg(15001, "'%c' required instead of '%c'", '=', ':');
  FPopPos(true);
  FPushNamePos("bare", LNnPos::kNoLine);
  FSetSourceText("key=1");
  FMsg(20000, "x");
  FSetSourceText(nullptr);
  FPopPos(true);
  FMsg(20000, "y");
  ASSERT_EQ(rec->entries.count, 3);
  EXPECT_STREQ(rec->entries[0]->position.ptr, "settings.ini(12)");
  EXPECT_STREQ(rec->entries[1]->position.ptr, "bare: key=1");
  EXPECT_STREQ(rec->entries[2]->position.ptr, "");
  int32_t line = 5;
  FPushNamePosRef("live", &line);
  line = 9;
  LStr text;
  FPosText(text);
  EXPECT_STREQ(text.ptr, "live(9)");
  FPopPos(true);
}

#ifndef _WIN32
TEST(Msg, DefaultOutputFormat) {
  // The console reporter writes "Level N: text" and a newline for N > 0.
  testing::internal::CaptureStderr();
  FSetReporter(nullptr);
  FMsg(0, "plain");
  FMsg(15000, "numbered");
  FSetReporter(nullptr);
  std::string out = testing::internal::GetCapturedStderr();
  EXPECT_EQ(out, "Message 0: plainError 15000: numbered\n");
}
#endif

TEST(Fail, ErrorBoxShowsThenThrowsTwo) {
  RecorderScope rec;
  try {
    FError(3000, "broken %d", 7);
    FAIL() << "FError returned";
  } catch (int code) {
    EXPECT_EQ(code, kThrowError);
  }
  ASSERT_EQ(rec->boxes.count, 1);
  EXPECT_STREQ(rec->boxes[0]->ptr, "Kestrom エラー #3000|broken 7");
  try {
    FFormatError(309);
  } catch (int code) {
    EXPECT_EQ(code, kThrowError);
  }
  EXPECT_STREQ(rec->boxes[1]->ptr,
               "Kestrom エラー #3000|アーカイブ ファイルの形式が正しくありません (識別番号=309)");
  FWarn(0, "careful");
  FInfo(5, "done");
  EXPECT_STREQ(rec->boxes[2]->ptr, "Kestrom 警告|careful");
  EXPECT_STREQ(rec->boxes[3]->ptr, "Kestrom メッセージ #5|done");
}

TEST(FailDeathTest, InternalFailureEndsWithTwo) {
  EXPECT_EXIT(FInternal("object %s", "assign"), testing::ExitedWithCode(2),
              "Internal Error: object assign");
  EXPECT_EXIT(FInternalNum(51000), testing::ExitedWithCode(2), "Internal Error: 51000");
}

TEST(FailDeathTest, ExitOnErrorSparesNineteenNinetyNine) {
  EXPECT_EXIT(
      {
        FReporter()->exitOnError = 1;
        FMsg(19999, "counted, not fatal");
        FConsole("still here\n");
        FMsg(19998, "fatal");
        FConsole("not reached\n");
        std::exit(0);
      },
      testing::ExitedWithCode(2), "still here");
}
