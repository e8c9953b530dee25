#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

#include "app/worker.h"
#include "lib/file_util.h"
#include "lib/path_parts.h"
#include "lib/sys.h"
#include "store/cond.h"
#include "support/file_bytes.h"
#include "tests/ui/main_logic_fixture.h"
#include "ui/add_choice.h"
#include "ui/command_dialog_texts.h"
#include "ui/command_table.h"

namespace {

void fill(LStrs& out, std::initializer_list<const char*> texts) {
  for (const char* text : texts) out.add(new LStr(text));
}

std::vector<std::string> entriesOf(const TAddChoice& choice) {
  std::vector<std::string> out;
  for (const LStr* entry : choice.entries()) out.push_back(entry->ptr);
  return out;
}

class AddChoiceTest : public testing::Test {
 protected:
  AddChoiceTest() {
    FMakeDirs(dir.file("folder/x").ptr);
    TestWriteFile(dir.file("file.txt").ptr, "x");
  }
  TestTempDir dir;
};

TEST_F(AddChoiceTest, AFolderTargetTakesFilesAndFoldersAndEnablesByTheList) {
  LStr folder = dir.file("folder"), file = dir.file("file.txt");
  LStrs given;
  fill(given, {folder.ptr, file.ptr});
  TAddChoice choice(/*fileTarget=*/false, given);
  EXPECT_EQ(entriesOf(choice),
            (std::vector<std::string>{std::string(folder.ptr) + " <folder>", file.ptr}));
  EXPECT_TRUE(choice.okEnabled());
  EXPECT_TRUE(choice.folderBrowseEnabled());
  EXPECT_TRUE(choice.fileBrowseEnabled());
  EXPECT_TRUE(choice.picksSeveral());
  EXPECT_FALSE(choice.removeEnabled(-1));
  EXPECT_TRUE(choice.removeEnabled(1));
  EXPECT_FALSE(choice.removeEnabled(2));
  EXPECT_TRUE(choice.add("C:\\b", /*isFolder=*/false));
  // Removing keeps the place, or the last entry, and an empty list has none.
  EXPECT_EQ(choice.remove(0), 0);
  EXPECT_EQ(choice.remove(1), 0);
  EXPECT_EQ(entriesOf(choice), (std::vector<std::string>{file.ptr}));
  EXPECT_EQ(choice.remove(0), -1);
  EXPECT_FALSE(choice.okEnabled());
  EXPECT_EQ(choice.remove(0), 0);
}

TEST_F(AddChoiceTest, AFileTargetStartsEmptyAndTakesOneFileOnly) {
  LStrs given;
  fill(given, {dir.file("file.txt").ptr});
  TAddChoice choice(/*fileTarget=*/true, given);
  EXPECT_TRUE(choice.entries().count == 0);
  EXPECT_FALSE(choice.okEnabled());
  EXPECT_FALSE(choice.folderBrowseEnabled());
  EXPECT_TRUE(choice.fileBrowseEnabled());
  EXPECT_FALSE(choice.picksSeveral());
  EXPECT_FALSE(choice.addExisting(dir.file("folder").ptr));
  EXPECT_TRUE(choice.addExisting(dir.file("file.txt").ptr));
  EXPECT_TRUE(choice.okEnabled());
  EXPECT_FALSE(choice.fileBrowseEnabled());
  EXPECT_FALSE(choice.folderBrowseEnabled());
  EXPECT_FALSE(choice.add("other.txt", false));
  EXPECT_EQ(choice.entries().count, 1);
  // Once the source is removed, another may be picked.
  choice.remove(0);
  EXPECT_TRUE(choice.fileBrowseEnabled());
}

class DialogDecisionsTest : public MainLogicTest {};

TEST_F(DialogDecisionsTest, SubjectNamesOneItemCountsSeveralAndCallsTheRootAllFiles) {
  TRecList records;
  EXPECT_STREQ(FSubjectText(records).ptr, "すべてのファイル");
  records.add(archive->root);
  EXPECT_STREQ(FSubjectText(records).ptr, "すべてのファイル");
  TFile* file = addFile(archive->root, "報告書.txt", 2, 8);
  records.clear();
  records.add(file->version(0));
  EXPECT_STREQ(FSubjectText(records).ptr, "報告書.txt ");
  records.add(archive->root->addFolder("資料"));
  records.add(file);
  EXPECT_STREQ(FSubjectText(records).ptr, "3 個の項目");
}

TEST_F(DialogDecisionsTest, ConditionsNeedTwoVersionsToChooseFrom) {
  TFile* single = addFile(archive->root, "one.txt", 1, 4);
  TFile* twice = addFile(archive->root, "two.txt", 2, 4);
  TFolder* empty = archive->root->addFolder("empty");
  TFolder* deep = archive->root->addFolder("deep");
  TFolder* inner = deep->addFolder("inner");
  addFile(inner, "a.txt", 1, 4);
  TRecList records;
  EXPECT_FALSE(FSelectionHasVersionsToChoose(records));
  records.add(single);
  EXPECT_FALSE(FSelectionHasVersionsToChoose(records));
  records.add(empty);
  EXPECT_FALSE(FSelectionHasVersionsToChoose(records));
  records.add(inner);
  EXPECT_TRUE(FSelectionHasVersionsToChoose(records));
  records.clear();
  records.add(twice->version(1));
  EXPECT_FALSE(FSelectionHasVersionsToChoose(records));
  records.add(twice);
  EXPECT_TRUE(FSelectionHasVersionsToChoose(records));
  records.clear();
  records.add(deep);
  EXPECT_FALSE(FSelectionHasVersionsToChoose(records));
  addFile(deep, "b.txt", 1, 4);
  EXPECT_TRUE(FSelectionHasVersionsToChoose(records));
}

TEST_F(DialogDecisionsTest, TheConditionsButtonCarriesOneStarWhileAConditionIsSet) {
  TCond cond;
  EXPECT_STREQ(FCondCaption("条件(&L)...", cond).ptr, "条件(&L)...");
  cond.nameText = "*.txt";
  LStr marked = FCondCaption("条件(&L)...", cond);
  EXPECT_STREQ(marked.ptr, "条件(&L)...*");
  EXPECT_STREQ(FCondCaption(marked.ptr, cond).ptr, "条件(&L)...*");
  cond.nameText.clear();
  cond.sizeText = "1K-";
  EXPECT_STREQ(FCondCaption(marked.ptr, cond).ptr, "条件(&L)...*");
  cond.sizeText.clear();
  EXPECT_STREQ(FCondCaption(marked.ptr, cond).ptr, "条件(&L)...");
}

TEST_F(DialogDecisionsTest, AnEmptyDestinationIsRefusedWithItsMessage) {
  EXPECT_TRUE(FExtractDestGiven("C:\\out"));
  EXPECT_EQ(recorder->entries.count, 0);
  EXPECT_FALSE(FExtractDestGiven(""));
  ASSERT_EQ(recorder->entries.count, 1);
  EXPECT_STREQ(recorder->entries[0]->text.ptr, "展開先を指定してください。");
}

TEST_F(DialogDecisionsTest, AddDialogTakesTheCommentAndCancelStartsNothing) {
  LStr source = host.join("メモ.txt");
  TestWriteFile(source.ptr, "memo");
  LStrs paths;
  fill(paths, {source.ptr});
  view.dialogsGoOn = false;
  logic.fcAdd(paths, /*noDialog=*/false);
  EXPECT_TRUE(view.commands.empty());
  view.dialogsGoOn = true;
  view.typedComment = "初版";
  logic.fcAdd(paths, /*noDialog=*/false);
  EXPECT_EQ(view.addDialogPaths, (std::vector<std::string>{source.ptr, source.ptr}));
  EXPECT_EQ(view.commands, std::vector<int32_t>{kCmdAdd});
  EXPECT_EQ(view.startedComment, "初版");
  // A drop without Ctrl skips the dialog.
  logic.fcAdd(paths, /*noDialog=*/true);
  EXPECT_EQ(view.dialogs.size(), 2u);
  EXPECT_EQ(view.commands.size(), 2u);
  EXPECT_EQ(view.startedComment, "");
}

TEST_F(DialogDecisionsTest, ExtractStartsBelowTheTreesPlaceAndRemembersAChangedDestination) {
  TFolder* docs = archive->root->addFolder("資料");
  TFolder* old = docs->addFolder("古い");
  addFile(old, "a.txt", 1, 4);
  LStr here;
  SysFullPath(".", here);
  FAddSep(here);
  view.tree = old;
  logic.fcExt();
  EXPECT_EQ(view.shownDestination, std::string(here.ptr) + "資料/古い");
  EXPECT_EQ(view.startedDestination, view.shownDestination);
  // The destination as the dialog offered it is no news to the history.
  EXPECT_EQ(app.extDirs.count, 0);
  view.typedDestination = "/tmp/展開先/";
  view.tree = archive->root;
  logic.fcExt();
  FDropSep(here);
  EXPECT_EQ(view.shownDestination, here.ptr);
  EXPECT_EQ(view.startedDestination, "/tmp/展開先/");
  ASSERT_EQ(app.extDirs.count, 1);
  EXPECT_STREQ(app.extDirs[0]->ptr, "/tmp/展開先");
  view.dialogsGoOn = false;
  view.typedDestination = "/tmp/other";
  logic.fcExt();
  EXPECT_EQ(view.commands, (std::vector<int32_t>{kCmdExtract, kCmdExtract}));
  EXPECT_EQ(app.extDirs.count, 1);
}

TEST_F(DialogDecisionsTest, DeleteRunsAfterYesOnlyWithTheRemovedListEmptied) {
  TFile* file = addFile(archive->root, "a.txt", 2, 4);
  view.selected.add(file);
  archive->removedRecords.add(archive->root->addFolder("gone"));
  view.dialogsGoOn = false;
  logic.fcDel();
  EXPECT_TRUE(view.commands.empty());
  EXPECT_EQ(archive->removedRecords.count, 1);
  view.dialogsGoOn = true;
  logic.fcDel();
  EXPECT_EQ(view.commands, std::vector<int32_t>{kCmdDelete});
  EXPECT_EQ(archive->removedRecords.count, 0);
  // Nothing selected: no dialog at all.
  view.selected.clear();
  logic.fcDel();
  EXPECT_EQ(view.dialogs, (std::vector<std::string>{"delete", "delete"}));
}

}  // namespace
