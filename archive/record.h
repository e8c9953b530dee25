// The records of an archive's tree: folders, files and, under each file, its
// chain of versions (oldest first). Names are indexes into the archive's
// string table; a record owns its children.
#pragma once

#include <cstdint>

#include "lib/larr.h"
#include "lib/lobj.h"
#include "lib/lstr.h"

class TFolder;
class TFile;
class TVer;
class THeldBuf;
struct TVerInfo;

// Kinds, ordered as the panes sort them.
enum : int { kKindFolder = 1, kKindFile = 2, kKindVer = 4, kKindRoot = 8 };

class TRec : public LObj {
 public:
  TRec* parent = nullptr;

  virtual int isRoot() const { return 0; }
  virtual int isFolder() const { return 0; }
  virtual int isFile() const { return 0; }
  virtual int isNamed() const { return 0; }
  virtual int isVer() const { return 0; }
  virtual int kind() const { return 0; }
  virtual TVer* latestVer() const { return nullptr; }
  virtual const char* name() const = 0;
  virtual int32_t childCount() const { return 0; }

  // The names from just under the root (or under stopAt) down to this
  // record, joined by separator; a version contributes nothing.
  void pathOf(LStr& out, const TRec* stopAt, char separator) const;
  // "/a/b/file", a folder with a final "/"; the root is "/".
  void displayPath(LStr& out) const;
  // The name texts from just under the root down to this record (a version
  // stands for its file).
  void pathNames(LArrOf<const char*>& list) const;
  // The nearest ancestor folder; "Internal Error #1253" when there is none.
  TFolder* ownerFolder() const;
  // The parent file of a version; "Internal Error #1254" otherwise.
  TFile* ownerFile() const;
  // Takes the record out of its parent and enters it in the removed-records
  // list of the archive; nothing is destroyed.
  void unlink();
  void unlinkAndDestroy();
};

class TRecF : public TRec {
 public:
  uint32_t nameIdx = 0;
  LArrOf<TRec*> children;

  ~TRecF() override;
  int isNamed() const override { return 1; }
  const char* name() const override;
  int32_t childCount() const override { return children.count; }

  void addChild(TRec* record);
  TFolder* addFolder(const char* name);
  // Removes the pointer without destroying; an absent pointer is ignored.
  void removeChild(TRec* record);
  // The first child of that name, ASCII case folded, double-byte characters
  // as units; or null.
  TRec* findChild(const char* name) const;
  // Walks a null-terminated list of names; null unless every step finds a
  // named record.
  TRec* findPath(const char* const* names) const;
  void setName(const char* name);
};

class TFolder : public TRecF {
 public:
  int64_t time = 0;  // Unix seconds

  int isRoot() const override { return parent == nullptr; }
  int isFolder() const override { return 1; }
  int kind() const override { return parent == nullptr ? kKindRoot : kKindFolder; }
};

class TFile : public TRecF {
 public:
  int isFile() const override { return 1; }
  int kind() const override { return kKindFile; }
  TVer* latestVer() const override;
  TVer* version(int32_t index) const { return reinterpret_cast<TVer*>(children[index]); }
};

// Flags of a version.
enum : uint8_t {
  kVerNew = 1,       // bytes come from a source file, not stored yet
  kVerStored = 2,    // has a block in the archive
  kVerDrop = 4,      // equals the previous version in content and date
  kVerEncoded = 8,   // stored again in this command
  kVerSame = 16,     // bytes equal the next newer version, dates differ
  kVerDeleted = 32,  // marked by the running delete command
};

class TVer : public TRec {
 public:
  uint16_t checksum = 0;
  uint8_t flags = 0;
  int64_t time = 0;  // last-write time of the source, Unix seconds
  int32_t size = -1;
  int32_t dataPos = 0;

  int isVer() const override { return 1; }
  int kind() const override { return kKindVer; }
  const char* name() const override;
  // Position in the file: from the oldest, or from the newest.
  int32_t IndexInFile(bool fromNewest) const;

  // The version's side record in the work set, made from the version
  // header in the archive the first time it is asked for.
  TVerInfo* Info();
  // The side record if there is one; with mustExist, none is "Internal
  // Error #1910".
  TVerInfo* FindInfo(bool mustExist) const;
  // True when the held form is in memory.
  bool HasHeld() const;
  // The held form: read from the archive (a stored version) or from the
  // source file (a new one) on the first hold. Every Hold is matched by one
  // Release; the last Release frees the bytes.
  const THeldBuf& Hold();
  void Release();
};

// Orders records as the panes show them: folders before files, then by name
// with ASCII case folded.
int FCompareForDisplay(const TRec* a, const TRec* b);
// Sorts an array of records for display.
void FSortForDisplay(LArrOf<TRec*>& records);

// The rule for names the user makes: an empty name is ignored (false, and
// nothing said); a sibling of the same name and the characters \/:;,*?"<>|
// are a refusal of the user's input, said as a warning (20000), and give
// false. True when the name may be used.
bool FCheckNewName(const TRecF* parent, const char* name, const TRec* renaming);
