#include "archive/record.h"

#include <gtest/gtest.h>

#include "support/archive_fixture.h"

TEST_F(ArchiveTest, PathsAndLookups) {
  archive->loadArchive(dir.file("r.kst").ptr, false, false);
  TFolder* a = archive->root->addFolder("A");
  TFile* file = new TFile;
  file->setName("Readme.TXT");
  a->addChild(file);
  TVer* ver = new TVer;
  file->addChild(ver);
  LStr text;
  ver->pathOf(text, nullptr, '\\');
  EXPECT_STREQ(text.ptr, "A\\Readme.TXT");
  text.clear();
  a->displayPath(text);
  EXPECT_STREQ(text.ptr, "/A/");
  text.clear();
  archive->root->displayPath(text);
  EXPECT_STREQ(text.ptr, "/");
  text.clear();
  ver->pathOf(text, a, '/');
  EXPECT_STREQ(text.ptr, "Readme.TXT");
  EXPECT_EQ(a->findChild("README.txt"), file);
  EXPECT_EQ(file->latestVer(), ver);
  EXPECT_EQ(ver->ownerFolder(), a);
  EXPECT_EQ(ver->IndexInFile(true), 0);
  EXPECT_STREQ(ver->name(), "Readme.TXT");
  const char* missing[] = {"A", "Readme.TXT", "x", nullptr};
  EXPECT_EQ(archive->root->findPath(missing), nullptr);
  TFile empty;
  EXPECT_EQ(empty.latestVer(), nullptr);
}

TEST_F(ArchiveTest, StringTableIsCaseSensitiveAndNeverShrinks) {
  archive->loadArchive(dir.file("s.kst").ptr, false, false);
  int32_t start = archive->strings.count();
  TFolder* one = archive->root->addFolder("Readme");
  TFolder* two = archive->root->addFolder("README");
  EXPECT_NE(one->nameIdx, two->nameIdx);
  EXPECT_EQ(archive->strings.count(), start + 2);
  two->setName("Readme");  // reuses the index
  EXPECT_EQ(two->nameIdx, one->nameIdx);
  EXPECT_EQ(archive->strings.count(), start + 2);
  two->setName("");
  EXPECT_EQ(two->nameIdx, 0u);
  EXPECT_EQ(FFindString("README"), one->nameIdx + 1);
  EXPECT_THROW(archive->strings.text(999), int);
}

TEST_F(ArchiveTest, DisplayOrderAndTheNameRule) {
  archive->loadArchive(dir.file("n.kst").ptr, false, false);
  TRecF* root = archive->root;
  TFile* b = new TFile;
  b->setName("b");
  root->addChild(b);
  root->addFolder("Z");
  TFile* a = new TFile;
  a->setName("A");
  root->addChild(a);
  LArrOf<TRec*> sorted;
  for (TRec* child : root->children) sorted.add(child);
  FSortForDisplay(sorted);
  EXPECT_STREQ(sorted[0]->name(), "Z");
  EXPECT_STREQ(sorted[1]->name(), "A");
  EXPECT_STREQ(sorted[2]->name(), "b");

  EXPECT_FALSE(FCheckNewName(root, "", nullptr));
  EXPECT_TRUE(FCheckNewName(root, "表.txt", nullptr));  // trail byte 0x5C is no "\"
  EXPECT_EQ(0, recorder->entries.count);
  EXPECT_FALSE(FCheckNewName(root, "a:b", nullptr));
  ASSERT_EQ(1, recorder->entries.count);
  EXPECT_EQ(kMsgWarning, recorder->entries.last()->number);
  EXPECT_STREQ("文字 ':' は使用できません", recorder->entries.last()->text.ptr);
  EXPECT_FALSE(FCheckNewName(root, "z", nullptr));
  EXPECT_STREQ("項目 'z' はすでに存在します", recorder->entries.last()->text.ptr);
  EXPECT_EQ(0, recorder->boxes.count);
  EXPECT_TRUE(FCheckNewName(root, "a", a));  // a rename may change the case
}

TEST_F(ArchiveTest, AVeryDeepTreeIsFreedWithoutRecursion) {
  // Deeper than any thread's stack could hold one destructor frame per level.
  TFolder* top = new TFolder;
  TFolder* folder = top;
  for (int i = 0; i < 2000000; i++) folder = folder->addFolder("d");
  TFile* file = new TFile;
  folder->addChild(file);
  file->addChild(new TVer);
  LStr path;
  file->displayPath(path);
  // "/" and "d/" for each level; the file has the empty name.
  EXPECT_EQ(path.length, 1 + 2000000 * 2);
  delete top;
}
