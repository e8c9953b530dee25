#include "app/work_dir.h"

#include <gtest/gtest.h>

#include <string>

#include "app/app.h"
#include "lib/file_util.h"
#include "lib/io_file.h"
#include "lib/strfunc.h"
#include "lib/sys.h"
#include "support/recorder.h"
#include "support/temp_dir.h"

namespace {
LStr withSep(const char* path) {
  LStr out(path);
  out.append(SysPathSeparator());
  return out;
}
}  // namespace

TEST(WorkDir, CopiesSideBySideTakeTheNextNumberAndTheLastRemovesAll) {
  TestTempDir dir;
  TApp first;
  first.tmpDirBase = withSep(dir.path());
  FMakeWorkDir(first);
  TApp second;
  second.tmpDirBase = dir.path();  // without a separator: one is added
  FMakeWorkDir(second);
  EXPECT_STREQ(first.tmpSubdir.ptr, LStr("kst_tmp").append(SysPathSeparator()).ptr);
  EXPECT_TRUE(FEndsWith(first.workDir.ptr, LStr("app-0").append(SysPathSeparator()).ptr));
  EXPECT_TRUE(FEndsWith(second.workDir.ptr, LStr("app-1").append(SysPathSeparator()).ptr));
  EXPECT_STREQ(second.tempBase.ptr, first.tempBase.ptr);
  EXPECT_EQ(FExists(first.workDir.ptr), kExistsFolder);
  EXPECT_TRUE(FEndsWith(first.updatePath.ptr, "kst-#update.tmp"));
  EXPECT_NE(LStr(first.userTag).find("/", 1, 0), -1);
  EXPECT_EQ(FExists(LStr(first.tempBase).append("kst-#lock.tmp").ptr), kExistsNone);

  FRemoveWorkDir(second);
  EXPECT_EQ(FExists(second.workDir.ptr), kExistsNone);
  EXPECT_EQ(FExists(first.workDir.ptr), kExistsFolder);
  // A crashed copy leaves its folder: the next one takes a new number.
  TApp third;
  third.tmpDirBase = first.tmpDirBase;
  FMakeWorkDir(third);
  EXPECT_TRUE(FEndsWith(third.workDir.ptr, LStr("app-1").append(SysPathSeparator()).ptr));
  FRemoveSharedDir(first);
  EXPECT_EQ(FExists(LStr(first.tempBase).append("kst_tmp").ptr), kExistsNone);
}

TEST(WorkDir, SubfolderOfSeveralLevels) {
  TestTempDir dir;
  TApp app;
  app.tmpDirBase = dir.path();
  app.tmpSubdir = LStr("one").append(SysPathSeparator()).append("two");
  FMakeWorkDir(app);
  EXPECT_EQ(FExists(app.workDir.ptr), kExistsFolder);
  EXPECT_NE(LStr(app.workDir).find("two", 3, 0), -1);
}

TEST(WorkDir, LockHeldElsewhereGivesTheNoteAfterThirtyTries) {
  TestTempDir dir;
  TApp app;
  app.tempBase = withSep(dir.path());
  LIoFile holder(LStr(app.tempBase).append("kst-#lock.tmp").ptr, 'w', true);
  ASSERT_TRUE(holder.isOpen());
  RecorderScope rec;
  SysTime start = SysNow();
  FLock(app);
  double waited = static_cast<double>(SysNow() - start) / 1e7;
  EXPECT_GE(waited, 2.8);
  EXPECT_LT(waited, 10.0);
  ASSERT_EQ(rec->boxes.count, 1);
  EXPECT_NE(std::string(rec->boxes[0]->ptr).find("#3000|ファイル「"), std::string::npos);
  FUnlock(app);
}
