#include "app/worker.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <string>

#include "app/app_msg.h"
#include "app/worker_ui.h"
#include "archive/update_file.h"
#include "lib/fail.h"
#include "store/progress.h"
#include "store/work_set.h"
#include "support/archive_fixture.h"
#include "support/scripted_worker_ui.h"

namespace {

// A command whose body the test gives.
class TestCommand : public TThread {
 public:
  template <typename Body>
  explicit TestCommand(Body body) : TThread(kCmdAdd), body_(body) {}
  ~TestCommand() override { alive = false; }
  static std::atomic<bool> alive;

 protected:
  void runCommand() override { body_(); }

 private:
  std::function<void()> body_;
};
std::atomic<bool> TestCommand::alive{false};

class WorkerTest : public ArchiveTest {
 protected:
  WorkerTest() {
    FSetMainThread(new LMainThread);
    FNewWorkSet();
    FSetWorkerUi(&ui);
    archive->loadArchive(dir.file("w.kst").ptr, false, false);
    addFile(archive->root, "kept", 2, 100);
    commit();
    before = TestReadFile(archive->path.ptr);
  }
  ~WorkerTest() override {
    FSetWorkerUi(nullptr);
    FDeleteWorkSet();
    delete FMainThread();
    FSetMainThread(nullptr);
  }

  // Starts a command and waits for its completion event.
  void runToCompletion(TestCommand* command) {
    TestCommand::alive = true;
    FStartCommand(command);
    ASSERT_EQ(ui.completed.wait(10000), 0);
  }

  ScriptedWorkerUi ui;
  std::string before;
};

}  // namespace

TEST_F(WorkerTest, FailedCommandEndsWithTwoAndAReload) {
  runToCompletion(new TestCommand([this] {
    addFile(archive->root, "half", 3, 100);
    FError(3000, "disk full");
  }));
  EXPECT_EQ(FThread()->error, 2);
  EXPECT_EQ(FBusy(0), 1);  // until the completion is handled
  FCompleteCommand();
  EXPECT_EQ(FBusy(0), 0);
  EXPECT_FALSE(TestCommand::alive);
  EXPECT_EQ(archive->root->childCount(), 1);  // reloaded: the half add is gone
  EXPECT_TRUE(TestReadFile(archive->path.ptr) == before);
  EXPECT_EQ(ui.finished, 0);
}

TEST_F(WorkerTest, SuccessfulCommandRunsItsCompletion) {
  runToCompletion(new TestCommand([] { FWorkSet()->done = 3; }));
  EXPECT_STREQ(ui.status2.ptr, "追加中");
  FCompleteCommand();
  EXPECT_EQ(ui.finished, 1);
  EXPECT_STREQ(ui.status2.ptr, "");
  EXPECT_EQ(FWorkSet()->done, 0);  // a fresh work set
}

TEST_F(WorkerTest, StopAnsweredNoResumesQuickly) {
  std::atomic<int> checks{0};
  std::atomic<bool> release{false};
  ui.answer = false;
  TestCommand::alive = true;
  FStartCommand(new TestCommand([&] {
    while (!release) {
      FCheckStop();
      checks++;
      SysSleep(5);
    }
  }));
  SysSleep(50);
  EXPECT_EQ(FRequestStop(), 0);
  EXPECT_EQ(ui.asked, 1);
  int afterAnswer = checks;
  SysTime asked = SysNow();
  while (checks == afterAnswer && SysNow() - asked < 20000000) SysSleep(5);
  EXPECT_LT(SysNow() - asked, static_cast<SysTime>(3000000));  // under 300 ms
  release = true;
  ASSERT_EQ(ui.completed.wait(10000), 0);
  EXPECT_EQ(FThread()->error, 0);
  FCompleteCommand();
}

TEST_F(WorkerTest, StopAnsweredYesThrowsOneAndLeavesTheArchive) {
  ui.answer = true;
  TestCommand::alive = true;
  FStartCommand(new TestCommand([this] {
    addFile(archive->root, "never", 5, 1000);
    for (;;) {
      FCheckStop();
      SysSleep(5);
    }
  }));
  SysSleep(100);
  EXPECT_EQ(FRequestStop(), 1);
  EXPECT_EQ(FThread()->error, 1);
  EXPECT_EQ(FThread()->stopRequested, 1);
  ASSERT_EQ(ui.completed.wait(10000), 0);
  FCompleteCommand();
  EXPECT_STREQ(ui.status.ptr, "中止しました");
  EXPECT_TRUE(TestReadFile(archive->path.ptr) == before);
  EXPECT_EQ(archive->root->childCount(), 1);
}

TEST_F(WorkerTest, BusyAndItsModes) {
  EXPECT_EQ(FBusy(1), 0);
  EXPECT_EQ(FRequestStop(), 1);
  std::atomic<bool> release{false};
  TestCommand::alive = true;
  FStartCommand(new TestCommand([&] {
    while (!release) SysSleep(2);
  }));
  EXPECT_EQ(FBusy(1), 1);
  EXPECT_TRUE(recorder->has(20000));
  EXPECT_THROW(FBusy(7), int);
  release = true;
  ASSERT_EQ(ui.completed.wait(10000), 0);
  FCompleteCommand();
  EXPECT_EQ(FBusy(1), 0);
}

TEST(Worker, UnknownCommandIsAnInternalError) {
  RecorderScope rec;
  FNewWorkSet();
  EXPECT_THROW(TThread(1234), int);
  EXPECT_NE(std::string(rec->boxes.last()->ptr).find("Internal Error #1780"), std::string::npos);
  FDeleteWorkSet();
}

TEST(Worker, ErrorBoxMarksTheCommandFailed) {
  FNewWorkSet();
  TMsg* msg = new TMsg;
  FSetReporter(msg);
  testing::internal::CaptureStderr();
  EXPECT_THROW(FError(3000, "x"), int);
  testing::internal::GetCapturedStderr();
  EXPECT_EQ(FWorkSet()->failed, 1);
  FSetReporter(nullptr);
  FDeleteWorkSet();
}

TEST(AddReport, EveryMixOfParts) {
  EXPECT_STREQ(FAddReport(0, 0, 0, 0).ptr, "0 個のファイルを追加しました");
  EXPECT_STREQ(FAddReport(5, 5, 2, 0).ptr, "5 個のファイルを追加しました");
  EXPECT_STREQ(
      FAddReport(3, 10, 1, 4).ptr,
      "3/10 個のファイルを追加しました (新規: 1, 更新: 2, 条件で除外: 3, 不変のためスキップ: 4)");
  EXPECT_STREQ(FAddReport(2, 5, 0, 3).ptr,
               "2/5 個のファイルを追加しました (更新: 2, 不変のためスキップ: 3)");
  EXPECT_STREQ(FAddReport(2, 4, 2, 0).ptr,
               "2/4 個のファイルを追加しました (新規: 2, 条件で除外: 2)");
  EXPECT_STREQ(FAddReport(0, 3, 0, 3).ptr,
               "0/3 個のファイルを追加しました (不変のためスキップ: 3)");
  EXPECT_STREQ(FAddReport(0, 2, 0, 0).ptr, "0/2 個のファイルを追加しました (条件で除外: 2)");
}

TEST(Progress, StretchedFramesAndTheOverflowGuard) {
  FPushProgress();
  FSetProgressRange(100, 200);
  EXPECT_EQ(FProgressPercent(0), 0);
  EXPECT_EQ(FProgressPercent(100), 50);
  EXPECT_EQ(FProgressPercent(200), 100);
  FSetProgressRange(40, 5);  // the bar is stretched over the frame, not fitted
  EXPECT_EQ(FProgressPercent(1), 50);
  EXPECT_EQ(FProgressPercent(2), 100);
  FSetProgressRange(-1, 2000000000);  // -1 means 100
  EXPECT_EQ(FProgressPercent(10737418), 0);
  EXPECT_EQ(FProgressPercent(20000000), 1);
  EXPECT_EQ(FProgressPercent(1000000000), 50);
  FPushProgress();
  FSetProgressRange(75, 100);
  EXPECT_EQ(FProgressPercent(75), 100);
  FPopProgress();
  FPopProgress();
  EXPECT_EQ(FProgressPercent(5), 0);
}
