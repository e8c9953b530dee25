// The platform layer on Windows. Paths and names go to the A-functions in the
// system's code page: core text without escapes is that already, and only a
// path with a "{" takes the way through 16-bit text (see lib/sys.h).
#include "lib/sys.h"

#include <shlobj.h>
#include <windows.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <memory>

#include "lib/chartype.h"
#include "lib/convert.h"
#include "lib/lstr.h"
#include "lib/ustr.h"
#include "lib/utf8.h"

namespace {

// Attributes the system lets a program set on a file.
const DWORD kSettableAttributes = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN |
                                  FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE |
                                  FILE_ATTRIBUTE_NORMAL | FILE_ATTRIBUTE_TEMPORARY |
                                  FILE_ATTRIBUTE_OFFLINE | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;
// The longest user name, from the system's limits, plus its terminator.
const DWORD kUserNameRoom = 257;

HANDLE toHandle(SysFile file) { return reinterpret_cast<HANDLE>(file); }

// The code page's bytes of 16-bit text, without best fit; false when a unit
// has no form.
bool toAnsi(const UStr& units, LStr& out) {
  out.clear();
  if (units.length == 0) return true;
  BOOL usedDefault = FALSE;
  const wchar_t* wide = reinterpret_cast<const wchar_t*>(units.ptr);
  int n = WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, wide, units.length, nullptr, 0, nullptr,
                              &usedDefault);
  if (n <= 0 || usedDefault) return false;
  std::unique_ptr<char[]> bytes(new char[n]);
  WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, wide, units.length, bytes.get(), n, nullptr,
                      &usedDefault);
  out.assign(bytes.get(), n);
  return !usedDefault;
}

// The A-functions' form of a core path. A path whose escapes stand for a
// character the code page lacks has none: c_str() is null and the last
// error says the name is invalid.
class AnsiPath {
 public:
  explicit AnsiPath(const char* path) : text_(path) {
    if (path == nullptr || std::strchr(path, '{') == nullptr) return;
    UStr units;
    FToUStr(path, -1, units);
    text_ = toAnsi(units, bytes_) ? bytes_.ptr : nullptr;
    if (text_ == nullptr) SetLastError(ERROR_INVALID_NAME);
  }
  const char* c_str() const { return text_; }

 private:
  const char* text_;
  LStr bytes_;
};

// The core form of a name or path that the system gave.
void fromAnsi(const char* text, LStr& out) {
  if (std::strchr(text, '{') == nullptr) {
    out.assign(text);
    return;
  }
  UStr units;
  FToUStr(text, -1, units, 0, "", "");
  LStr core;
  FToLStrExact(units.ptr, units.length, core);
  out.swap(core);
}

SysTime fromFileTime(const FILETIME& time) {
  return (static_cast<SysTime>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
}

FILETIME toFileTime(SysTime time) {
  FILETIME result;
  result.dwLowDateTime = static_cast<DWORD>(time);
  result.dwHighDateTime = static_cast<DWORD>(time >> 32);
  return result;
}

void fillInfo(DWORD attributes, DWORD sizeHigh, DWORD sizeLow, const FILETIME& created,
              const FILETIME& accessed, const FILETIME& modified, SysFileInfo* info) {
  info->attributes = attributes;
  info->size = static_cast<int64_t>((static_cast<uint64_t>(sizeHigh) << 32) | sizeLow);
  info->created = fromFileTime(created);
  info->accessed = fromFileTime(accessed);
  info->modified = fromFileTime(modified);
}

// The information of what a link to a file leads to: opening follows the
// link, where the listing and the attribute calls describe the link itself.
bool describeTarget(const char* path, SysFileInfo* info) {
  AnsiPath native(path);
  if (native.c_str() == nullptr) return false;
  HANDLE file = CreateFileA(native.c_str(), FILE_READ_ATTRIBUTES,
                            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                            OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  BY_HANDLE_FILE_INFORMATION data;
  bool ok = GetFileInformationByHandle(file, &data) != 0;
  DWORD error = GetLastError();
  CloseHandle(file);
  if (!ok) {
    SetLastError(error);
    return false;
  }
  fillInfo(data.dwFileAttributes, data.nFileSizeHigh, data.nFileSizeLow, data.ftCreationTime,
           data.ftLastAccessTime, data.ftLastWriteTime, info);
  return true;
}

bool isFileLink(DWORD attributes) {
  return (attributes & FILE_ATTRIBUTE_REPARSE_POINT) && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

// Whether 8-bit text ends in a path separator; a Shift-JIS trail byte can
// have the value of the backslash.
bool endsInSeparator(const LStr& path) {
  if (path.empty()) return false;
  char last = path[path.length - 1];
  if (last == '/' || last == ':') return true;
  return last == '\\' && !FIsTrailByte(path.ptr, path.length - 1);
}

// Runs one of the system's "fill this buffer, or tell me the size" calls
// until the buffer is large enough; false when the call fails.
template <typename Call>
bool fillGrowing(LStr& out, Call call) {
  DWORD room = MAX_PATH;
  for (;;) {
    std::unique_ptr<char[]> buffer(new char[room]);
    DWORD n = call(buffer.get(), room);
    if (n == 0) return false;
    if (n < room) {
      out.assign(buffer.get(), static_cast<int32_t>(n));
      return true;
    }
    room = n + 1;
  }
}

// Whether the system takes a name for a device: CON, PRN, AUX, NUL, COM1 to
// COM9 and LPT1 to LPT9 (with the superscript digits too), CONIN$ and
// CONOUT$, in any case, alone or before an extension, blanks before the dot
// ignored.
bool isDeviceName(const UStr& units) {
  int32_t end = 0;
  while (end < units.length && units[end] != '.') end++;
  while (end > 0 && units[end - 1] == ' ') end--;
  char base[8];
  if (end < 3 || end > 7) return false;
  for (int32_t i = 0; i < end; i++) {
    UChar unit = units[i];
    if (unit == 0xB9 || unit == 0xB2 || unit == 0xB3) unit = '1';  // a digit all the same
    if (unit >= 0x80) return false;
    base[i] = static_cast<char>(unit >= 'a' && unit <= 'z' ? unit - 32 : unit);
  }
  base[end] = 0;
  for (const char* device : {"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$"})
    if (std::strcmp(base, device) == 0) return true;
  return end == 4 && (std::strncmp(base, "COM", 3) == 0 || std::strncmp(base, "LPT", 3) == 0) &&
         base[3] >= '1' && base[3] <= '9';
}

struct ThreadStart {
  SysThreadEntry entry;
  void* argument;
};

DWORD WINAPI threadMain(LPVOID raw) {
  ThreadStart start = *static_cast<ThreadStart*>(raw);
  delete static_cast<ThreadStart*>(raw);
  start.entry(start.argument);
  return 0;
}

DWORD toTimeout(int32_t milliseconds) {
  return milliseconds < 0 ? INFINITE : static_cast<DWORD>(milliseconds);
}

// The count of holds and whether the hold replaced the default handler; the
// console created for diagnostics. Each is guarded by its own slim lock.
SRWLOCK gBreakLock = SRWLOCK_INIT;
int32_t gBreakHolds = 0;
bool gBreakIgnoredHere = false;
SRWLOCK gConsoleLock = SRWLOCK_INIT;
HANDLE gConsoleOutput = nullptr;

class ExclusiveGuard {
 public:
  explicit ExclusiveGuard(SRWLOCK* lock) : lock_(lock) { AcquireSRWLockExclusive(lock_); }
  ~ExclusiveGuard() { ReleaseSRWLockExclusive(lock_); }
  ExclusiveGuard(const ExclusiveGuard&) = delete;
  ExclusiveGuard& operator=(const ExclusiveGuard&) = delete;

 private:
  SRWLOCK* lock_;
};

bool writeHandle(HANDLE handle, const char* text, int32_t size) {
  while (size > 0) {
    DWORD written = 0;
    if (!WriteFile(handle, text, static_cast<DWORD>(size), &written, nullptr) || written == 0) {
      return false;
    }
    text += written;
    size -= static_cast<int32_t>(written);
  }
  return true;
}

}  // namespace

// ---- Errors

int SysLastError() { return static_cast<int>(GetLastError()); }
void SysSetLastError(int code) { SetLastError(static_cast<DWORD>(code)); }

void SysErrorText(int code, LStr& out) {
  char* text = nullptr;
  // Inserts are left as they stand: there are no arguments to put in them,
  // and without the flag such a message is not found at all.
  DWORD n = FormatMessageA(
      FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
      nullptr, static_cast<DWORD>(code), /*languageId=*/1024, reinterpret_cast<LPSTR>(&text), 0,
      nullptr);
  LStr result;
  for (DWORD i = 0; i < n; i++) {
    if (text[i] != '\r' && text[i] != '\n') result.append(text[i]);
  }
  if (text != nullptr) LocalFree(text);
  if (result.empty()) result.assign("(no message)");
  out.swap(result);
}

int SysErrno() { return errno; }

void SysErrnoText(int code, LStr& out) {
  const char* text = std::strerror(code);
  out.assign(text != nullptr && text[0] != 0 ? text : "(no message)");
}

// ---- Files

SysFile SysOpenFile(const char* path, char mode) {
  DWORD access;
  DWORD share;
  DWORD disposition;
  switch (mode) {
    case 'r':
      access = GENERIC_READ, share = FILE_SHARE_READ | FILE_SHARE_WRITE,
      disposition = OPEN_EXISTING;
      break;
    case 'w':
      access = GENERIC_WRITE, share = FILE_SHARE_READ, disposition = CREATE_ALWAYS;
      break;
    case 'a':
      access = GENERIC_WRITE, share = FILE_SHARE_READ, disposition = OPEN_ALWAYS;
      break;
    default:
      SetLastError(ERROR_INVALID_PARAMETER);
      return kSysNoFile;
  }
  AnsiPath native(path);
  if (native.c_str() == nullptr) return kSysNoFile;
  HANDLE file = CreateFileA(native.c_str(), access, share, nullptr, disposition,
                            FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return kSysNoFile;
  return reinterpret_cast<SysFile>(file);
}

bool SysCanReadFile(const char* path) {
  // Only an open tells of a file that another program holds shut.
  SysFile file = SysOpenFile(path, 'r');
  if (file == kSysNoFile) return false;
  SysCloseFile(file);
  return true;
}

bool SysReadFile(SysFile file, void* buffer, int32_t size, int32_t* done) {
  DWORD n = 0;
  bool ok = size >= 0 && ReadFile(toHandle(file), buffer, static_cast<DWORD>(size), &n, nullptr);
  if (size < 0) SetLastError(ERROR_INVALID_PARAMETER);
  if (done != nullptr) *done = static_cast<int32_t>(n);
  return ok;
}

bool SysWriteFile(SysFile file, const void* buffer, int32_t size, int32_t* done) {
  DWORD n = 0;
  bool ok = size >= 0 && WriteFile(toHandle(file), buffer, static_cast<DWORD>(size), &n, nullptr);
  if (size < 0) SetLastError(ERROR_INVALID_PARAMETER);
  if (done != nullptr) *done = static_cast<int32_t>(n);
  return ok;
}

bool SysSeekFile(SysFile file, int64_t position, int64_t* result) {
  LARGE_INTEGER distance;
  distance.QuadPart = position < 0 ? 0 : position;
  LARGE_INTEGER at;
  if (!SetFilePointerEx(toHandle(file), distance, &at, position < 0 ? FILE_END : FILE_BEGIN)) {
    return false;
  }
  if (result != nullptr) *result = at.QuadPart;
  return true;
}

bool SysTruncateFile(SysFile file) { return SetEndOfFile(toHandle(file)) != 0; }
bool SysFlushFile(SysFile file) { return FlushFileBuffers(toHandle(file)) != 0; }
bool SysCloseFile(SysFile file) { return CloseHandle(toHandle(file)) != 0; }

bool SysStampFile(SysFile file, SysFileStamp* stamp) {
  BY_HANDLE_FILE_INFORMATION info;
  if (!GetFileInformationByHandle(toHandle(file), &info)) return false;
  stamp->volume = info.dwVolumeSerialNumber;
  stamp->index = (static_cast<uint64_t>(info.nFileIndexHigh) << 32) | info.nFileIndexLow;
  stamp->size = (static_cast<int64_t>(info.nFileSizeHigh) << 32) | info.nFileSizeLow;
  stamp->modified = fromFileTime(info.ftLastWriteTime);
  return true;
}

bool SysFileBusy(int error) {
  return error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION;
}

SysFile SysTakeLockFile(const char* path) {
  AnsiPath native(path);
  if (native.c_str() == nullptr) return kSysNoFile;
  // Shared with nobody, and gone with the last handle: a waiting process
  // cannot open it until it has been deleted, so it never holds a file
  // that the one before it is about to delete.
  HANDLE file = CreateFileA(native.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS,
                            FILE_ATTRIBUTE_NORMAL | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
  if (file == INVALID_HANDLE_VALUE) return kSysNoFile;
  return reinterpret_cast<SysFile>(file);
}

bool SysReleaseLockFile(SysFile lock, const char* /*path*/) { return SysCloseFile(lock); }

// ---- Folders and paths

namespace {
// What a scan keeps between entries: the folder (for links to files), and
// the entry that opening the search found, not yet given out.
struct ScanState {
  LStr folder;
  WIN32_FIND_DATAA data;
  bool pending;
};
}  // namespace

SysFolderScan::SysFolderScan(const char* folder) : handle_(nullptr), state_(nullptr) {
  std::unique_ptr<ScanState> state(new ScanState());
  state->folder.assign(folder);
  if (!endsInSeparator(state->folder)) state->folder.append('\\');
  LStr pattern(state->folder);
  pattern.append('*');
  AnsiPath native(pattern.ptr);
  if (native.c_str() == nullptr) return;
  HANDLE search = FindFirstFileA(native.c_str(), &state->data);
  if (search == INVALID_HANDLE_VALUE) return;
  state->pending = true;
  handle_ = search;
  state_ = state.release();
}

SysFolderScan::~SysFolderScan() {
  if (handle_ != nullptr) FindClose(static_cast<HANDLE>(handle_));
  delete static_cast<ScanState*>(state_);
}

bool SysFolderScan::next(LStr& name, SysFileInfo& info) {
  if (handle_ == nullptr) return false;
  ScanState* state = static_cast<ScanState*>(state_);
  for (;;) {
    if (!state->pending && !FindNextFileA(static_cast<HANDLE>(handle_), &state->data)) {
      return false;
    }
    state->pending = false;
    const WIN32_FIND_DATAA& data = state->data;
    const char* n = data.cFileName;
    if (n[0] == '.' && (n[1] == 0 || (n[1] == '.' && n[2] == 0))) continue;
    fillInfo(data.dwFileAttributes, data.nFileSizeHigh, data.nFileSizeLow, data.ftCreationTime,
             data.ftLastAccessTime, data.ftLastWriteTime, &info);
    fromAnsi(n, name);
    if (isFileLink(data.dwFileAttributes)) {
      LStr path(state->folder);
      path.append(name);
      // A link whose target is gone keeps its own description.
      describeTarget(path.ptr, &info);
    }
    return true;
  }
}

bool SysStat(const char* path, SysFileInfo* info) {
  WIN32_FILE_ATTRIBUTE_DATA data;
  AnsiPath native(path);
  if (native.c_str() == nullptr ||
      !GetFileAttributesExA(native.c_str(), GetFileExInfoStandard, &data))
    return false;
  fillInfo(data.dwFileAttributes, data.nFileSizeHigh, data.nFileSizeLow, data.ftCreationTime,
           data.ftLastAccessTime, data.ftLastWriteTime, info);
  if (isFileLink(data.dwFileAttributes)) describeTarget(path, info);
  return true;
}

bool SysGetAttributes(const char* path, uint32_t* attributes) {
  AnsiPath native(path);
  if (native.c_str() == nullptr) return false;
  DWORD found = GetFileAttributesA(native.c_str());
  if (found == INVALID_FILE_ATTRIBUTES) return false;
  *attributes = found;
  return true;
}

bool SysSetAttributes(const char* path, uint32_t attributes) {
  DWORD wanted = attributes & kSettableAttributes;
  if (wanted & ~FILE_ATTRIBUTE_NORMAL) wanted &= ~FILE_ATTRIBUTE_NORMAL;
  if (wanted == 0) wanted = FILE_ATTRIBUTE_NORMAL;
  AnsiPath native(path);
  return native.c_str() != nullptr && SetFileAttributesA(native.c_str(), wanted) != 0;
}

bool SysSetFileTimes(const char* path, SysTime created, SysTime accessed, SysTime modified) {
  // Backup semantics let the same call reach a folder's times.
  AnsiPath native(path);
  if (native.c_str() == nullptr) return false;
  HANDLE file = CreateFileA(native.c_str(), FILE_WRITE_ATTRIBUTES,
                            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                            OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  FILETIME times[3] = {toFileTime(created), toFileTime(accessed), toFileTime(modified)};
  bool ok = SetFileTime(file, created ? &times[0] : nullptr, accessed ? &times[1] : nullptr,
                        modified ? &times[2] : nullptr) != 0;
  DWORD error = GetLastError();
  CloseHandle(file);
  SetLastError(error);
  return ok;
}

bool SysMakeFolder(const char* path) {
  AnsiPath native(path);
  return native.c_str() != nullptr && CreateDirectoryA(native.c_str(), nullptr) != 0;
}

bool SysRemoveFolder(const char* path) {
  AnsiPath native(path);
  return native.c_str() != nullptr && RemoveDirectoryA(native.c_str()) != 0;
}

bool SysDeleteFile(const char* path) {
  AnsiPath native(path);
  return native.c_str() != nullptr && DeleteFileA(native.c_str()) != 0;
}

bool SysCopyFile(const char* from, const char* to, bool failIfExists) {
  AnsiPath source(from);
  AnsiPath target(to);
  return source.c_str() != nullptr && target.c_str() != nullptr &&
         CopyFileA(source.c_str(), target.c_str(), failIfExists) != 0;
}

bool SysRenameFile(const char* from, const char* to) {
  AnsiPath source(from);
  AnsiPath target(to);
  return source.c_str() != nullptr && target.c_str() != nullptr &&
         MoveFileA(source.c_str(), target.c_str()) != 0;
}

bool SysFullPath(const char* path, LStr& out) {
  AnsiPath native(path);
  LStr result;
  if (native.c_str() == nullptr || !fillGrowing(result, [&native](char* buffer, DWORD room) {
        return GetFullPathNameA(native.c_str(), room, buffer, nullptr);
      })) {
    return false;
  }
  fromAnsi(result.ptr, out);
  return true;
}

bool SysLongPath(const char* path, LStr& out) {
  AnsiPath native(path);
  LStr result;
  if (native.c_str() == nullptr || !fillGrowing(result, [&native](char* buffer, DWORD room) {
        return GetLongPathNameA(native.c_str(), buffer, room);
      })) {
    return false;
  }
  fromAnsi(result.ptr, out);
  return true;
}

SysNameFault SysCheckName(const char* name) {
  UStr units;
  if (!FToUStrExact(name, -1, units)) return kSysNameInexact;
  if (units.length == 0) return kSysNameReserved;
  for (int32_t i = 0; i < units.length; i++) {
    UChar unit = units[i];
    // Controls, separators, the drive and stream colon and the wild cards.
    if (unit < 0x20 || (unit < 0x80 && std::strchr("<>:\"/\\|?*", static_cast<char>(unit))))
      return kSysNameReserved;
  }
  if (std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0) return kSysNameReserved;
  UChar last = units[units.length - 1];
  if (last == '.' || last == ' ') return kSysNameAltered;
  if (isDeviceName(units)) return kSysNameDevice;
  LStr ansi;
  if (!toAnsi(units, ansi)) return kSysNameNoForm;
  LStr back;
  fromAnsi(ansi.ptr, back);
  return std::strcmp(back.ptr, name) == 0 ? kSysNameOk : kSysNameNoForm;
}

void SysPathKey(const char* relative, LStr& key) {
  // The system compares names in its own upper case.
  UStr units;
  FToUStr(relative, -1, units);
  if (units.length > 0)
    CharUpperBuffW(reinterpret_cast<wchar_t*>(units.ptr), static_cast<DWORD>(units.length));
  LStr folded;
  FUtf16ToUtf8(units.ptr, units.length, folded, /*lossless=*/true);
  key.swap(folded);
}

char SysPathSeparator() { return '\\'; }

void SysTempFolder(LStr& out) {
  LStr result;
  if (!fillGrowing(result, [](char* buffer, DWORD room) { return GetTempPathA(room, buffer); })) {
    result.assign(".\\");
  }
  fromAnsi(result.ptr, out);
}

bool SysLocalAppDataFolder(LStr& out) {
  char buffer[MAX_PATH];
  if (!SHGetSpecialFolderPathA(nullptr, buffer, CSIDL_LOCAL_APPDATA, FALSE)) return false;
  fromAnsi(buffer, out);
  return true;
}

void SysComputerName(LStr& out) {
  char buffer[MAX_COMPUTERNAME_LENGTH + 1];
  DWORD n = sizeof buffer;
  fromAnsi(GetComputerNameA(buffer, &n) ? buffer : "", out);
}

void SysUserName(LStr& out) {
  char buffer[kUserNameRoom];
  DWORD n = sizeof buffer;
  fromAnsi(GetUserNameA(buffer, &n) ? buffer : "", out);
}

// ---- Time and processes

SysTime SysNow() {
  FILETIME now;
  GetSystemTimeAsFileTime(&now);
  return fromFileTime(now);
}

int32_t SysLocalOffset(SysTime at) {
  FILETIME utc = toFileTime(at);
  SYSTEMTIME utcParts;
  SYSTEMTIME localParts;
  FILETIME local;
  // The zone's rules for that date, not today's daylight saving.
  if (!FileTimeToSystemTime(&utc, &utcParts) ||
      !SystemTimeToTzSpecificLocalTime(nullptr, &utcParts, &localParts) ||
      !SystemTimeToFileTime(&localParts, &local)) {
    return 0;
  }
  int64_t ticks = static_cast<int64_t>(fromFileTime(local)) - static_cast<int64_t>(at);
  return static_cast<int32_t>(ticks / 10000000);
}

// The heap gives no large pages; Windows takes the hint from nobody here.
void SysAdviseLargeBlock(void*, int64_t) {}

// Committed pages read as zero until written, and are backed at their first
// touch.
void* SysTakeLargeBlock(int64_t size) {
  return VirtualAlloc(nullptr, static_cast<SIZE_T>(size), MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
}

void SysFreeLargeBlock(void* block, int64_t) {
  if (block != nullptr) VirtualFree(block, 0, MEM_RELEASE);
}

void SysSleep(int32_t milliseconds) { Sleep(milliseconds < 0 ? 0 : milliseconds); }
uint32_t SysProcessId() { return GetCurrentProcessId(); }

void SysScreenSize(int32_t* width, int32_t* height) {
  RECT area;
  if (SystemParametersInfoA(SPI_GETWORKAREA, 0, &area, 0)) {
    *width = area.right - area.left;
    *height = area.bottom - area.top;
  } else {
    *width = GetSystemMetrics(SM_CXSCREEN);
    *height = GetSystemMetrics(SM_CYSCREEN);
  }
  if (*width <= 0 || *height <= 0) *width = 1920, *height = 1080;
}

// ---- Threads

SysThread SysStartThread(SysThreadEntry entry, void* argument) {
  ThreadStart* start = new ThreadStart{entry, argument};
  HANDLE thread = CreateThread(nullptr, 0, threadMain, start, 0, nullptr);
  if (thread == nullptr) delete start;
  return thread;
}

void SysReleaseThread(SysThread thread) {
  if (thread != nullptr) CloseHandle(static_cast<HANDLE>(thread));
}

SysThread SysCurrentThread() {
  // GetCurrentThread gives a stand-in that means "the caller" wherever it is
  // used; other threads need a real handle.
  HANDLE self = nullptr;
  if (!DuplicateHandle(GetCurrentProcess(), GetCurrentThread(), GetCurrentProcess(), &self, 0,
                       FALSE, DUPLICATE_SAME_ACCESS)) {
    return nullptr;
  }
  return self;
}

uint32_t SysCurrentThreadId() { return GetCurrentThreadId(); }

bool SysKillThread(SysThread thread) {
  HANDLE handle = static_cast<HANDLE>(thread);
  DWORD code = 0;
  if (GetExitCodeThread(handle, &code) && code != STILL_ACTIVE) {
    SetLastError(ERROR_INVALID_HANDLE);
    return false;
  }
  return TerminateThread(handle, 0) != 0;
}

SysEvent SysCreateEvent() { return CreateEventA(nullptr, FALSE, FALSE, nullptr); }
bool SysCloseEvent(SysEvent event) { return CloseHandle(static_cast<HANDLE>(event)) != 0; }
bool SysSetEvent(SysEvent event) { return SetEvent(static_cast<HANDLE>(event)) != 0; }

int SysWaitEvent(SysEvent event, int32_t milliseconds) {
  switch (WaitForSingleObject(static_cast<HANDLE>(event), toTimeout(milliseconds))) {
    case WAIT_OBJECT_0:
      return 0;
    case WAIT_TIMEOUT:
      return 2;
    default:
      return -1;
  }
}

int SysWaitEvents(SysEvent first, SysEvent second, int32_t milliseconds) {
  HANDLE events[2] = {static_cast<HANDLE>(first), static_cast<HANDLE>(second)};
  switch (WaitForMultipleObjects(2, events, FALSE, toTimeout(milliseconds))) {
    case WAIT_OBJECT_0:
      return 0;
    case WAIT_OBJECT_0 + 1:
      return 1;
    case WAIT_TIMEOUT:
      return 2;
    default:
      return -1;
  }
}

SysLock SysCreateLock() {
  // Plain new, not the pooled allocator: the allocator itself takes a lock.
  CRITICAL_SECTION* section = new CRITICAL_SECTION;
  InitializeCriticalSection(section);
  return section;
}

void SysDeleteLock(SysLock lock) {
  if (lock == nullptr) return;
  CRITICAL_SECTION* section = static_cast<CRITICAL_SECTION*>(lock);
  DeleteCriticalSection(section);
  delete section;
}

void SysEnterLock(SysLock lock) { EnterCriticalSection(static_cast<CRITICAL_SECTION*>(lock)); }
void SysLeaveLock(SysLock lock) { LeaveCriticalSection(static_cast<CRITICAL_SECTION*>(lock)); }

// ---- Break signal

void SysHoldBreak() {
  ExclusiveGuard guard(&gBreakLock);
  if (gBreakHolds++ > 0) return;
  auto previous = std::signal(SIGINT, SIG_IGN);
  if (previous == SIG_DFL) {
    gBreakIgnoredHere = true;
  } else if (previous != SIG_ERR) {
    std::signal(SIGINT, previous);  // the program's own handler stays
  }
}

void SysReleaseBreak() {
  ExclusiveGuard guard(&gBreakLock);
  if (gBreakHolds == 0 || --gBreakHolds > 0 || !gBreakIgnoredHere) return;
  gBreakIgnoredHere = false;
  auto previous = std::signal(SIGINT, SIG_DFL);
  // A handler installed meanwhile stays.
  if (previous != SIG_IGN && previous != SIG_ERR) std::signal(SIGINT, previous);
}

// ---- Code pages

int SysCodePage() { return static_cast<int>(GetACP()); }

int32_t SysToWide(int codePage, const char* text, int32_t size, uint16_t* out, int32_t room) {
  return MultiByteToWideChar(static_cast<UINT>(codePage), 0, text, size,
                             reinterpret_cast<LPWSTR>(out), room);
}

int32_t SysFromWide(int codePage, const uint16_t* text, int32_t size, char* out, int32_t room,
                    bool* usedDefault) {
  if (usedDefault != nullptr) *usedDefault = false;
  // The UTF code pages refuse the no-best-fit flag and the default test.
  bool utf = codePage == CP_UTF7 || codePage == CP_UTF8;
  BOOL used = FALSE;
  int32_t n = WideCharToMultiByte(static_cast<UINT>(codePage), utf ? 0 : WC_NO_BEST_FIT_CHARS,
                                  reinterpret_cast<LPCWSTR>(text), size, out, room, nullptr,
                                  utf ? nullptr : &used);
  if (usedDefault != nullptr) *usedDefault = used != FALSE;
  return n;
}

// ---- Console and boxes

bool SysConsoleWrite(const char* text, int32_t size) {
  if (text == nullptr) return false;
  if (size < 0) size = static_cast<int32_t>(std::strlen(text));
  ExclusiveGuard guard(&gConsoleLock);
  HANDLE output = gConsoleOutput;
  bool created = false;
  if (output == nullptr) {
    output = GetStdHandle(STD_ERROR_HANDLE);
    if (output == nullptr || output == INVALID_HANDLE_VALUE) {
      // A program without a console (the windowed one) makes one on first
      // use and keeps it until SysConsoleRelease.
      if (!AllocConsole()) return false;
      output = CreateFileA("CONOUT$", GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                           OPEN_EXISTING, 0, nullptr);
      if (output == INVALID_HANDLE_VALUE) {
        FreeConsole();
        return false;
      }
      gConsoleOutput = output;
      created = true;
    }
  }
  writeHandle(output, text, size);
  return created;
}

void SysConsoleRelease() {
  ExclusiveGuard guard(&gConsoleLock);
  if (gConsoleOutput == nullptr) return;
  CloseHandle(gConsoleOutput);
  gConsoleOutput = nullptr;
  FreeConsole();
}

int SysMessageBox(const char* title, const char* text, uint32_t flags) {
  // The box is owned by the window with the focus, which gets it back after.
  HWND focus = GetFocus();
  int result = MessageBoxA(focus, text, title, flags);
  if (focus != nullptr) SetFocus(focus);
  return result;
}

void SysExitProcess(int code) {
  std::fflush(nullptr);
  _exit(code);
}
