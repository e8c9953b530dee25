// The rollback journal of the apply step. Before the first byte of the
// archive is overwritten, the journal beside it (the archive's path with
// "-journal" appended) receives the archive's length and the present bytes
// of every range the update will overwrite, with a checksum, and is flushed
// to disk. Deleting the journal once the archive is flushed is the commit
// point. A complete journal found later means an apply was cut short: the
// archive is rolled back to what it was. An incomplete one means the archive
// was never touched, and it is only removed.
//
// Only a process that holds the archive's exclusive write lock may write,
// roll back or remove a journal, so a live apply elsewhere is never undone.
#pragma once

#include <cstdint>

#include "lib/lstr.h"

class LIoFile;

LStr FJournalPath(const char* archivePath);

// Writes the journal for the update records of `update` (read from its start)
// against the archive at archivePath, which the caller holds open for
// writing; false when the journal could not be written whole and flushed
// (the archive is then not to be touched).
bool FWriteJournal(const char* journalPath, const char* archivePath, LIoFile& update);
// Restores the archive (opened for writing) from a complete journal and
// flushes it; false when the journal is incomplete or damaged, in which case
// the archive was never touched.
bool FRollBack(const char* journalPath, LIoFile& archive);
// Before an archive is read: when a journal lies beside it, takes the write
// lock (or uses `writer`, the archive that the caller holds open for
// writing), rolls back if the journal is complete, and removes the journal.
// A journal whose archive another process holds for writing is left alone
// and the open fails with a message.
void FRecoverArchive(const char* archivePath, LIoFile* writer);
