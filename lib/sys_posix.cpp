// The platform layer on POSIX (Linux).
//
// Every path arrives as Shift-JIS text with "{%uXXXX}" escapes and is turned
// into the file system's UTF-8 right before the system call; every name read
// back goes the other way. The UTF-8 step is lossless (see lib/utf8.h), so a
// name that is not valid UTF-8 still comes back to the same bytes.
#include "lib/sys.h"

#include <dirent.h>
#include <errno.h>
#include <fcntl.h>
#include <iconv.h>
#include <pthread.h>
#include <pwd.h>
#include <sched.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

#include "lib/convert.h"
#include "lib/lstr.h"
#include "lib/ustr.h"
#include "lib/utf8.h"

namespace {

const int kShiftJis = 932;
const int kUtf8 = 65001;
const int kUtf7 = 65000;
// 100-nanosecond ticks from 1601-01-01 to 1970-01-01.
const int64_t kUnixEpochTicks = 116444736000000000LL;
const int64_t kTicksPerSecond = 10000000;

// ---- Text

// The units that a core name always holds as escapes here: the backslash is
// a separator to core text and an ordinary character to this file system.
const UChar kAlwaysEscaped[] = {'\\', 0};

// The file system's UTF-8 form of a core path.
class NativeName {
 public:
  explicit NativeName(const char* text) {
    UStr units;
    FToUStr(text, -1, units, kShiftJis);
    FUtf16ToUtf8(units.ptr, units.length, bytes_, /*lossless=*/true);
  }
  const char* c_str() const { return bytes_.ptr; }
  const LStr& bytes() const { return bytes_; }

 private:
  LStr bytes_;
};

// Replaces out with the core form of UTF-8 bytes from the system.
void fromNative(const char* bytes, int32_t n, LStr& out) {
  UStr units;
  FUtf8ToUtf16(bytes, n, units, /*lossless=*/true);
  LStr text;
  FToLStrExact(units.ptr, units.length, text, kAlwaysEscaped);
  out.swap(text);
}

// ---- Process-wide state

// One mutex serves the events (with their one condition), the thread records
// and the break count. A single condition for all events is what makes a
// wait on two events simple: every set wakes every waiter, and each waiter
// looks at its own events.
pthread_mutex_t gStateMutex = PTHREAD_MUTEX_INITIALIZER;
pthread_cond_t gEventCondition = PTHREAD_COND_INITIALIZER;

// Holds a mutex for one scope; the unlock also runs when a cancelled thread
// unwinds out of a wait.
class MutexGuard {
 public:
  explicit MutexGuard(pthread_mutex_t* mutex) : mutex_(mutex) { pthread_mutex_lock(mutex_); }
  ~MutexGuard() { pthread_mutex_unlock(mutex_); }
  MutexGuard(const MutexGuard&) = delete;
  MutexGuard& operator=(const MutexGuard&) = delete;

 private:
  pthread_mutex_t* mutex_;
};

// Closes a descriptor at the end of a scope, keeping errno.
class FdCloser {
 public:
  explicit FdCloser(int fd) : fd_(fd) {}
  ~FdCloser() {
    if (fd_ < 0) return;
    int saved = errno;
    // close is a cancellation point, and a cancellation acted on inside a
    // destructor would end the process rather than the thread.
    int state;
    pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &state);
    close(fd_);
    pthread_setcancelstate(state, nullptr);
    errno = saved;
  }
  FdCloser(const FdCloser&) = delete;
  FdCloser& operator=(const FdCloser&) = delete;
  int get() const { return fd_; }
  int release() {
    int fd = fd_;
    fd_ = -1;
    return fd;
  }

 private:
  int fd_;
};

// ---- Times and attributes

SysTime toSysTime(int64_t seconds, int64_t nanoseconds) {
  return static_cast<SysTime>(seconds * kTicksPerSecond + nanoseconds / 100 + kUnixEpochTicks);
}

timespec toTimespec(SysTime time) {
  timespec result;
  if (time == 0) {
    result.tv_sec = 0;
    result.tv_nsec = UTIME_OMIT;
    return result;
  }
  int64_t ticks = static_cast<int64_t>(time) - kUnixEpochTicks;
  int64_t seconds = ticks / kTicksPerSecond;
  int64_t rest = ticks % kTicksPerSecond;
  if (rest < 0) rest += kTicksPerSecond, seconds--;
  result.tv_sec = static_cast<time_t>(seconds);
  result.tv_nsec = static_cast<long>(rest * 100);
  return result;
}

// Whether the last component of a path starts with a dot ("." and ".."
// themselves name ordinary folders).
bool isHiddenName(const char* path) {
  size_t end = std::strlen(path);
  while (end > 1 && path[end - 1] == '/') end--;
  size_t start = end;
  while (start > 0 && path[start - 1] != '/') start--;
  size_t n = end - start;
  if (n == 0 || path[start] != '.') return false;
  return !(n == 1 || (n == 2 && path[start + 1] == '.'));
}

void fillInfo(const struct statx& st, bool hidden, SysFileInfo* info) {
  uint32_t attributes = 0;
  if (!(st.stx_mode & S_IWUSR)) attributes |= kSysAttrReadOnly;
  if (hidden) attributes |= kSysAttrHidden;
  if (S_ISDIR(st.stx_mode)) {
    attributes |= kSysAttrDirectory;
  } else if (!S_ISREG(st.stx_mode)) {
    attributes |= kSysAttrDevice;
  }
  if (attributes == 0) attributes = kSysAttrNormal;
  info->attributes = attributes;
  info->size = S_ISREG(st.stx_mode) ? static_cast<int64_t>(st.stx_size) : 0;
  // Not every file system keeps a birth time; the change time is the
  // nearest thing there is.
  const statx_timestamp& created = (st.stx_mask & STATX_BTIME) ? st.stx_btime : st.stx_ctime;
  info->created = toSysTime(created.tv_sec, created.tv_nsec);
  info->accessed = toSysTime(st.stx_atime.tv_sec, st.stx_atime.tv_nsec);
  info->modified = toSysTime(st.stx_mtime.tv_sec, st.stx_mtime.tv_nsec);
}

bool statxAt(int folder, const char* name, bool follow, struct statx* st) {
  int flags = AT_STATX_SYNC_AS_STAT | (follow ? 0 : AT_SYMLINK_NOFOLLOW);
  return statx(folder, name, flags, STATX_BASIC_STATS | STATX_BTIME, st) == 0;
}

// Describes the entry `name` of a folder. A link to a file gives its target;
// a link to a folder gives kSysAttrDirectory | kSysAttrLink, and a link that
// leads nowhere kSysAttrLink alone. `mayBeLink` false skips the question
// when the folder listing already said what the entry is.
bool describe(int folder, const char* name, bool hidden, bool mayBeLink, SysFileInfo* info) {
  struct statx target;
  if (statxAt(folder, name, /*follow=*/true, &target)) {
    fillInfo(target, hidden, info);
    struct statx link;
    if (mayBeLink && S_ISDIR(target.stx_mode) && statxAt(folder, name, /*follow=*/false, &link) &&
        S_ISLNK(link.stx_mode)) {
      info->attributes |= kSysAttrLink;
    }
    return true;
  }
  int saved = errno;
  struct statx link;
  if (!mayBeLink || !statxAt(folder, name, /*follow=*/false, &link) || !S_ISLNK(link.stx_mode)) {
    errno = saved;
    return false;
  }
  fillInfo(link, hidden, info);
  info->attributes = hidden ? kSysAttrLink | kSysAttrHidden : kSysAttrLink;
  info->size = 0;
  return true;
}

// ---- Files

int openNative(const char* path, int flags, mode_t mode) {
  for (;;) {
    int fd = open(path, flags | O_CLOEXEC, mode);
    if (fd >= 0 || errno != EINTR) return fd;
  }
}

// Opens for writing with the library's sharing: the exclusive lock comes
// before anything is emptied, so a second writer fails without harming the
// first one's file. `avoid` is a descriptor the target must not be (a copy
// onto its own source would empty it).
int openForWrite(const char* path, int extraFlags, bool empty, int avoid) {
  FdCloser fd(openNative(path, O_WRONLY | O_CREAT | extraFlags, 0666));
  if (fd.get() < 0) return -1;
  if (flock(fd.get(), LOCK_EX | LOCK_NB) != 0) {
    // "Resource temporarily unavailable" would puzzle a user; the file is busy.
    if (errno == EWOULDBLOCK) errno = EBUSY;
    return -1;
  }
  if (avoid >= 0) {
    struct stat mine, theirs;
    if (fstat(fd.get(), &mine) != 0 || fstat(avoid, &theirs) != 0) return -1;
    if (mine.st_dev == theirs.st_dev && mine.st_ino == theirs.st_ino) {
      errno = EINVAL;
      return -1;
    }
  }
  // A file that is empty already, as every new one is, is not emptied
  // again: on some file systems emptying a file marks it to be written out
  // to the disk when it closes, which made an extract wait on the disk once
  // per file.
  if (empty) {
    struct stat st;
    if (fstat(fd.get(), &st) != 0) return -1;
    if (st.st_size != 0 && ftruncate(fd.get(), 0) != 0) return -1;
  }
  return fd.release();
}

bool readAll(int fd, char* buffer, int32_t size, int32_t* done) {
  int32_t total = 0;
  bool ok = true;
  while (total < size) {
    ssize_t n = read(fd, buffer + total, static_cast<size_t>(size - total));
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) ok = false;
    if (n <= 0) break;
    total += static_cast<int32_t>(n);
  }
  if (done != nullptr) *done = total;
  return ok;
}

bool writeAll(int fd, const char* buffer, int32_t size, int32_t* done) {
  int32_t total = 0;
  bool ok = true;
  while (total < size) {
    ssize_t n = write(fd, buffer + total, static_cast<size_t>(size - total));
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) {
      ok = false;
      break;
    }
    total += static_cast<int32_t>(n);
  }
  if (done != nullptr) *done = total;
  return ok;
}

// ---- Users and folders

// The name or the home folder of the effective user from the password file.
bool passwdField(bool home, LStr& out) {
  char buffer[16384];
  struct passwd entry;
  struct passwd* found = nullptr;
  if (getpwuid_r(geteuid(), &entry, buffer, sizeof buffer, &found) != 0 || found == nullptr) {
    return false;
  }
  const char* field = home ? found->pw_dir : found->pw_name;
  if (field == nullptr || field[0] == 0) return false;
  out.assign(field);
  return true;
}

// ---- Code pages

const char* const kUtf16Name = __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__ ? "UTF-16LE" : "UTF-16BE";

// iconv descriptors are not thread-safe, and opening one costs a search of
// the converter modules, so each thread keeps the pair of its last code page.
class IconvPair {
 public:
  IconvPair() = default;
  ~IconvPair() { reset(); }
  IconvPair(const IconvPair&) = delete;
  IconvPair& operator=(const IconvPair&) = delete;

  // False with errno when the system has no converter for the code page.
  bool use(int codePage) {
    if (codePage == codePage_) return true;
    reset();
    char name[24];
    if (codePage == kUtf7) {
      std::snprintf(name, sizeof name, "UTF-7");
    } else {
      std::snprintf(name, sizeof name, "CP%d", codePage);
    }
    toWide_ = iconv_open(kUtf16Name, name);
    if (toWide_ == none()) return false;
    fromWide_ = iconv_open(name, kUtf16Name);
    if (fromWide_ == none()) {
      reset();
      return false;
    }
    codePage_ = codePage;
    return true;
  }
  iconv_t toWide() const { return toWide_; }
  iconv_t fromWide() const { return fromWide_; }

 private:
  void reset() {
    int saved = errno;
    if (toWide_ != none()) iconv_close(toWide_);
    if (fromWide_ != none()) iconv_close(fromWide_);
    toWide_ = fromWide_ = none();
    codePage_ = -1;
    errno = saved;
  }

  // iconv's "no descriptor", written out where it is needed: a static member
  // would be initialised too late for a conversion run by a static constructor.
  static iconv_t none() { return reinterpret_cast<iconv_t>(-1); }

  int codePage_ = -1;
  iconv_t toWide_ = none();
  iconv_t fromWide_ = none();
};

thread_local IconvPair tIconv;

// Runs iconv over the input, handing every piece of output to `sink`.
// Returns the bytes consumed; it stops short at input that it cannot convert
// (errno EILSEQ or EINVAL) or on another failure (errno set).
template <typename Sink>
size_t runIconv(iconv_t cd, const char* input, size_t size, Sink sink) {
  iconv(cd, nullptr, nullptr, nullptr, nullptr);
  char* in = const_cast<char*>(input);
  size_t left = size;
  char chunk[512];
  while (left > 0) {
    char* out = chunk;
    size_t room = sizeof chunk;
    size_t result = iconv(cd, &in, &left, &out, &room);
    int error = errno;  // the sink allocates, which may change errno
    sink(chunk, sizeof chunk - room);
    if (result == static_cast<size_t>(-1) && error != E2BIG) {
      errno = error;
      break;
    }
  }
  return size - left;
}

void appendUnits(UStr& out, const char* bytes, size_t n) {
  UChar units[256];
  std::memcpy(units, bytes, n);
  out.append(units, static_cast<int32_t>(n / 2));
}

bool isShiftJisLead(unsigned char c) {
  return (c >= 0x81 && c <= 0x9F) || (c >= 0xE0 && c <= 0xFC);
}

// The single bytes that Windows maps in code page 932 although the published
// table leaves them out; kept so that 8-bit text holding them survives.
struct ExtraByte {
  unsigned char byte;
  UChar unit;
};
const ExtraByte kShiftJisExtra[] = {
    {0x80, 0x0080}, {0xA0, 0xF8F0}, {0xFD, 0xF8F1}, {0xFE, 0xF8F2}, {0xFF, 0xF8F3}};

// ASCII stands for itself in code page 932 and in UTF-8, and nearly every
// name is ASCII: a scan of a folder spent a tenth of its time in iconv.
bool asciiIsItself(int codePage) { return codePage == kShiftJis || codePage == kUtf8; }

template <typename Unit>
bool allAscii(const Unit* text, int32_t size) {
  for (int32_t i = 0; i < size; i++)
    if (static_cast<uint32_t>(text[i]) >= 0x80) return false;
  return true;
}

// Appends ASCII text as units of the other width.
template <typename To, typename From, typename Out>
void appendAscii(const From* text, int32_t size, Out& out) {
  To chunk[256];
  for (int32_t at = 0; at < size;) {
    const int32_t n = size - at < 256 ? size - at : 256;
    for (int32_t i = 0; i < n; i++) chunk[i] = static_cast<To>(text[at + i]);
    out.append(chunk, n);
    at += n;
  }
}

// Decodes 8-bit text in a code page the way the system does without the
// strict flag: what cannot be read becomes the default character.
bool decodeCodePage(int codePage, const char* text, int32_t size, UStr& out) {
  if (asciiIsItself(codePage) && allAscii(reinterpret_cast<const unsigned char*>(text), size)) {
    appendAscii<UChar>(text, size, out);
    return true;
  }
  if (!tIconv.use(codePage)) return false;
  const UChar fallback = codePage == kShiftJis ? 0x30FB : 0xFFFD;
  auto sink = [&out](const char* bytes, size_t n) { appendUnits(out, bytes, n); };
  int32_t at = 0;
  while (at < size) {
    at += static_cast<int32_t>(runIconv(tIconv.toWide(), text + at, size - at, sink));
    if (at >= size) break;
    if (errno != EILSEQ && errno != EINVAL) return false;
    unsigned char c = static_cast<unsigned char>(text[at]);
    UChar unit = fallback;
    int32_t skip = 1;
    if (codePage == kShiftJis) {
      for (const ExtraByte& extra : kShiftJisExtra) {
        if (extra.byte == c) unit = extra.unit;
      }
      // A lead byte takes the next byte with it, whatever it is, as the
      // system does: an unknown pair is one default character.
      if (isShiftJisLead(c) && at + 1 < size) skip = 2;
    }
    out.append(unit);
    at += skip;
  }
  return true;
}

// The exact form of one character (one unit or a surrogate pair) in the code
// page, appended to out; false when it has none. "Exact" means it reads back
// as the same units: iconv's tables map some characters to look-alikes (the
// yen sign to the backslash, for one), which the system's no-best-fit mode
// refuses, and a file name must not change into another one.
bool encodeCharacter(int codePage, const UChar* units, int32_t n, LStr& out) {
  LStr bytes;
  size_t consumed = runIconv(tIconv.fromWide(), reinterpret_cast<const char*>(units), n * 2,
                             [&bytes](const char* piece, size_t size) {
                               bytes.append(piece, static_cast<int32_t>(size));
                             });
  if (consumed != static_cast<size_t>(n) * 2) {
    if (codePage != kShiftJis || n != 1) return false;
    for (const ExtraByte& extra : kShiftJisExtra) {
      if (extra.unit == units[0]) {
        out.append(static_cast<char>(extra.byte));
        return true;
      }
    }
    return false;
  }
  UStr back;
  if (!decodeCodePage(codePage, bytes.ptr, bytes.length, back) || back.length != n ||
      std::memcmp(back.ptr, units, n * sizeof(UChar)) != 0) {
    return false;
  }
  out.append(bytes);
  return true;
}

// Encodes 16-bit text in a code page with no best fit: a unit without an
// exact form becomes '?', and usedDefault says so.
bool encodeCodePage(int codePage, const UChar* text, int32_t size, LStr& out, bool* usedDefault) {
  if (asciiIsItself(codePage) && allAscii(text, size)) {
    appendAscii<char>(text, size, out);
    return true;
  }
  if (!tIconv.use(codePage)) return false;
  // The common case converts in one run and reads back the same; only text
  // that fails that goes character by character.
  LStr whole;
  size_t consumed = runIconv(
      tIconv.fromWide(), reinterpret_cast<const char*>(text), size * 2,
      [&whole](const char* piece, size_t n) { whole.append(piece, static_cast<int32_t>(n)); });
  if (consumed == static_cast<size_t>(size) * 2) {
    UStr back;
    if (!decodeCodePage(codePage, whole.ptr, whole.length, back)) return false;
    if (back.length == size && std::memcmp(back.ptr, text, size * sizeof(UChar)) == 0) {
      out.append(whole);
      return true;
    }
  } else if (errno != EILSEQ && errno != EINVAL) {
    return false;
  }
  for (int32_t i = 0; i < size;) {
    bool pair = text[i] >= 0xD800 && text[i] <= 0xDBFF && i + 1 < size && text[i + 1] >= 0xDC00 &&
                text[i + 1] <= 0xDFFF;
    int32_t n = pair ? 2 : 1;
    if (!encodeCharacter(codePage, text + i, n, out)) {
      // One default character per unit, as the system does.
      for (int32_t k = 0; k < n; k++) out.append('?');
      *usedDefault = true;
    }
    i += n;
  }
  return true;
}

int effectiveCodePage(int codePage) {
  // The system, OEM and thread code pages are all the one code page here.
  return (codePage == 0 || codePage == 1 || codePage == 3) ? kShiftJis : codePage;
}

// Hands a result over the way the system's conversions do: room 0 asks for
// the size, too little room is a failure.
template <typename T>
int32_t deliver(const T* result, int32_t n, T* out, int32_t room) {
  if (room == 0) return n;
  if (out == nullptr || n > room) {
    errno = out == nullptr ? EINVAL : ENOBUFS;
    return 0;
  }
  std::memcpy(out, result, n * sizeof(T));
  return n;
}

// Writes 8-bit text to standard error in the terminal's UTF-8 (ASCII, the
// usual case, as it is). Escapes are left as they stand: turning them into
// characters could report a message, which comes back here.
void writeDiagnostic(const char* text, int32_t size) {
  int32_t i = 0;
  while (i < size && static_cast<unsigned char>(text[i]) < 0x80) i++;
  if (i == size) {
    writeAll(STDERR_FILENO, text, size, nullptr);
    return;
  }
  UStr units;
  LStr bytes;
  if (!decodeCodePage(kShiftJis, text, size, units)) {
    writeAll(STDERR_FILENO, text, size, nullptr);
    return;
  }
  FUtf16ToUtf8(units.ptr, units.length, bytes, /*lossless=*/false);
  writeAll(STDERR_FILENO, bytes.ptr, bytes.length, nullptr);
}

// ---- Threads

// A thread handle. A thread started here holds one reference while it runs
// and clears `running` as it ends (also when it is cancelled), so a kill that
// comes late finds the flag rather than a thread id the system reused.
struct PosixThread {
  pthread_t id;
  int32_t references;
  bool running;
};

struct ThreadStart {
  PosixThread* thread;
  SysThreadEntry entry;
  void* argument;
};

thread_local PosixThread* tSelf = nullptr;

void dropReference(PosixThread* thread) {
  if (--thread->references == 0) delete thread;
}

class RunningMark {
 public:
  explicit RunningMark(PosixThread* thread) : thread_(thread) {}
  ~RunningMark() {
    MutexGuard guard(&gStateMutex);
    thread_->running = false;
    dropReference(thread_);
  }
  RunningMark(const RunningMark&) = delete;
  RunningMark& operator=(const RunningMark&) = delete;

 private:
  PosixThread* thread_;
};

void* threadMain(void* raw) {
  ThreadStart start = *static_cast<ThreadStart*>(raw);
  delete static_cast<ThreadStart*>(raw);
  {
    MutexGuard guard(&gStateMutex);
    start.thread->id = pthread_self();
  }
  tSelf = start.thread;
  RunningMark mark(start.thread);
  start.entry(start.argument);
  return nullptr;
}

struct PosixEvent {
  bool signalled = false;
};

int waitForEvents(SysEvent first, SysEvent second, int32_t milliseconds) {
  PosixEvent* a = static_cast<PosixEvent*>(first);
  PosixEvent* b = static_cast<PosixEvent*>(second);
  if (a == nullptr) {
    errno = EINVAL;
    return -1;
  }
  timespec deadline;
  if (milliseconds >= 0) {
    clock_gettime(CLOCK_MONOTONIC, &deadline);
    deadline.tv_sec += milliseconds / 1000;
    deadline.tv_nsec += (milliseconds % 1000) * 1000000L;
    if (deadline.tv_nsec >= 1000000000L) deadline.tv_nsec -= 1000000000L, deadline.tv_sec++;
  }
  MutexGuard guard(&gStateMutex);
  for (bool timedOut = false;;) {
    if (a->signalled) {
      a->signalled = false;
      return 0;
    }
    if (b != nullptr && b->signalled) {
      b->signalled = false;
      return 1;
    }
    if (timedOut) return 2;
    int error = milliseconds < 0 ? pthread_cond_wait(&gEventCondition, &gStateMutex)
                                 : pthread_cond_clockwait(&gEventCondition, &gStateMutex,
                                                          CLOCK_MONOTONIC, &deadline);
    if (error == ETIMEDOUT) {
      timedOut = true;
    } else if (error != 0) {
      errno = error;
      return -1;
    }
  }
}

int32_t gBreakHolds = 0;
bool gBreakIgnoredHere = false;

}  // namespace

// ---- Errors

int SysLastError() { return errno; }
void SysSetLastError(int code) { errno = code; }

namespace {
// strerror_r comes in two forms; these overloads take whichever the C
// library declares.
[[maybe_unused]] const char* errorTextOf(int result, const char* buffer) {
  return result == 0 ? buffer : nullptr;
}
[[maybe_unused]] const char* errorTextOf(const char* result, const char*) { return result; }
}  // namespace

void SysErrorText(int code, LStr& out) {
  char buffer[256];
  buffer[0] = 0;
  const char* text = errorTextOf(strerror_r(code, buffer, sizeof buffer), buffer);
  if (text == nullptr || text[0] == 0) text = "(no message)";
  fromNative(text, -1, out);
}

int SysErrno() { return errno; }
void SysErrnoText(int code, LStr& out) { SysErrorText(code, out); }

// ---- Files

SysFile SysOpenFile(const char* path, char mode) {
  if (mode != 'r' && mode != 'w' && mode != 'a') {
    errno = EINVAL;
    return kSysNoFile;
  }
  NativeName native(path);
  if (mode != 'r') {
    int fd = openForWrite(native.c_str(), 0, /*empty=*/mode == 'w', /*avoid=*/-1);
    return fd < 0 ? kSysNoFile : fd;
  }
  FdCloser fd(openNative(native.c_str(), O_RDONLY, 0));
  if (fd.get() < 0) return kSysNoFile;
  // A folder opens for reading here but not on Windows; keep the two alike.
  struct stat st;
  if (fstat(fd.get(), &st) != 0) return kSysNoFile;
  if (S_ISDIR(st.st_mode)) {
    errno = EISDIR;
    return kSysNoFile;
  }
  return fd.release();
}

bool SysCanReadFile(const char* path) {
  NativeName native(path);
  return faccessat(AT_FDCWD, native.c_str(), R_OK, AT_EACCESS) == 0;
}

bool SysReadFile(SysFile file, void* buffer, int32_t size, int32_t* done) {
  if (done != nullptr) *done = 0;
  if (size < 0) {
    errno = EINVAL;
    return false;
  }
  return readAll(static_cast<int>(file), static_cast<char*>(buffer), size, done);
}

bool SysWriteFile(SysFile file, const void* buffer, int32_t size, int32_t* done) {
  if (done != nullptr) *done = 0;
  if (size < 0) {
    errno = EINVAL;
    return false;
  }
  return writeAll(static_cast<int>(file), static_cast<const char*>(buffer), size, done);
}

bool SysSeekFile(SysFile file, int64_t position, int64_t* result) {
  off_t at = position < 0 ? lseek(static_cast<int>(file), 0, SEEK_END)
                          : lseek(static_cast<int>(file), static_cast<off_t>(position), SEEK_SET);
  if (at < 0) return false;
  if (result != nullptr) *result = at;
  return true;
}

bool SysTruncateFile(SysFile file) {
  off_t at = lseek(static_cast<int>(file), 0, SEEK_CUR);
  return at >= 0 && ftruncate(static_cast<int>(file), at) == 0;
}

bool SysFlushFile(SysFile file) { return fsync(static_cast<int>(file)) == 0; }

bool SysCloseFile(SysFile file) {
  if (file == kSysNoFile) {
    errno = EBADF;
    return false;
  }
  // Linux frees the descriptor even when close reports EINTR; retrying
  // could close a descriptor another thread has just been given.
  return close(static_cast<int>(file)) == 0 || errno == EINTR;
}

bool SysStampFile(SysFile file, SysFileStamp* stamp) {
  struct stat st;
  if (fstat(static_cast<int>(file), &st) != 0) return false;
  stamp->volume = static_cast<uint64_t>(st.st_dev);
  stamp->index = static_cast<uint64_t>(st.st_ino);
  stamp->size = st.st_size;
  stamp->modified = toSysTime(st.st_mtim.tv_sec, st.st_mtim.tv_nsec);
  return true;
}

bool SysFileBusy(int error) { return error == EBUSY; }

SysFile SysTakeLockFile(const char* path) {
  NativeName native(path);
  int fd = openForWrite(native.c_str(), 0, /*empty=*/false, /*avoid=*/-1);
  if (fd < 0) return kSysNoFile;
  // The holder before may have deleted the path between our open and our
  // lock: the lock is then on a file nobody else will find, so it is
  // refused, and the caller's next try makes the file anew.
  struct stat held, named;
  if (fstat(fd, &held) != 0 || stat(native.c_str(), &named) != 0 || held.st_dev != named.st_dev ||
      held.st_ino != named.st_ino) {
    close(fd);
    errno = EBUSY;
    return kSysNoFile;
  }
  return fd;
}

bool SysReleaseLockFile(SysFile lock, const char* path) {
  // Deleted while still locked, so that no waiting process has locked it.
  bool deleted = unlink(NativeName(path).c_str()) == 0;
  int error = errno;
  close(static_cast<int>(lock));
  errno = error;
  return deleted;
}

// ---- Folders and paths

SysFolderScan::SysFolderScan(const char* folder) : handle_(nullptr), state_(nullptr) {
  NativeName native(folder);
  handle_ = opendir(native.c_str());
}

SysFolderScan::~SysFolderScan() {
  if (handle_ != nullptr) closedir(static_cast<DIR*>(handle_));
}

bool SysFolderScan::next(LStr& name, SysFileInfo& info) {
  DIR* dir = static_cast<DIR*>(handle_);
  if (dir == nullptr) return false;
  for (;;) {
    errno = 0;
    struct dirent* entry = readdir(dir);
    if (entry == nullptr) return false;
    const char* n = entry->d_name;
    if (n[0] == '.' && (n[1] == 0 || (n[1] == '.' && n[2] == 0))) continue;
    bool hidden = n[0] == '.';
    bool mayBeLink = entry->d_type == DT_LNK || entry->d_type == DT_UNKNOWN;
    if (!describe(dirfd(dir), n, hidden, mayBeLink, &info)) {
      // Gone between the listing and the question: not an entry any more.
      if (errno == ENOENT) continue;
      // Listed but not to be examined (a folder without search right): the
      // name is still worth reporting.
      info = SysFileInfo();
      info.attributes = entry->d_type == DT_DIR ? kSysAttrDirectory : kSysAttrNormal;
      if (hidden) info.attributes |= kSysAttrHidden;
    }
    fromNative(n, -1, name);
    return true;
  }
}

bool SysStat(const char* path, SysFileInfo* info) {
  NativeName native(path);
  return describe(AT_FDCWD, native.c_str(), isHiddenName(native.c_str()), /*mayBeLink=*/true, info);
}

bool SysGetAttributes(const char* path, uint32_t* attributes) {
  SysFileInfo info;
  if (!SysStat(path, &info)) return false;
  *attributes = info.attributes;
  return true;
}

bool SysSetAttributes(const char* path, uint32_t attributes) {
  NativeName native(path);
  struct stat st;
  if (stat(native.c_str(), &st) != 0) return false;
  mode_t mode = st.st_mode & 07777;
  if (attributes & kSysAttrReadOnly) {
    mode &= ~static_cast<mode_t>(S_IWUSR | S_IWGRP | S_IWOTH);
  } else {
    mode |= S_IWUSR;
  }
  return chmod(native.c_str(), mode) == 0;
}

bool SysSetFileTimes(const char* path, SysTime /*created*/, SysTime accessed, SysTime modified) {
  // The birth time cannot be set on POSIX; it is left as it is.
  NativeName native(path);
  timespec times[2] = {toTimespec(accessed), toTimespec(modified)};
  return utimensat(AT_FDCWD, native.c_str(), times, 0) == 0;
}

bool SysMakeFolder(const char* path) { return mkdir(NativeName(path).c_str(), 0777) == 0; }
bool SysRemoveFolder(const char* path) { return rmdir(NativeName(path).c_str()) == 0; }
bool SysDeleteFile(const char* path) { return unlink(NativeName(path).c_str()) == 0; }

bool SysCopyFile(const char* from, const char* to, bool failIfExists) {
  NativeName source(from);
  NativeName target(to);
  FdCloser in(openNative(source.c_str(), O_RDONLY, 0));
  if (in.get() < 0) return false;
  struct stat st;
  if (fstat(in.get(), &st) != 0) return false;
  if (S_ISDIR(st.st_mode)) {
    errno = EISDIR;
    return false;
  }
  FdCloser out(openForWrite(target.c_str(), failIfExists ? O_EXCL : 0, /*empty=*/true, in.get()));
  if (out.get() < 0) return false;
  // Like the system's copy: the content, then the permission bits and the
  // two times, which an archive compares.
  char buffer[65536];
  bool ok = true;
  for (;;) {
    int32_t got;
    int32_t written;
    ok = readAll(in.get(), buffer, sizeof buffer, &got) &&
         writeAll(out.get(), buffer, got, &written);
    if (!ok || got < static_cast<int32_t>(sizeof buffer)) break;
  }
  timespec times[2] = {st.st_atim, st.st_mtim};
  ok = ok && fchmod(out.get(), st.st_mode & 07777) == 0 && futimens(out.get(), times) == 0;
  if (!ok) {
    int saved = errno;
    unlink(target.c_str());
    errno = saved;
  }
  return ok;
}

bool SysRenameFile(const char* from, const char* to) {
  NativeName source(from);
  NativeName target(to);
  if (renameat2(AT_FDCWD, source.c_str(), AT_FDCWD, target.c_str(), RENAME_NOREPLACE) == 0) {
    return true;
  }
  if (errno != EINVAL && errno != ENOSYS) return false;
  // A file system without the no-replace flag: test, then rename.
  struct stat st;
  if (lstat(target.c_str(), &st) == 0) {
    errno = EEXIST;
    return false;
  }
  return rename(source.c_str(), target.c_str()) == 0;
}

bool SysFullPath(const char* path, LStr& out) {
  if (path == nullptr || path[0] == 0) {
    errno = ENOENT;
    return false;
  }
  LStr joined;
  if (path[0] != '/') {
    char* cwd = getcwd(nullptr, 0);
    if (cwd == nullptr) return false;
    fromNative(cwd, -1, joined);
    std::free(cwd);
    joined.append('/');
  }
  joined.append(path);
  // Dots are resolved in the text, as the file need not exist. Splitting the
  // 8-bit text on '/' is safe: no Shift-JIS trail byte is '/' or '.'.
  LStr result;
  const char* p = joined.ptr;
  while (*p) {
    while (*p == '/') p++;
    const char* start = p;
    while (*p && *p != '/') p++;
    int32_t n = static_cast<int32_t>(p - start);
    if (n == 0 || (n == 1 && start[0] == '.')) continue;
    if (n == 2 && start[0] == '.' && start[1] == '.') {
      int32_t cut = result.length;
      while (cut > 0 && result[cut - 1] != '/') cut--;
      result.truncate(cut > 0 ? cut - 1 : 0);
      continue;
    }
    result.append('/');
    result.append(start, n);
  }
  if (result.empty() || joined[joined.length - 1] == '/') result.append('/');
  out.swap(result);
  return true;
}

bool SysLongPath(const char* path, LStr& out) {
  struct stat st;
  if (lstat(NativeName(path).c_str(), &st) != 0) return false;
  LStr result(path);
  out.swap(result);
  return true;
}

SysNameFault SysCheckName(const char* name) {
  UStr units;
  if (!FToUStrExact(name, -1, units, kAlwaysEscaped)) return kSysNameInexact;
  for (int32_t i = 0; i < units.length; i++)
    if (units[i] == 0 || units[i] == '/') return kSysNameReserved;
  NativeName native(name);
  const char* bytes = native.c_str();
  if (bytes[0] == 0 || std::strcmp(bytes, ".") == 0 || std::strcmp(bytes, "..") == 0)
    return kSysNameReserved;
  // Units that are no name's reading, such as the escaped bytes of a valid
  // UTF-8 sequence, would come back as another name.
  LStr back;
  fromNative(bytes, native.bytes().length, back);
  return std::strcmp(back.ptr, name) == 0 ? kSysNameOk : kSysNameInexact;
}

void SysPathKey(const char* relative, LStr& key) { key = NativeName(relative).bytes(); }

char SysPathSeparator() { return '/'; }

void SysTempFolder(LStr& out) {
  const char* folder = std::getenv("TMPDIR");
  if (folder == nullptr || folder[0] == 0) folder = "/tmp";
  fromNative(folder, -1, out);
  if (out[out.length - 1] != '/') out.append('/');
}

bool SysLocalAppDataFolder(LStr& out) {
  LStr native;
  const char* data = std::getenv("XDG_DATA_HOME");
  // Only an absolute $XDG_DATA_HOME counts; a relative one is to be ignored.
  if (data != nullptr && data[0] == '/') {
    native.assign(data);
  } else {
    const char* home = std::getenv("HOME");
    if (home != nullptr && home[0] != 0) {
      native.assign(home);
    } else if (!passwdField(/*home=*/true, native)) {
      errno = ENOENT;
      return false;
    }
    while (native.length > 1 && native[native.length - 1] == '/')
      native.truncate(native.length - 1);
    native.append("/.local/share");
  }
  while (native.length > 1 && native[native.length - 1] == '/') native.truncate(native.length - 1);
  fromNative(native.ptr, native.length, out);
  return true;
}

void SysComputerName(LStr& out) {
  char name[256];
  if (gethostname(name, sizeof name) != 0) name[0] = 0;
  name[sizeof name - 1] = 0;
  fromNative(name, -1, out);
}

void SysUserName(LStr& out) {
  LStr native;
  if (!passwdField(/*home=*/false, native)) {
    const char* user = std::getenv("USER");
    native.assign(user != nullptr ? user : "");
  }
  fromNative(native.ptr, native.length, out);
}

// ---- Time and processes

SysTime SysNow() {
  timespec now;
  clock_gettime(CLOCK_REALTIME, &now);
  return toSysTime(now.tv_sec, now.tv_nsec);
}

int32_t SysLocalOffset(SysTime at) {
  int64_t ticks = static_cast<int64_t>(at) - kUnixEpochTicks;
  int64_t seconds = ticks / kTicksPerSecond - (ticks % kTicksPerSecond < 0 ? 1 : 0);
  time_t t = static_cast<time_t>(seconds);
  struct tm local;
  if (localtime_r(&t, &local) == nullptr) return 0;
  return static_cast<int32_t>(local.tm_gmtoff);
}

void SysAdviseLargeBlock(void* block, int64_t size) {
  // The whole pages inside the block; the system backs with large pages
  // only the aligned stretches among them.
  const uintptr_t page = static_cast<uintptr_t>(sysconf(_SC_PAGESIZE));
  const uintptr_t start = (reinterpret_cast<uintptr_t>(block) + page - 1) & ~(page - 1);
  const uintptr_t end =
      (reinterpret_cast<uintptr_t>(block) + static_cast<uintptr_t>(size)) & ~(page - 1);
  if (end > start) madvise(reinterpret_cast<void*>(start), end - start, MADV_HUGEPAGE);
}

#if defined(__SANITIZE_ADDRESS__)
// Under AddressSanitizer the large blocks come from the heap too, so that
// their overruns are seen.
void* SysTakeLargeBlock(int64_t size) { return std::calloc(1, static_cast<size_t>(size)); }

void SysFreeLargeBlock(void* block, int64_t) { std::free(block); }
#else
namespace {
// The size and alignment of a large page of the x86 machines we run on.
const uintptr_t kLargePage = uintptr_t{2} << 20;
uintptr_t wholeLargePages(int64_t size) {
  return (static_cast<uintptr_t>(size) + kLargePage - 1) & ~(kLargePage - 1);
}
}  // namespace

void* SysTakeLargeBlock(int64_t size) {
  // Mapped a large page longer than asked and cut to the large pages inside,
  // so that every page of the block can be a large one.
  const uintptr_t bytes = wholeLargePages(size);
  void* mapped =
      mmap(nullptr, bytes + kLargePage, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (mapped == MAP_FAILED) return nullptr;
  const uintptr_t start = reinterpret_cast<uintptr_t>(mapped);
  const uintptr_t aligned = (start + kLargePage - 1) & ~(kLargePage - 1);
  // What lies before the first large page and after the last goes back;
  // the two together are one large page long.
  if (aligned > start) munmap(mapped, aligned - start);
  munmap(reinterpret_cast<void*>(aligned + bytes), start + kLargePage - aligned);
  madvise(reinterpret_cast<void*>(aligned), bytes, MADV_HUGEPAGE);
  return reinterpret_cast<void*>(aligned);
}

void SysFreeLargeBlock(void* block, int64_t size) {
  if (block != nullptr) munmap(block, wholeLargePages(size));
}
#endif

void SysSleep(int32_t milliseconds) {
  if (milliseconds <= 0) {
    sched_yield();
    return;
  }
  timespec left;
  left.tv_sec = milliseconds / 1000;
  left.tv_nsec = (milliseconds % 1000) * 1000000L;
  while (nanosleep(&left, &left) != 0 && errno == EINTR) {
  }
}

uint32_t SysProcessId() { return static_cast<uint32_t>(getpid()); }

void SysScreenSize(int32_t* width, int32_t* height) {
  *width = 1920;
  *height = 1080;
}

// ---- Threads

SysThread SysStartThread(SysThreadEntry entry, void* argument) {
  PosixThread* thread = new PosixThread{pthread_t(), /*references=*/2, /*running=*/true};
  ThreadStart* start = new ThreadStart{thread, entry, argument};
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  // Nothing joins: the handle is for killing, and the end is signalled by the
  // thread's own code.
  pthread_attr_setdetachstate(&attributes, PTHREAD_CREATE_DETACHED);
  pthread_t id;
  int error = pthread_create(&id, &attributes, threadMain, start);
  pthread_attr_destroy(&attributes);
  if (error != 0) {
    delete start;
    delete thread;
    errno = error;
    return nullptr;
  }
  MutexGuard guard(&gStateMutex);
  thread->id = id;
  return thread;
}

void SysReleaseThread(SysThread thread) {
  if (thread == nullptr) return;
  MutexGuard guard(&gStateMutex);
  dropReference(static_cast<PosixThread*>(thread));
}

SysThread SysCurrentThread() {
  MutexGuard guard(&gStateMutex);
  if (tSelf != nullptr) {
    tSelf->references++;
    return tSelf;
  }
  return new PosixThread{pthread_self(), /*references=*/1, /*running=*/true};
}

uint32_t SysCurrentThreadId() { return static_cast<uint32_t>(gettid()); }

bool SysKillThread(SysThread handle) {
  PosixThread* thread = static_cast<PosixThread*>(handle);
  if (thread == nullptr) {
    errno = EINVAL;
    return false;
  }
  MutexGuard guard(&gStateMutex);
  if (!thread->running) {
    errno = ESRCH;
    return false;
  }
  int error = pthread_cancel(thread->id);
  if (error != 0) errno = error;
  return error == 0;
}

SysEvent SysCreateEvent() { return new (std::nothrow) PosixEvent; }

bool SysCloseEvent(SysEvent event) {
  if (event == nullptr) {
    errno = EINVAL;
    return false;
  }
  delete static_cast<PosixEvent*>(event);
  return true;
}

bool SysSetEvent(SysEvent event) {
  if (event == nullptr) {
    errno = EINVAL;
    return false;
  }
  MutexGuard guard(&gStateMutex);
  static_cast<PosixEvent*>(event)->signalled = true;
  pthread_cond_broadcast(&gEventCondition);
  return true;
}

int SysWaitEvent(SysEvent event, int32_t milliseconds) {
  return waitForEvents(event, nullptr, milliseconds);
}

int SysWaitEvents(SysEvent first, SysEvent second, int32_t milliseconds) {
  if (second == nullptr) {
    errno = EINVAL;
    return -1;
  }
  return waitForEvents(first, second, milliseconds);
}

SysLock SysCreateLock() {
  // Plain new, not the pooled allocator: the allocator itself takes a lock.
  pthread_mutex_t* mutex = new pthread_mutex_t;
  pthread_mutexattr_t attributes;
  pthread_mutexattr_init(&attributes);
  pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
  pthread_mutex_init(mutex, &attributes);
  pthread_mutexattr_destroy(&attributes);
  return mutex;
}

void SysDeleteLock(SysLock lock) {
  if (lock == nullptr) return;
  pthread_mutex_t* mutex = static_cast<pthread_mutex_t*>(lock);
  pthread_mutex_destroy(mutex);
  delete mutex;
}

void SysEnterLock(SysLock lock) { pthread_mutex_lock(static_cast<pthread_mutex_t*>(lock)); }
void SysLeaveLock(SysLock lock) { pthread_mutex_unlock(static_cast<pthread_mutex_t*>(lock)); }

// ---- Break signal

void SysHoldBreak() {
  MutexGuard guard(&gStateMutex);
  if (gBreakHolds++ > 0) return;
  struct sigaction present;
  if (sigaction(SIGINT, nullptr, &present) != 0) return;
  if ((present.sa_flags & SA_SIGINFO) || present.sa_handler != SIG_DFL) return;
  struct sigaction ignore = {};
  ignore.sa_handler = SIG_IGN;
  sigemptyset(&ignore.sa_mask);
  gBreakIgnoredHere = sigaction(SIGINT, &ignore, nullptr) == 0;
}

void SysReleaseBreak() {
  MutexGuard guard(&gStateMutex);
  if (gBreakHolds == 0 || --gBreakHolds > 0 || !gBreakIgnoredHere) return;
  gBreakIgnoredHere = false;
  // Someone may have installed a handler meanwhile; that one stays.
  struct sigaction present;
  if (sigaction(SIGINT, nullptr, &present) != 0) return;
  if ((present.sa_flags & SA_SIGINFO) || present.sa_handler != SIG_IGN) return;
  struct sigaction standard = {};
  standard.sa_handler = SIG_DFL;
  sigemptyset(&standard.sa_mask);
  sigaction(SIGINT, &standard, nullptr);
}

// ---- Code pages

int SysCodePage() { return kShiftJis; }

int32_t SysToWide(int codePage, const char* text, int32_t size, uint16_t* out, int32_t room) {
  if (text == nullptr || size == 0 || room < 0) {
    errno = EINVAL;
    return 0;
  }
  if (size < 0) size = static_cast<int32_t>(std::strlen(text)) + 1;
  codePage = effectiveCodePage(codePage);
  UStr units;
  if (codePage == kUtf8) {
    FUtf8ToUtf16(text, size, units, /*lossless=*/false);
  } else if (!decodeCodePage(codePage, text, size, units)) {
    return 0;
  }
  return deliver<uint16_t>(units.ptr, units.length, out, room);
}

int32_t SysFromWide(int codePage, const uint16_t* text, int32_t size, char* out, int32_t room,
                    bool* usedDefault) {
  if (usedDefault != nullptr) *usedDefault = false;
  if (text == nullptr || size == 0 || room < 0) {
    errno = EINVAL;
    return 0;
  }
  if (size < 0) size = FULen(text) + 1;
  codePage = effectiveCodePage(codePage);
  LStr bytes;
  bool used = false;
  if (codePage == kUtf8) {
    FUtf16ToUtf8(text, size, bytes, /*lossless=*/false);
  } else if (!encodeCodePage(codePage, text, size, bytes, &used)) {
    return 0;
  }
  if (usedDefault != nullptr) *usedDefault = used;
  return deliver<char>(bytes.ptr, bytes.length, out, room);
}

// ---- Console and boxes

bool SysConsoleWrite(const char* text, int32_t size) {
  if (text == nullptr) return false;
  if (size < 0) size = static_cast<int32_t>(std::strlen(text));
  writeDiagnostic(text, size);
  return false;
}

void SysConsoleRelease() {}

int SysMessageBox(const char* title, const char* text, uint32_t /*flags*/) {
  LStr line(title);
  line.append(": ");
  line.append(text);
  line.append('\n');
  writeDiagnostic(line.ptr, line.length);
  return 1;
}

void SysExitProcess(int code) {
  std::fflush(nullptr);
  _exit(code);
}
