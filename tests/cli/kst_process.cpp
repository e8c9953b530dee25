#include "kst_process.h"

#include <fcntl.h>

#include <cstdio>

#include "lib/convert.h"
#include "lib/lstr.h"
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

int spawn(const std::vector<std::string>& words, const LStr& in, const LStr& out, const LStr& err) {
  std::vector<std::wstring> args;
  UStr program = wideOf(KST_PROGRAM);
  args.push_back(quoted(program));
  for (const std::string& word : words) args.push_back(quoted(wideOf(word)));
  std::vector<const wchar_t*> argv;
  for (const std::wstring& arg : args) argv.push_back(arg.c_str());
  argv.push_back(nullptr);
  // The child takes the standard streams of this process: they are pointed
  // at the files for the time of the call.
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
  intptr_t status = _wspawnv(_P_WAIT, path.c_str(), argv.data());
  for (int fd = 0; fd < 3; fd++) {
    _dup2(saved[fd], fd);
    _close(saved[fd]);
  }
  return static_cast<int>(status);
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

int spawn(const std::vector<std::string>& words, const LStr& in, const LStr& out, const LStr& err) {
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
  if (failed != 0) return -1;
  int wait;
  if (waitpid(child, &wait, 0) != child || !WIFEXITED(wait)) return -1;
  return WEXITSTATUS(wait);
}

#endif

}  // namespace

KstResult RunKst(const std::vector<std::string>& words, const char* scratch, bool binaryOutput,
                 const std::string& input) {
  LStr in = pathIn(scratch, "stdin.txt");
  LStr out = pathIn(scratch, "stdout.txt");
  LStr err = pathIn(scratch, "stderr.txt");
  TestWriteFile(in.ptr, input);
  KstResult result;
  result.status = spawn(words, in, out, err);
  result.rawOut = TestReadFile(out.ptr);
  if (!binaryOutput) result.out = fromLocale(result.rawOut);
  result.err = fromLocale(TestReadFile(err.ptr));
  return result;
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
