// Records named as the panes show their paths: "/" is the root, "/a/b/c.txt"
// a file, a final "/" is allowed. Names compare as the tree compares them,
// with ASCII letters folded.
#pragma once

#include <cstdint>

#include "lib/larr.h"
#include "lib/lstr.h"

class TFile;
class TFolder;
class TRec;
class TVer;

// True for a path of the archive, which begins with "/"; otherwise reports
// the usage error 15001.
bool FIsItemPath(const char* path);
// The names of a path, empty ones left out.
void FItemNames(const char* path, LStrs& names);
// The record of a path below root, or null after the error
// "ファイル/フォルダ「%s」が見つかりません".
TRec* FFindItem(TFolder* root, const char* path);
// The file record of a path, or null after the error of FFindItem or
// "「%s」はファイルではありません".
TFile* FFindFile(TFolder* root, const char* path);
// Version `number` of a file (1 the oldest, 0 the newest), or null after the
// error "バージョン %d はありません (1～%d)".
TVer* FFindVersion(TFile* file, int32_t number);
