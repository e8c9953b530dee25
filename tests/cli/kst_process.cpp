#include "kst_process.h"

#include <fcntl.h>

#include <cstdio>

#include "lib/convert.h"
#include "lib/lstr.h"
#include "lib/sys.h"
#include "lib/sys_terminal.h"
#include "lib/utf8.h"
#include "support/file_bytes.h"

#ifdef _WIN32
#include <io.h>
#include <process.h>
#else
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace {

const int kUtf8 = 65001;
#ifdef _WIN32
const int32_t kRetryMs = 100;
#endif

UStr wideOf(const std::string& text) {
  UStr wide;
  FToUStr(text.data(), static_cast<int32_t>(text.size()), wide);
  return wide;
}

std::string fromLocale(const std::string& bytes) {
  UStr wide;
  if (SysLocaleCodePage() == kUtf8)
    FUtf8ToUtf16(bytes.data(), static_cast<int32_t>(bytes.size()), wide, /*lossless=*/true);
  else
    FToUStr(bytes.data(), static_cast<int32_t>(bytes.size()), wide, SysLocaleCodePage(), "", "");
  LStr text;
  FToLStrExact(wide.ptr, wide.length, text);
  return std::string(text.ptr, text.length);
}

LStr pathIn(const char* folder, const char* name) {
  LStr path(folder);
  path.append('/');
  path.append(name);
  return path;
}

#ifdef _WIN32

// One word of a command line as the run-time splits it again: quoted, with
// backslashes before a quote doubled.
std::wstring quoted(const UStr& word) {
  std::wstring out = L"\"";
  int backslashes = 0;
  for (int32_t i = 0; i < word.length; i++) {
    wchar_t c = static_cast<wchar_t>(word[i]);
    if (c == L'\\') {
      backslashes++;
      continue;
    }
    out.append(c == L'"' ? backslashes * 2 + 1 : backslashes, L'\\');
    backslashes = 0;
    out += c;
  }
  out.append(backslashes * 2, L'\\');
  return out + L"\"";
}

// Starts the program; the child takes the standard streams of this process,
// which are pointed at the files for the time of the call.
intptr_t start(const std::vector<std::string>& words, const LStr& in, const LStr& out,
               const LStr& err) {
  std::vector<std::wstring> args;
  UStr program = wideOf(KST_PROGRAM);
  args.push_back(quoted(program));
  for (const std::string& word : words) args.push_back(quoted(wideOf(word)));
  std::vector<const wchar_t*> argv;
  for (const std::wstring& arg : args) argv.push_back(arg.c_str());
  argv.push_back(nullptr);
  const LStr* files[3] = {&in, &out, &err};
  int saved[3];
  std::fflush(nullptr);
  for (int fd = 0; fd < 3; fd++) {
    saved[fd] = _dup(fd);
    int flags = fd == 0 ? _O_RDONLY : _O_WRONLY | _O_CREAT | _O_TRUNC;
    int file = _open(files[fd]->ptr, flags | _O_BINARY, 0600);
    _dup2(file, fd);
    _close(file);
  }
  std::wstring path(reinterpret_cast<const wchar_t*>(program.ptr), program.length);
  // Under Wine a start now and then fails without a process having run (a
  // command ended at -1 with nothing on its streams): the start, and only
  // the start, is tried again.
  intptr_t child = -1;
  for (int tries = 0; tries < 3 && child == -1; tries++) {
    if (tries > 0) SysSleep(kRetryMs);
    child = _wspawnv(_P_NOWAIT, path.c_str(), argv.data());
  }
  for (int fd = 0; fd < 3; fd++) {
    _dup2(saved[fd], fd);
    _close(saved[fd]);
  }
  return child;
}

int finish(intptr_t child) {
  int status;
  if (child == -1 || _cwait(&status, child, 0) == -1) return -1;
  return status;
}

#else

// Core text in the locale's encoding, UTF-8 the lossless way of the program.
std::string toLocale(const std::string& text) {
  UStr wide = wideOf(text);
  LStr bytes;
  if (SysLocaleCodePage() == kUtf8)
    FUtf16ToUtf8(wide.ptr, wide.length, bytes, /*lossless=*/true);
  else
    FToLStr(wide.ptr, wide.length, bytes, SysLocaleCodePage());
  return std::string(bytes.ptr, bytes.length);
}

intptr_t start(const std::vector<std::string>& words, const LStr& in, const LStr& out,
               const LStr& err) {
  std::vector<std::string> args{KST_PROGRAM};
  for (const std::string& word : words) args.push_back(toLocale(word));
  std::vector<char*> argv;
  for (std::string& arg : args) argv.push_back(&arg[0]);
  argv.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 0, in.ptr, O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&actions, 1, out.ptr, O_WRONLY | O_CREAT | O_TRUNC, 0600);
  posix_spawn_file_actions_addopen(&actions, 2, err.ptr, O_WRONLY | O_CREAT | O_TRUNC, 0600);
  pid_t child;
  int failed = posix_spawn(&child, KST_PROGRAM, &actions, nullptr, argv.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  return failed != 0 ? -1 : child;
}

int finish(intptr_t child) {
  int wait;
  pid_t pid = static_cast<pid_t>(child);
  if (child == -1 || waitpid(pid, &wait, 0) != pid || !WIFEXITED(wait)) return -1;
  return WEXITSTATUS(wait);
}

#endif

// The three stream files of one run; `tag` tells runs at the same time apart.
struct Streams {
  Streams(const char* scratch, const std::string& tag)
      : in(pathIn(scratch, ("stdin" + tag + ".txt").c_str())),
        out(pathIn(scratch, ("stdout" + tag + ".txt").c_str())),
        err(pathIn(scratch, ("stderr" + tag + ".txt").c_str())) {}
  LStr in;
  LStr out;
  LStr err;
};

KstResult collect(int status, const Streams& streams, bool binaryOutput) {
  KstResult result;
  result.status = status;
  result.rawOut = TestReadFile(streams.out.ptr);
  if (!binaryOutput) result.out = fromLocale(result.rawOut);
  result.err = fromLocale(TestReadFile(streams.err.ptr));
  return result;
}

}  // namespace

KstResult RunKst(const std::vector<std::string>& words, const char* scratch, bool binaryOutput,
                 const std::string& input) {
  Streams streams(scratch, "");
  TestWriteFile(streams.in.ptr, input);
  int status = finish(start(words, streams.in, streams.out, streams.err));
  return collect(status, streams, binaryOutput);
}

std::vector<KstResult> RunKstTogether(const std::vector<std::vector<std::string>>& commands,
                                      const char* scratch) {
  std::vector<Streams> streams;
  for (size_t i = 0; i < commands.size(); i++) {
    streams.emplace_back(scratch, "-" + std::to_string(i));
    TestWriteFile(streams[i].in.ptr, "");
  }
  std::vector<intptr_t> children;
  for (size_t i = 0; i < commands.size(); i++)
    children.push_back(start(commands[i], streams[i].in, streams[i].out, streams[i].err));
  std::vector<KstResult> results;
  for (size_t i = 0; i < commands.size(); i++)
    results.push_back(collect(finish(children[i]), streams[i], false));
  return results;
}

std::vector<std::string> LinesOf(const std::string& text) {
  std::vector<std::string> lines;
  size_t start = 0;
  while (start < text.size()) {
    size_t end = text.find('\n', start);
    if (end == std::string::npos) end = text.size();
    std::string line = text.substr(start, end - start);
    if (!line.empty() && line.back() == '\r') line.pop_back();
    lines.push_back(line);
    start = end + 1;
  }
  return lines;
}
