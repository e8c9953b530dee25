#include <gtest/gtest.h>

#include "archive/archive.h"
#include "support/archive_fixture.h"
#include "ui/command_state.h"
#include "ui/command_table.h"
#include "ui/selection.h"

namespace {

// A selection written in place.
struct Recs {
  TRecList list;
  Recs(std::initializer_list<TRec*> recs) {
    for (TRec* r : recs) list.add(r);
  }
};

class SelectionTest : public ArchiveTest {
 protected:
  SelectionTest() {
    FNewWorkSet();
    archive->loadArchive(dir.file("a.kst").ptr, false, false);
    folder = archive->root->addFolder("資料");
    one = addFile(archive->root, "one.txt", 1, 10);
    two = addFile(folder, "two.txt", 2, 10);
  }
  ~SelectionTest() override { FDeleteWorkSet(); }

  TFolder* folder;
  TFile* one;
  TFile* two;
};

TEST_F(SelectionTest, KindsOfEachSelection) {
  EXPECT_EQ(0, FSelKinds(Recs{}.list));
  EXPECT_EQ(kSelRoot | kSelRootWithItems, FSelKinds(Recs{archive->root}.list));
  EXPECT_EQ(kSelFolder, FSelKinds(Recs{folder}.list));
  EXPECT_EQ(kSelFile, FSelKinds(Recs{one}.list));
  EXPECT_EQ(kSelFile | kSelVer, FSelKinds(Recs{two->version(0)}.list));
  EXPECT_EQ(kSelFolder | kSelFile | kSelMany, FSelKinds(Recs{folder, one}.list));
  TFolder* empty = archive->root;
  archive->root->children.clear();  // the records stay owned by the test below
  EXPECT_EQ(kSelRoot, FSelKinds(Recs{empty}.list));
  archive->root->addChild(folder);
  archive->root->addChild(one);
}

TEST_F(SelectionTest, FindNeedsSomethingToWalk) {
  EXPECT_FALSE(FSelectionAllowsFind(Recs{}.list));
  EXPECT_TRUE(FSelectionAllowsFind(Recs{folder}.list));
  EXPECT_TRUE(FSelectionAllowsFind(Recs{archive->root}.list));
  EXPECT_FALSE(FSelectionAllowsFind(Recs{one}.list));  // one version
  EXPECT_TRUE(FSelectionAllowsFind(Recs{two}.list));
  EXPECT_FALSE(FSelectionAllowsFind(Recs{two->version(1)}.list));
  EXPECT_TRUE(FSelectionAllowsFind(Recs{one, two->version(0)}.list));
}

TEST_F(SelectionTest, PropertiesOnlyWhenTheFirstRecordIsAFile) {
  EXPECT_FALSE(FSelectionHasProperties(Recs{}.list));
  EXPECT_TRUE(FSelectionHasProperties(Recs{one}.list));
  EXPECT_TRUE(FSelectionHasProperties(Recs{two, folder}.list));
  EXPECT_FALSE(FSelectionHasProperties(Recs{folder, two}.list));
  EXPECT_FALSE(FSelectionHasProperties(Recs{archive->root}.list));
  EXPECT_FALSE(FSelectionHasProperties(Recs{two->version(0)}.list));
  EXPECT_FALSE(FSelectionHasProperties(Recs{two->version(1), one}.list));
}

TEST_F(SelectionTest, FocusedListCountsAloneOnlyWhenItHoldsASelection) {
  TRecList out;
  FChooseSelection(true, Recs{one, two}.list, folder, false, out);
  EXPECT_EQ(2, out.count);
  FChooseSelection(true, Recs{}.list, folder, false, out);
  ASSERT_EQ(1, out.count);
  EXPECT_EQ(folder, out[0]);
  FChooseSelection(true, Recs{}.list, folder, /*listOnly=*/true, out);
  EXPECT_EQ(0, out.count);
  FChooseSelection(false, Recs{one}.list, folder, false, out);
  ASSERT_EQ(1, out.count);
  EXPECT_EQ(folder, out[0]);
  FChooseSelection(false, Recs{}.list, nullptr, false, out);
  EXPECT_EQ(0, out.count);
}

TCommandState state(int32_t kinds, bool busy, bool find = false, bool treeFolder = false) {
  TCommandState s;
  s.kinds = kinds;
  s.busy = busy;
  s.allowsFind = find;
  s.treeOnFolder = treeFolder;
  return s;
}

TEST(CommandEnabling, IdleColumn) {
  TCommandState none = state(0, false);
  EXPECT_TRUE(FCommandEnabled(kCmdSaveAs, none));
  EXPECT_TRUE(FCommandEnabled(kCmdAdd, none));
  EXPECT_TRUE(FCommandEnabled(kCmdPaste, none));
  EXPECT_TRUE(FCommandEnabled(kCmdOptions, none));
  EXPECT_FALSE(FCommandEnabled(kCmdExtract, none));
  EXPECT_FALSE(FCommandEnabled(kCmdDelete, none));
  EXPECT_FALSE(FCommandEnabled(kCmdStop, none));
  EXPECT_FALSE(FCommandEnabled(kCmdNewFolder, none));
  // An empty root cannot be extracted; one with items can, but never deleted.
  EXPECT_FALSE(FCommandEnabled(kCmdExtract, state(kSelRoot, false)));
  EXPECT_TRUE(FCommandEnabled(kCmdExtract, state(kSelRoot | kSelRootWithItems, false)));
  EXPECT_FALSE(FCommandEnabled(kCmdDelete, state(kSelRoot | kSelRootWithItems, false)));
  EXPECT_FALSE(FCommandEnabled(kCmdRename, state(kSelRoot | kSelRootWithItems, false)));
  // Rename wants exactly one folder or file.
  EXPECT_TRUE(FCommandEnabled(kCmdRename, state(kSelFile, false)));
  EXPECT_FALSE(FCommandEnabled(kCmdRename, state(kSelFile | kSelMany, false)));
  // Open with its application: files and versions, never with a folder.
  EXPECT_TRUE(FCommandEnabled(kCmdOpenWithApp, state(kSelFile | kSelVer, false)));
  EXPECT_FALSE(FCommandEnabled(kCmdOpenWithApp, state(kSelFile | kSelFolder | kSelMany, false)));
  EXPECT_TRUE(FCommandEnabled(kCmdNewFolder, state(0, false, false, /*treeFolder=*/true)));
  EXPECT_TRUE(FCommandEnabled(kCmdSearch, state(kSelFolder, false, /*find=*/true)));
  EXPECT_FALSE(FCommandEnabled(kCmdSearch, state(kSelFile, false, false)));
}

TEST(CommandEnabling, BusyColumnKeepsFindAndEnablesStop) {
  TCommandState busy = state(kSelFolder | kSelFile | kSelMany, true, /*find=*/true, true);
  int32_t count = 0;
  const int32_t* ids = FGovernedCommands(&count);
  for (int32_t i = 0; i < count; i++) {
    bool expected = ids[i] == kCmdSearch || ids[i] == kCmdStop;
    EXPECT_EQ(expected, FCommandEnabled(ids[i], busy)) << ids[i];
  }
  EXPECT_FALSE(FCommandEnabled(kCmdSearch, state(kSelFile, true, false)));
}

std::vector<int32_t> menu(const TCommandState& s, bool listEmpty) {
  LInts out;
  FContextMenu(s, listEmpty, out);
  return std::vector<int32_t>(out.begin(), out.end());
}

TEST(ContextMenu, ForEachKindOfSelection) {
  using V = std::vector<int32_t>;
  EXPECT_EQ((V{kSeparator, kCmdAdd}), menu(state(kSelRoot, false), false));
  EXPECT_EQ((V{kCmdSearch, kSeparator, kCmdAdd, kCmdExtract}),
            menu(state(kSelRoot | kSelRootWithItems, false, true), false));
  EXPECT_EQ(
      (V{kCmdSearch, kCmdNewFolder, kSeparator, kCmdAdd, kCmdExtract, kCmdDelete, kCmdRename}),
      menu(state(kSelFolder, false, true), false));
  EXPECT_EQ((V{kCmdOpenWithApp, kSeparator, kCmdAdd, kCmdExtract, kCmdDelete, kCmdRename}),
            menu(state(kSelFile, false, false), false));
  EXPECT_EQ((V{kCmdOpenWithApp, kSeparator, kCmdAdd, kCmdExtract, kCmdDelete, kCmdRename}),
            menu(state(kSelFile | kSelVer, false, false), false));
  EXPECT_EQ((V{kCmdSearch, kSeparator, kCmdExtract, kCmdDelete}),
            menu(state(kSelFolder | kSelFile | kSelMany, false, true), false));
  EXPECT_EQ((V{kSeparator, kCmdAdd, kCmdSelectAll}), menu(state(0, false), true));
}

TEST(Keys, CtrlLettersPlainKeysAndBusy) {
  EXPECT_EQ(kCmdSaveAs, FKeyCommand('S', true, false));
  EXPECT_EQ(kCmdSelectAll, FKeyCommand('A', true, false));
  EXPECT_EQ(kKeyIgnored, FKeyCommand('S', false, false));
  // Ctrl+W, Ctrl+X and Ctrl+C are shown in the table and bound to nothing.
  EXPECT_EQ(kKeyIgnored, FKeyCommand('W', true, false));
  EXPECT_EQ(kKeyIgnored, FKeyCommand('X', true, false));
  EXPECT_EQ(kKeyIgnored, FKeyCommand('C', true, false));
  EXPECT_EQ(kCmdHelp, FKeyCommand(kKeyF1, false, false));
  EXPECT_EQ(kKeyIgnored, FKeyCommand(kKeyF1, true, false));
  EXPECT_EQ(kCmdDelete, FKeyCommand(kKeyDelete, true, false));
  EXPECT_EQ(kCmdRename, FKeyCommand(kKeyF2, false, false));
  EXPECT_EQ(kKeyNextPane, FKeyCommand(kKeyTab, false, false));
  EXPECT_EQ(kKeySwallowed, FKeyCommand(kKeyDelete, false, true));
  EXPECT_EQ(kKeySwallowed, FKeyCommand('S', true, true));
}

}  // namespace
