// The one interface between the program and the operating system. There is a
// POSIX implementation (sys_posix.cpp) and a Win32 one (sys_win32.cpp);
// nothing else in the core talks to the system.
//
// Text policy: every path and name crossing this interface is core text,
// 8-bit text in the system code page (Shift-JIS) in which a 16-bit unit that
// the code page lacks is the escape "{%uXXXX}". Between a core name and the
// file system's name there is one mapping per system, and it is a bijection
// (FToLStrExact and FToUStrExact do the core side):
//  - POSIX: the file system's UTF-8 bytes. A byte that is not valid UTF-8
//    is the unit U+DC00 + byte, and so the escape "{%uDCxx}"; the backslash,
//    which core text takes as a separator, is "{%u005C}"; a "{%u" that a
//    name holds itself is "{%u007B}%u". The colon is an ordinary character.
//  - Windows: the A-functions' bytes in the same code page, with "{%u" the
//    same way; a core name whose escapes stand for a character without a
//    form in the code page cannot be created there.
// Reading, every name becomes its one core form. Writing, a path is decoded
// at the call; a name from an archive must first pass SysCheckName, which
// takes only the exact core form of a name the system keeps as it is.
//
// Failure: calls that can fail return false (or a null handle, or -1) and
// leave the reason in the system's last-error value, which SysErrorText turns
// into text. Nothing here reports messages or throws.
#pragma once

#include <cstdint>

class LStr;

// ---- Errors

// The last error of the calling thread (errno on POSIX, GetLastError on
// Windows), and a way to set it.
int SysLastError();
void SysSetLastError(int code);
// The system's sentence for an error code, without a line end; "(no message)"
// when the system has none.
void SysErrorText(int code, LStr& out);
// The run-time's errno and its text, for messages that name the C library.
int SysErrno();
void SysErrnoText(int code, LStr& out);

// ---- Files

// 100-nanosecond ticks since 1601-01-01 UTC, the unit of the three file times
// on both systems; 0 means "unknown" or, when setting, "leave as it is".
typedef uint64_t SysTime;

enum : uint32_t {
  kSysAttrReadOnly = 0x1,
  kSysAttrHidden = 0x2,
  kSysAttrSystem = 0x4,
  kSysAttrDirectory = 0x10,
  kSysAttrArchive = 0x20,
  kSysAttrDevice = 0x40,  // POSIX: a socket, pipe or device; never read
  kSysAttrNormal = 0x80,
  kSysAttrLink = 0x400,  // a symbolic link (reparse point) that was not followed
};

struct SysFileInfo {
  uint32_t attributes;
  int64_t size;
  SysTime created;
  SysTime accessed;
  SysTime modified;
};

// An open file; -1 is none.
typedef intptr_t SysFile;
const SysFile kSysNoFile = -1;

// Opens with the share and disposition rules of the library's files:
//  'r'  read; others may read and write; the file must exist.
//  'w'  write; others may only read; created or emptied.
//  'a'  write; others may only read; created if missing, kept otherwise.
// A second writer is shut out while readers go on (on POSIX through an
// exclusive advisory lock taken before anything is emptied). The cursor
// starts at 0 in every mode.
SysFile SysOpenFile(const char* path, char mode);
bool SysReadFile(SysFile file, void* buffer, int32_t size, int32_t* done);
bool SysWriteFile(SysFile file, const void* buffer, int32_t size, int32_t* done);
// A negative position means the end of the file; the new position is stored.
bool SysSeekFile(SysFile file, int64_t position, int64_t* result);
// Ends the file at the present position.
bool SysTruncateFile(SysFile file);
bool SysFlushFile(SysFile file);
bool SysCloseFile(SysFile file);
// Whether the file could be opened for reading now, with the last error set
// when not; on POSIX a look at the permissions, cheaper than an open.
bool SysCanReadFile(const char* path);
// What tells one state of an open file from another: the file itself (its
// volume and its index there), its length and its last write time.
struct SysFileStamp {
  uint64_t volume;
  uint64_t index;
  int64_t size;
  SysTime modified;
};
bool SysStampFile(SysFile file, SysFileStamp* stamp);
// Whether an open failed with this error because another writer holds the
// file.
bool SysFileBusy(int error);
// A lock file that only one holder at a time may have: taking it fails
// while another process holds it, and letting it go deletes it before
// anyone else can take it, so the next holder always makes a fresh one and
// a holder never deletes the file of the next.
SysFile SysTakeLockFile(const char* path);
// False when the file could not be deleted; it is closed in any case.
bool SysReleaseLockFile(SysFile lock, const char* path);

// ---- Folders and paths

// Lists one folder's entries, leaving out "." and "..". Symbolic links to
// files report their target; links to folders are reported with
// kSysAttrDirectory | kSysAttrLink and are not to be followed.
class SysFolderScan {
 public:
  explicit SysFolderScan(const char* folder);
  ~SysFolderScan();
  SysFolderScan(const SysFolderScan&) = delete;
  SysFolderScan& operator=(const SysFolderScan&) = delete;
  bool isOpen() const { return handle_ != nullptr; }
  // The next entry; false at the end.
  bool next(LStr& name, SysFileInfo& info);

 private:
  void* handle_;
  [[maybe_unused]] void* state_;  // what a Windows scan keeps between entries
};

// Information about one path (links to files are followed, as above).
bool SysStat(const char* path, SysFileInfo* info);
// The attributes of a path, or false when it does not exist.
bool SysGetAttributes(const char* path, uint32_t* attributes);
// Read-only and hidden where the system can express them.
bool SysSetAttributes(const char* path, uint32_t attributes);
bool SysSetFileTimes(const char* path, SysTime created, SysTime accessed, SysTime modified);
bool SysMakeFolder(const char* path);
bool SysRemoveFolder(const char* path);
bool SysDeleteFile(const char* path);
bool SysCopyFile(const char* from, const char* to, bool failIfExists);
// Renames; fails when `to` exists.
bool SysRenameFile(const char* from, const char* to);
bool SysFullPath(const char* path, LStr& out);
bool SysLongPath(const char* path, LStr& out);
// Why a name from an archive cannot be one step of a path below a folder,
// judged on the system's own form of the name, after every conversion that
// a call here applies to it.
enum SysNameFault : int {
  kSysNameOk = 0,
  kSysNameInexact,   // not the exact core form of any name of this system
  kSysNameReserved,  // empty, ".", "..", a separator, NUL, a drive or stream
  kSysNameDevice,    // Windows: a device (CON, NUL, COM1, LPT1 ... and these with an extension)
  kSysNameAltered,   // Windows: ends in a dot or blank, which the system drops
  kSysNameNoForm,    // holds a character that this system's names cannot
};
SysNameFault SysCheckName(const char* name);
// A key of a relative path made of checked names: two paths share it exactly
// when they reach the same file below one folder (Windows folds case).
void SysPathKey(const char* relative, LStr& key);
// The separator of this system's paths.
char SysPathSeparator();
// The temporary folder, ending in a separator.
void SysTempFolder(LStr& out);
// The per-user local application data folder, without a trailing separator
// (POSIX: $XDG_DATA_HOME, else ~/.local/share).
bool SysLocalAppDataFolder(LStr& out);
void SysComputerName(LStr& out);
void SysUserName(LStr& out);

// ---- Time and processes

SysTime SysNow();
// Local time zone offset from UTC at a given time, in seconds east.
int32_t SysLocalOffset(SysTime at);
void SysSleep(int32_t milliseconds);
uint32_t SysProcessId();
// The usable screen size in pixels (a fixed 1920 by 1080 where there is none).
void SysScreenSize(int32_t* width, int32_t* height);

// ---- Memory

// Blocks from this size up are worth the hint below.
const int64_t kSysLargeBlock = int64_t{4} << 20;
// Tells the system that a large block just taken will be used whole, so
// that it may back it with large pages: a block of many megabytes then
// costs a few page faults instead of thousands. Only a hint.
void SysAdviseLargeBlock(void* block, int64_t size);
// A zeroed block of at least `size` bytes, from the system rather than the
// heap, starting on a page; where the system has large pages (Linux) it
// starts on one and asks for them. Unlike a hinted heap block, which starts
// anywhere, every page of it can then be a large one. Null when the system
// has no memory. Only SysFreeLargeBlock, given the same size, frees it.
void* SysTakeLargeBlock(int64_t size);
void SysFreeLargeBlock(void* block, int64_t size);

// ---- Threads

typedef void (*SysThreadEntry)(void* argument);
// An opaque thread handle; null is none.
// Every handle that SysStartThread or SysCurrentThread gives is the caller's
// to release once with SysReleaseThread; releasing never stops the thread,
// and a handle stays usable for SysKillThread until it is released.
typedef void* SysThread;
// Starts a thread that cleans up after itself when it ends (nobody joins it).
SysThread SysStartThread(SysThreadEntry entry, void* argument);
void SysReleaseThread(SysThread thread);
// A real handle to the calling thread, usable from other threads.
SysThread SysCurrentThread();
uint32_t SysCurrentThreadId();
// Ends a thread without letting it finish; false when it has ended already.
// On POSIX the end comes at the thread's next cancellation point (a wait, a
// sleep, file input or output) and unwinds its stack: destructors run, and a
// catch (...) on the way must rethrow.
bool SysKillThread(SysThread thread);

// Auto-reset events, not signalled at creation.
typedef void* SysEvent;
SysEvent SysCreateEvent();
bool SysCloseEvent(SysEvent event);
bool SysSetEvent(SysEvent event);
// A negative time waits without limit. Returns the index of the event that
// came (0, or 1 for the second of two), 2 on time-out, -1 on failure.
int SysWaitEvent(SysEvent event, int32_t milliseconds);
int SysWaitEvents(SysEvent first, SysEvent second, int32_t milliseconds);

// A recursive critical section.
typedef void* SysLock;
SysLock SysCreateLock();
void SysDeleteLock(SysLock lock);
void SysEnterLock(SysLock lock);
void SysLeaveLock(SysLock lock);

// ---- Break signal (Ctrl+C)

// While held (counted), a break cannot end the process; a handler that the
// program installed itself is left alone.
void SysHoldBreak();
void SysReleaseBreak();

// ---- Code pages

// The system's 8-bit code page: 932 on POSIX.
int SysCodePage();
// Mirror MultiByteToWideChar and WideCharToMultiByte (the latter with
// WC_NO_BEST_FIT_CHARS except for code pages 65000 and 65001): the count
// written, or 0 on failure. `usedDefault` is set when a unit had no form.
int32_t SysToWide(int codePage, const char* text, int32_t size, uint16_t* out, int32_t room);
int32_t SysFromWide(int codePage, const uint16_t* text, int32_t size, char* out, int32_t room,
                    bool* usedDefault);

// ---- Console and boxes

// Writes to the program's diagnostic output, creating a console on first use
// where the program has none; returns true when a console was created.
bool SysConsoleWrite(const char* text, int32_t size);
// Gives back a console that SysConsoleWrite created.
void SysConsoleRelease();
// Shows a modal, topmost box and returns the button pressed (the system's
// numbers: 1 OK, 6 yes, 7 no). On POSIX it writes the box to stderr and
// returns 1.
int SysMessageBox(const char* title, const char* text, uint32_t flags);
// Ends the process at once with a code.
[[noreturn]] void SysExitProcess(int code);
