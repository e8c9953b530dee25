#include "ui/main_logic.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <vector>

#include "app/app.h"
#include "app/config.h"
#include "app/worker.h"
#include "app/worker_ui.h"
#include "lib/file_util.h"
#include "lib/path_parts.h"
#include "lib/sys.h"
#include "lib/thread.h"
#include "store/work_set.h"
#include "support/archive_fixture.h"
#include "support/scripted_worker_ui.h"
#include "tests/ui/main_logic_fixture.h"
#include "ui/command_table.h"

namespace {

TEST_F(MainLogicTest, ClosingAnEmptyUntitledArchiveAsksNothing) {
  EXPECT_TRUE(logic.fcClose(true));
  EXPECT_TRUE(view.questions.empty());
  EXPECT_TRUE(archive->isUntitled());
  EXPECT_EQ(kExistsFile, FExists(untitled().c_str()));
}

TEST_F(MainLogicTest, CancelKeepsAnUntitledArchiveWithContent) {
  fillUntitled();
  view.answers = {kAnswerCancel};
  EXPECT_FALSE(logic.fcClose(true));
  ASSERT_EQ(1u, view.questions.size());
  EXPECT_EQ("アーカイブを保存しますか？", view.questions[0]);
  EXPECT_EQ(1, archive->root->childCount());
}

TEST_F(MainLogicTest, NoThrowsTheUntitledContentAway) {
  fillUntitled();
  view.answers = {kAnswerNo};
  EXPECT_TRUE(logic.fcClose(true));
  EXPECT_TRUE(archive->isUntitled());
  EXPECT_EQ(0, archive->root->childCount());
  EXPECT_EQ("Kestrom - 無題", view.title);
}

TEST_F(MainLogicTest, YesSavesUnderTheNameOfTheFirstItemThenCloses) {
  fillUntitled();
  archive->firstAddPath = dir.file("gone\\報告書.txt");
  app.arcDlgDir = dir.path();
  view.answers = {kAnswerYes};
  view.saveAs = {dir.file("保存").ptr};
  EXPECT_TRUE(logic.fcClose(/*makeFresh=*/false));
  EXPECT_EQ("報告書.kst", std::string(view.lastChoice.name.ptr));
  // The folder of the first added path is gone: the dialog's own folder.
  EXPECT_EQ(std::string(dir.path()), view.lastChoice.folder.ptr);
  EXPECT_EQ(kExistsFile, FExists(dir.file("保存.kst").ptr));
  EXPECT_EQ(kExistsNone, FExists(untitled().c_str()));
  ASSERT_EQ(1, app.mru.count);
  EXPECT_EQ(2, app.arcDlgFilterIdx);
}

TEST_F(MainLogicTest, CancelledSaveKeepsTheArchiveOpen) {
  fillUntitled();
  view.answers = {kAnswerYes};
  view.saveAs = {""};
  EXPECT_FALSE(logic.fcClose(true));
  EXPECT_TRUE(archive->isUntitled());
  EXPECT_EQ(1, archive->root->childCount());
}

TEST_F(MainLogicTest, SaveAsOntoItselfIsRefused) {
  fillUntitled();
  view.saveAs = {dir.file("x.kst").ptr};
  ASSERT_TRUE(logic.fcSaveAs());
  EXPECT_EQ("Kestrom - " + std::string(FFullPath(dir.file("x.kst").ptr).ptr), view.title);
  EXPECT_EQ("x.kst", view.rootLabel);
  view.saveAs = {dir.file("X").ptr};  // ".kst" is added, and the case does not matter
  EXPECT_FALSE(logic.fcSaveAs());
  EXPECT_EQ(std::string(dir.path()), view.lastChoice.folder.ptr);
  EXPECT_EQ("x.kst", std::string(view.lastChoice.name.ptr));
  EXPECT_TRUE(recorder->has(kMsgWarning));
}

TEST_F(MainLogicTest, OverwritingAnotherFileAsksFirst) {
  fillUntitled();
  TestWriteFile(dir.file("old.kst").ptr, "old");
  view.saveAs = {dir.file("old.kst").ptr};
  view.answers = {kAnswerNo};
  EXPECT_FALSE(logic.fcSaveAs());
  ASSERT_EQ(1u, view.questions.size());
  EXPECT_NE(std::string::npos, view.questions[0].find("を上書きしますか？"));
  EXPECT_EQ("old", TestReadFile(dir.file("old.kst").ptr));
  EXPECT_TRUE(archive->isUntitled());
}

TEST(SaveAsPath, ExtensionRules) {
  EXPECT_STREQ("C:\\a\\name.kst", FSaveAsPath("C:\\a\\name").ptr);
  EXPECT_STREQ("C:\\a\\name", FSaveAsPath("C:\\a\\name.").ptr);
  EXPECT_STREQ("C:\\a\\name.txt", FSaveAsPath("C:\\a\\name.txt").ptr);
  EXPECT_STREQ("C:\\a\\.hidden", FSaveAsPath("C:\\a\\.hidden").ptr);
  EXPECT_STREQ("C:\\a.b\\name.kst", FSaveAsPath("C:\\a.b\\name").ptr);
  EXPECT_STREQ("資料\\表.kst", FSaveAsPath("資料\\表").ptr);
}

TEST_F(MainLogicTest, RecentEntryThatIsGoneIsDroppedOnNo) {
  app.addRecent(dir.file("gone.kst").ptr);
  view.answers = {kAnswerNo};
  logic.openRecent(0);
  EXPECT_EQ(0, app.mru.count);
  ASSERT_EQ(1u, view.questions.size());
  EXPECT_NE(std::string::npos, view.questions[0].find("は存在しません。新しく作成しますか？"));
  EXPECT_TRUE(archive->isUntitled());
}

TEST_F(MainLogicTest, RecentEntryOpensInAnEmptyUntitledWindow) {
  LStr path = dir.file("b.kst");
  FCreateArchive(path.ptr);
  app.addRecent(dir.file("other.kst").ptr);
  app.addRecent(path.ptr);
  logic.openRecent(0);
  EXPECT_FALSE(archive->isUntitled());
  EXPECT_STREQ(FFullPath(path.ptr).ptr, archive->fullPath.ptr);
  EXPECT_TRUE(view.started.empty());
  EXPECT_EQ(2, app.mru.count);
}

TEST_F(MainLogicTest, OpenDialogStartsInTheLastFolderElseNearTheArchiveOrTheUser) {
  // Untitled: the documents folder, and without one the program's folder.
  view.toOpen = {""};
  logic.fcOpen();
  EXPECT_STREQ("docs", view.lastChoice.folder.ptr);
  view.hasDocuments = false;
  view.toOpen = {""};
  logic.fcOpen();
  EXPECT_STREQ("program", view.lastChoice.folder.ptr);
  // A named archive: its own folder.
  LStr path = dir.file("b.kst");
  FCreateArchive(path.ptr);
  view.toOpen = {path.ptr};
  logic.fcOpen();
  ASSERT_FALSE(archive->isUntitled());
  app.arcDlgDir.clear();
  view.toOpen = {""};
  logic.fcOpen();
  EXPECT_STREQ(FDirOf(FFullPath(path.ptr).ptr, /*keepSep=*/false).ptr, view.lastChoice.folder.ptr);
  // The folder chosen last wins over all of them.
  app.arcDlgDir = "chosen";
  view.toOpen = {""};
  logic.fcOpen();
  EXPECT_STREQ("chosen", view.lastChoice.folder.ptr);
}

TEST_F(MainLogicTest, FurtherArchivesStartNewCopiesAndForwardedOnesStayAway) {
  LStr a = dir.file("a.kst"), b = dir.file("b.kst"), c = dir.file("c.kst");
  for (const LStr* p : {&a, &b, &c}) FCreateArchive(p->ptr);
  config.otherInstance = 1;
  view.othersHave = {FFullPath(b.ptr).ptr};
  LStrs paths;
  for (const LStr* p : {&a, &b, &c}) paths.add(new LStr(*p));
  logic.openArchives(paths, false);
  EXPECT_STREQ(FFullPath(a.ptr).ptr, archive->fullPath.ptr);
  ASSERT_EQ(1u, view.forwardedTo.size());
  ASSERT_EQ(1u, view.started.size());
  EXPECT_EQ(std::string(c.ptr), view.started[0]);
  // A window with a named archive never replaces it.
  logic.openArchives(paths, false);
  EXPECT_STREQ(FFullPath(a.ptr).ptr, archive->fullPath.ptr);
  EXPECT_EQ(3u, view.started.size());
}

TEST_F(MainLogicTest, DropOfArchivesOpensAndAnythingElseAdds) {
  LStr a = dir.file("a.kst"), upper = dir.file("u.KST"), text = dir.file("t.txt");
  FCreateArchive(a.ptr);
  FCreateArchive(upper.ptr);
  TestWriteFile(text.ptr, "text");
  LStrs mixed;
  mixed.add(new LStr(a));
  mixed.add(new LStr(text));
  logic.fcDropFiles(mixed, true);
  EXPECT_TRUE(archive->isUntitled());
  EXPECT_EQ(std::vector<int32_t>{kCmdAdd}, view.commands);
  // An extension in capitals is no archive: it is added as data.
  LStrs caps;
  caps.add(new LStr(upper));
  logic.fcDropFiles(caps, true);
  EXPECT_EQ(2u, view.commands.size());
  LStrs archives;
  archives.add(new LStr(a));
  logic.fcDropFiles(archives, true);
  EXPECT_FALSE(archive->isUntitled());
}

TEST_F(MainLogicTest, AddToAFileTakesOneFileOnly) {
  fillUntitled();
  view.selected.add(archive->root->children[0]);
  LStrs two;
  two.add(new LStr(dir.file("x")));
  two.add(new LStr(dir.file("y")));
  logic.fcAdd(two, true);
  EXPECT_TRUE(view.commands.empty());
  EXPECT_TRUE(recorder->has(kMsgWarning));
  LStrs folder;
  folder.add(new LStr(dir.path()));
  logic.fcAdd(folder, true);
  EXPECT_TRUE(view.commands.empty());
  LStr other = dir.file("別名.txt");
  TestWriteFile(other.ptr, "x");
  LStrs one;
  one.add(new LStr(other));
  view.answers = {kAnswerNo, kAnswerYes};
  logic.fcAdd(one, true);
  EXPECT_TRUE(view.commands.empty());
  logic.fcAdd(one, true);
  EXPECT_EQ(std::vector<int32_t>{kCmdAdd}, view.commands);
  EXPECT_NE(std::string::npos, view.questions[0].find("として追加します。よろしいですか？"));
}

TEST_F(MainLogicTest, SearchWithNothingSelectedShowsNoDialog) {
  fillUntitled();
  view.searchOk = true;
  logic.fcSearch();
  EXPECT_TRUE(view.searchTitles.empty());
  EXPECT_TRUE(view.commands.empty());
}

TEST_F(MainLogicTest, CancelledSearchLeavesTheListAndStartsNothing) {
  fillUntitled();
  view.selected.add(archive->root->children[0]);
  logic.fcSearch();
  EXPECT_EQ(std::vector<std::string>{"検索 - /報告書.txt"}, view.searchTitles);
  EXPECT_EQ(0, view.searchRowsCleared);
  EXPECT_TRUE(view.commands.empty());
}

TEST_F(MainLogicTest, SearchStartsOnTheSelectionFromTheTreesRecord) {
  fillUntitled();
  addFile(archive->root, "b.txt", 2, 10);
  commit();
  view.selected.add(archive->root->children[0]);
  view.selected.add(archive->root->children[1]);
  view.tree = archive->root;
  view.searchOk = true;
  logic.fcSearch();
  EXPECT_EQ(std::vector<std::string>{"検索 - 2 個のファイル/フォルダ"}, view.searchTitles);
  EXPECT_EQ(1, view.searchRowsCleared);
  EXPECT_EQ(std::vector<int32_t>{kCmdSearch}, view.commands);
  EXPECT_EQ(2, view.lastRecords);
  // The kept search conditions, not a fresh set.
  EXPECT_EQ(&config.searchCond(), view.lastCond);
  EXPECT_EQ(archive->root, config.searchBase);
}

TEST_F(MainLogicTest, SearchTitleOfAFolderEndsInItsSeparator) {
  TRecList one;
  one.add(archive->root);
  EXPECT_STREQ("検索 - /", FSearchTitle(one).ptr);
  EXPECT_STREQ("検索", FSearchTitle(TRecList()).ptr);
}

TEST(ForwardAnswer, FoldsAsciiLettersAndKeepsDoubleByteUnits) {
  EXPECT_EQ(0, FAnswerForward("", "C:\\a.kst"));
  EXPECT_EQ(1, FAnswerForward("C:\\Work\\a.kst", "c:\\WORK\\A.KST"));
  EXPECT_EQ(0, FAnswerForward("C:\\Work\\a.kst", "C:\\Work\\b.kst"));
  // The trail byte of "ソ" is the byte of "\".
  EXPECT_EQ(1, FAnswerForward("C:\\ソフト\\表.kst", "c:\\ソフト\\表.KST"));
  // The trail byte 0x61 ("a") of a double-byte character is not a letter.
  const char upperTrail[] = {'\x81', 'A', 0};
  const char lowerTrail[] = {'\x81', 'a', 0};
  EXPECT_EQ(0, FAnswerForward(upperTrail, lowerTrail));
  // Full-width letters are not ASCII: no folding.
  EXPECT_EQ(0, FAnswerForward("Ａ.kst", "ａ.kst"));
}

TEST(CommandReport, EachCommandsReport) {
  TWorkSet work;
  work.done = 3;
  work.seen = 3;
  EXPECT_STREQ("3 個のファイルを追加しました", FCommandReport(kCmdAdd, work, 0).ptr);
  work.seen = 7;
  work.created = 0;
  work.skipped = 2;
  EXPECT_STREQ("3/7 個のファイルを追加しました (更新: 3, 条件で除外: 2, 不変のためスキップ: 2)",
               FCommandReport(kCmdAdd, work, 0).ptr);
  EXPECT_STREQ("3 個のファイルを展開しました", FCommandReport(kCmdExtract, work, 0).ptr);
  // What was left out is told, not counted as done.
  work.refused = 1;
  EXPECT_STREQ(
      "3/7 個のファイルを追加しました (更新: 3, 条件で除外: 2, 不変のためスキップ: 2) "
      "追加しなかった項目: 1",
      FCommandReport(kCmdAdd, work, 0).ptr);
  EXPECT_STREQ("2 個のファイルを展開しました (展開しなかったファイル: 1)",
               FCommandReport(kCmdExtract, work, 0).ptr);
  EXPECT_STREQ("", FCommandReport(kCmdDelete, work, 0).ptr);
  EXPECT_STREQ("5 個のバージョンが見つかりました", FCommandReport(kCmdSearch, work, 5).ptr);
  EXPECT_STREQ("見つかりませんでした", FCommandReport(kCmdSearch, work, 0).ptr);
}

}  // namespace

namespace {

// A command that runs until it is stopped or released.
class EndlessCommand : public TThread {
 public:
  explicit EndlessCommand(std::atomic<bool>& release) : TThread(kCmdAdd), release_(release) {}

 protected:
  void runCommand() override {
    while (!release_) {
      FCheckStop();
      SysSleep(5);
    }
  }

 private:
  std::atomic<bool>& release_;
};

class CloseWhileRunningTest : public MainLogicTest {
 protected:
  CloseWhileRunningTest() {
    FSetMainThread(new LMainThread);
    FSetWorkerUi(&ui);
    fillUntitled();
    FStartCommand(new EndlessCommand(release));
  }
  ~CloseWhileRunningTest() override {
    release = true;
    if (FThread() != nullptr) {
      ui.completed.wait(10000);
      FCompleteCommand();
    }
    FSetWorkerUi(nullptr);
    delete FMainThread();
    FSetMainThread(nullptr);
  }

  ScriptedWorkerUi ui;
  std::atomic<bool> release{false};
};

}  // namespace

TEST_F(CloseWhileRunningTest, NoKeepsTheWindowAndTheCommandRunning) {
  ui.answer = false;
  EXPECT_FALSE(logic.closeWindow());
  EXPECT_EQ(ui.asked, 1);
  EXPECT_TRUE(view.posted.empty());
  EXPECT_TRUE(view.questions.empty());  // not the save question
  ASSERT_NE(FThread(), nullptr);
  EXPECT_NE(FThread()->threadHandle, -1);
}

TEST_F(CloseWhileRunningTest, YesStopsTheCommandAndTriesTheCloseAgainAfterIt) {
  ui.answer = true;
  EXPECT_FALSE(logic.closeWindow());
  ASSERT_EQ(view.posted, std::vector<int32_t>{kCmdExit});
  ASSERT_NE(FThread(), nullptr);
  EXPECT_EQ(FThread()->threadHandle, -1);  // the worker has gone
  ASSERT_EQ(ui.completed.wait(10000), 0);
  FCompleteCommand();
  // The posted exit comes back as a close with nothing running: now the
  // untitled archive's save question.
  view.answers = {kAnswerCancel};
  EXPECT_FALSE(logic.closeWindow());
  EXPECT_EQ(view.questions, std::vector<std::string>{"アーカイブを保存しますか？"});
}

TEST_F(CloseWhileRunningTest, SearchShowsItsDialogButDoesNotStartWhileBusy) {
  view.selected.add(archive->root);
  view.searchOk = true;
  logic.fcSearch();
  EXPECT_EQ(1u, view.searchTitles.size());
  EXPECT_TRUE(recorder->has(kMsgWarning));
  EXPECT_EQ(0, view.searchRowsCleared);
  EXPECT_TRUE(view.commands.empty());
}
