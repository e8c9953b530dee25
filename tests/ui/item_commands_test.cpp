#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

#include "lib/file_time.h"
#include "lib/file_util.h"
#include "lib/sys.h"
#include "store/add_command.h"
#include "store/cond.h"
#include "support/file_bytes.h"
#include "tests/ui/main_logic_fixture.h"
#include "ui/command_table.h"

namespace {

class ItemCommandsTest : public MainLogicTest {
 protected:
  ItemCommandsTest() {
    app.workDir = host.join("work");
    app.workDir.append('/');
    FMakeDirs(host.join("work/x").ptr);
  }
  std::string work(const char* name) const { return std::string(app.workDir.ptr) + name; }
  // A file added to the root once for each content, oldest first.
  TFile* addVersions(const char* name, std::initializer_list<std::string> contents) {
    LStr path = host.join("src");
    path.append('/');
    path.append(name);
    FMakeDirs(path.ptr);
    int64_t time = 1600000000;
    for (const std::string& content : contents) {
      TestWriteFile(path.ptr, content);
      SysTime t = FUnixToFileTime(time += 3600);
      SysSetFileTimes(path.ptr, 0, t, t);
      LStrs paths;
      paths.add(new LStr(path));
      TCond defaults;
      defaults.Parse();
      FCmdAdd(archive->root, paths, &defaults, TAddOptions());
      FNewWorkSet();
    }
    return static_cast<TFile*>(archive->root->findChild(name));
  }
};

TEST_F(ItemCommandsTest, CopiesAreNamedByVersionAndOpenedWithTheirBytes) {
  TFile* report = addVersions("報告書.txt", {"第一版", "第二版です", "第三版です。"});
  TFile* readme = addVersions("README", {"read me"});
  // A copy of another run holds the plain name of the oldest version.
  TestWriteFile(work("報告書-V1.txt").c_str(), "another run");
  view.selected.add(report->version(2));
  view.selected.add(readme);
  view.selected.add(report->version(0));
  logic.fcOpenWithApp();
  ASSERT_EQ(view.opened, (std::vector<std::string>{work("報告書-V3.txt"), work("README-V1"),
                                                   work("報告書-V1-1.txt")}));
  EXPECT_EQ(TestReadFile(view.opened[0].c_str()), "第三版です。");
  EXPECT_EQ(TestReadFile(view.opened[1].c_str()), "read me");
  EXPECT_EQ(TestReadFile(view.opened[2].c_str()), "第一版");
  EXPECT_EQ(TestReadFile(work("報告書-V1.txt").c_str()), "another run");
}

TEST_F(ItemCommandsTest, TheSameVersionAgainRewritesItsCopy) {
  TFile* file = addVersions("a.txt", {"original"});
  view.selected.add(file);
  logic.fcOpenWithApp();
  ASSERT_EQ(view.opened.size(), 1u);
  TestWriteFile(view.opened[0].c_str(), "edited in the application");
  logic.fcOpenWithApp();
  ASSERT_EQ(view.opened.size(), 2u);
  EXPECT_EQ(view.opened[1], view.opened[0]);
  EXPECT_EQ(TestReadFile(view.opened[0].c_str()), "original");
}

TEST_F(ItemCommandsTest, AFailedCopyReadsTheArchiveAgainAndTheNextGoesOn) {
  TFile* first = addVersions("a.txt", {"original"});
  TFile* second = addVersions("b.txt", {"older", "newer"});
  TFile* renamed = addVersions("c.txt", {"c"});
  view.selected.add(first);
  logic.fcOpenWithApp();
  ASSERT_EQ(view.opened.size(), 1u);
  // The copy's place is taken by a folder that cannot be written as a file.
  SysDeleteFile(view.opened[0].c_str());
  SysMakeFolder(view.opened[0].c_str());
  // A rename that was never written: reading the archive again undoes it,
  // and the record it named is not there any more.
  renamed->setName("d.txt");
  archive->treeDirty = 1;
  view.selected.add(second->version(0));
  view.selected.add(renamed);
  view.selected.add(second);
  logic.fcOpenWithApp();
  EXPECT_EQ(view.reloads, 1);
  EXPECT_EQ(recorder->boxes.count, 1);
  // The records after the failure are found again in the tree read anew,
  // a version by its place in its file.
  ASSERT_EQ(view.opened.size(), 3u);
  EXPECT_EQ(view.opened[1], work("b-V1.txt"));
  EXPECT_EQ(view.opened[2], work("b-V2.txt"));
  EXPECT_EQ(TestReadFile(view.opened[1].c_str()), "older");
  EXPECT_EQ(TestReadFile(view.opened[2].c_str()), "newer");
  EXPECT_EQ(archive->root->findChild("d.txt"), nullptr);
}

TEST_F(ItemCommandsTest, TenAtMostAndFoldersSkipped) {
  view.selected.add(archive->root->addFolder("folder"));
  for (int i = 0; i < 12; i++)
    view.selected.add(addVersions(("f" + std::to_string(i) + ".txt").c_str(), {"x"}));
  logic.fcOpenWithApp();
  // The folder was one of the ten.
  EXPECT_EQ(view.opened.size(), 9u);
}

TEST_F(ItemCommandsTest, ShellFailuresNameTheFile) {
  TFile* file = addVersions("図.xyz", {"picture"});
  view.selected.add(file);
  view.openResult = 31;
  logic.fcOpenWithApp();
  view.openResult = 5;
  logic.fcOpenWithApp();
  ASSERT_EQ(recorder->entries.count, 2);
  EXPECT_STREQ(recorder->entries[0]->text.ptr,
               "図.xyz に関連付けられているアプリケーションがありません");
  EXPECT_STREQ(recorder->entries[1]->text.ptr, "図.xyz を開けません");
}

TEST_F(ItemCommandsTest, NewFoldersCountUpAndNeedAFolderInTheTree) {
  view.tree = archive->root;
  TFolder* first = logic.fcNewFolder();
  TFolder* second = logic.fcNewFolder();
  TFolder* third = logic.fcNewFolder();
  ASSERT_TRUE(first && second && third);
  EXPECT_STREQ(first->name(), "新しいフォルダ");
  EXPECT_STREQ(second->name(), "新しいフォルダ(2)");
  EXPECT_STREQ(third->name(), "新しいフォルダ(3)");
  EXPECT_EQ(archive->root->children.count, 3);
  EXPECT_EQ(archive->root->children[2], third);
  EXPECT_EQ(archive->treeDirty, 1);
  view.tree = addFile(archive->root, "a.txt", 1, 4);
  EXPECT_EQ(logic.fcNewFolder(), nullptr);
}

TEST_F(ItemCommandsTest, PasteAddsTheFileListWhileTheClipboardIsHeld) {
  LStr source = host.join("メモ.txt");
  TestWriteFile(source.ptr, "memo");
  view.clipboardHasFiles = true;
  view.clipboard = {source.ptr};
  logic.fcPaste();
  EXPECT_EQ(view.commands, std::vector<int32_t>{kCmdAdd});
  EXPECT_TRUE(view.addStartedWhileHeld);
  EXPECT_EQ(view.clipboardOpen, 0);
}

TEST_F(ItemCommandsTest, PasteWithoutAFileListSaysSoAndAddsNothing) {
  view.clipboardHasFiles = false;
  logic.fcPaste();
  view.clipboardHasFiles = true;  // a file list with no paths in it
  logic.fcPaste();
  EXPECT_TRUE(view.commands.empty());
  ASSERT_EQ(recorder->entries.count, 2);
  EXPECT_STREQ(recorder->entries[1]->text.ptr, "クリップボードに有効なデータがありません");
  EXPECT_EQ(view.clipboardOpen, 0);
}

TEST_F(ItemCommandsTest, PasteOfTwoFilesOntoAFileIsRefusedBeforeAnything) {
  TFile* target = addVersions("a.txt", {"a"});
  view.selected.add(target);
  view.clipboardHasFiles = true;
  view.clipboard = {host.join("x").ptr, host.join("y").ptr};
  logic.fcPaste();
  EXPECT_TRUE(view.commands.empty());
  ASSERT_GE(recorder->entries.count, 1);
  EXPECT_STREQ(recorder->entries[recorder->entries.count - 1]->text.ptr,
               "複数の項目をファイルに追加することはできません");
}

}  // namespace
