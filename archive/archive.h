// TArchive: the one open archive of the process. During normal work the file
// is open for reading only; a command collects its changes in the update
// file, and only FApplyUpdate, its last step, writes into the archive.
#pragma once

#include <cstdint>

#include "archive/archive_stamp.h"
#include "archive/free_list.h"
#include "archive/record.h"
#include "archive/stats.h"
#include "archive/string_table.h"
#include "lib/io_file.h"
#include "lib/lstr.h"

class TArchiveHost;
class TUpdateFile;

class TArchive : public LIoFile {
 public:
  LStr path;
  LStr fullPath;  // the identity of the archive
  LStr folder;
  LStr firstAddPath;
  TFolder* root = nullptr;
  int32_t headerRead = 0;
  int32_t treePos = 0;
  int32_t treeEnd = 0;
  TFreeList freeList;
  TStringTable strings;
  int32_t treeDirty = 0;
  int32_t lastStoreNo = 0;
  TStats stats;
  // Records unlinked by the running command, for the panes to forget; they
  // are identities only and may be destroyed already.
  LArrOf<TRec*> removedRecords;
  // The running command's update file, or null.
  TUpdateFile* update = nullptr;
  // The file as the tree was loaded from it, or as this process last wrote
  // it: a commit writes only over that state.
  TArchiveStamp loaded;
  // The archive held open for writing from before the load to the end of
  // the commit by a caller that keeps other writers waiting (FHoldWriter),
  // or null. The apply step writes through it.
  LIoFile* writer = nullptr;

  explicit TArchive(TArchiveHost* host);
  ~TArchive() override;

  // Holds the archive at path (null: the current path; empty: the untitled
  // archive). A failure has shown its box; the untitled archive takes over.
  void loadArchive(const char* path, bool addToRecent, bool keepTree);
  // Commits tree changes when asked and dirty; 0 when that commit failed
  // (the archive is then left as it was), else 1 and a fresh, empty object.
  int closeArchive(bool keepTree, bool commit);
  // Reads the same path again; uncommitted tree changes are lost.
  void reloadArchive();
  void setPath(const char* path);
  bool isUntitled() const;

  // Creates the update file of a command (it becomes `update`).
  TUpdateFile& beginUpdate();
  // Closes and deletes the update file, if any.
  void discardUpdate();

  TArchiveHost* host() const { return host_; }

 private:
  void clearTree();
  TArchiveHost* host_;
};

// The open archive.
TArchive* FArchive();
// Ends the last command's work: its update file goes, and the shared state
// of commands is replaced by a fresh one.
void FResetWork();
void FSetArchive(TArchive* archive);

// Opens the archive at path for writing and keeps it open in
// archive.writer until the archive is closed, so that other writers wait
// from before this process loads the tree to after it commits. While
// another process holds the file it says so once and waits. A file that is
// missing is made a new archive. False, with nothing held, when the file
// cannot be opened for writing for another reason; the command then runs
// unguarded and its apply step reports the failure.
bool FHoldWriter(TArchive& archive, const char* path);
// Reads the header, the free chain, the strings and the tree of the file at
// archive.path (created when it does not exist), and takes its stamp.
void FLoadArchive(TArchive& archive);
// Writes a new archive: the 64-byte header and the end tag, 65 bytes.
void FCreateArchive(const char* path);
void FWriteNewArchive(LStream& file);
// Writes the footer: the string table, then the tree.
void FWriteFooter(TArchive& archive, LStream& stream);
// Appends the free chain, the header and the footer to the update file and
// ends it. storeNo is the running add command's number, 0 for any other.
void FCommit(TArchive& archive, TUpdateFile& update, int32_t storeNo);
// Copies the update file into the archive and reopens it for reading; a
// failure is thrown on after the archive is reopened. Under the write lock
// and before anything is written it makes sure that the file is still the
// one loaded, and fails with nothing written when another program has
// changed it since.
void FApplyUpdate(TArchive& archive, TUpdateFile& update);
// Commits changes of the tree alone (rename, new folder).
void FCommitTree(TArchive& archive);
// Gives every segment of the block at pos back to the free list; with
// keepStart the first one keeps its position so that it can be taken again.
void FReleaseBlock(TArchive& archive, int32_t pos, bool keepStart);
// Writes a block into free extents through the update file: head (the
// first segment's bytes after length and next) and then data, as many
// segments as the extents need. keepPos > 0 takes the extent at exactly that
// position for the first segment. Returns the first segment's position and,
// in parentAt, the update-file position of the first segment's third word.
int32_t FWriteSegments(TArchive& archive, TUpdateFile& update, int32_t keepPos, const void* head,
                       int32_t headLen, const void* data, int32_t dataLen, int32_t* parentAt);
