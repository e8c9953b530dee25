#include "cli/item_path.h"

#include "archive/record.h"
#include "lib/msg.h"
#include "lib/text_split.h"

bool FIsItemPath(const char* path) {
  if (path[0] == '/') return true;
  FMsg(kMsgSyntax, "アーカイブ内のパスは「/」で始めてください : %s", path);
  return false;
}

void FItemNames(const char* path, LStrs& names) {
  // "/" is never the second byte of a double-byte character.
  FSplit(path, '/', kSplitSkipEmpty, names);
}

TRec* FFindItem(TFolder* root, const char* path) {
  LStrs names;
  FItemNames(path, names);
  LArrOf<const char*> list;
  for (const LStr* name : names) list.add(name->ptr);
  list.add(nullptr);
  TRec* rec = names.count == 0 ? root : root->findPath(list.begin());
  if (rec == nullptr) FMsg(kMsgGeneral, "ファイル/フォルダ「%s」が見つかりません", path);
  return rec;
}

TFile* FFindFile(TFolder* root, const char* path) {
  TRec* rec = FFindItem(root, path);
  if (rec == nullptr) return nullptr;
  if (!rec->isFile()) {
    FMsg(kMsgGeneral, "「%s」はファイルではありません", path);
    return nullptr;
  }
  return static_cast<TFile*>(rec);
}

TVer* FFindVersion(TFile* file, int32_t number) {
  int32_t count = file->childCount();
  if (number == 0) number = count;
  if (number < 1 || number > count) {
    FMsg(kMsgGeneral, "バージョン %d はありません (1～%d)", number, count);
    return nullptr;
  }
  return file->version(number - 1);
}
