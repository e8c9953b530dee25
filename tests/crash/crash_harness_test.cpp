// Kills kst with SIGKILL while it adds, deletes, renames and makes folders,
// many times inside the apply step, and checks after every kill that the
// next open gives the archive exactly as it was before the command or as it
// is after it, with every version reading back byte for byte.
//
// Short by default; KST_CRASH_KILLS sets the number of kills (the long run
// takes 200).
#include <gtest/gtest.h>

#ifndef _WIN32
#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "archive/archive.h"
#include "archive/folder_host.h"
#include "lib/file_util.h"
#include "store/held_buf.h"
#include "store/version_io.h"
#include "store/work_set.h"
#include "support/file_bytes.h"
#include "support/recorder.h"
#include "support/temp_dir.h"

namespace {

// The archive's content as a text: every path, and for each version its
// number, size, time and bytes. Store times and block positions are not in
// it: they differ between two runs of the same command.
std::string digest(const char* archivePath, const char* workFolder) {
  FNewWorkSet();
  TFolderHost host(workFolder);
  TArchive* archive = new TArchive(&host);
  FSetArchive(archive);
  std::string out;
  try {
    FLoadArchive((archive->setPath(archivePath), *archive));
    LArrOf<TRec*> stack;
    stack.add(archive->root);
    while (stack.count > 0) {
      TRec* rec = stack.pop();
      LStr path;
      rec->displayPath(path);
      out += path.ptr;
      out += '\n';
      if (rec->isFile()) {
        TFile* file = static_cast<TFile*>(rec);
        for (int32_t i = 0; i < file->childCount(); i++) {
          TVer* ver = file->version(i);
          THeldBuf raw;
          FReadRaw(ver, raw);
          out += " v" + std::to_string(i + 1) + " " + std::to_string(ver->size) + " " +
                 std::to_string(ver->time) + " ";
          out.append(reinterpret_cast<const char*>(raw.data()), raw.size());
          out += '\n';
        }
        continue;
      }
      LArrOf<TRec*> children;
      for (TRec* child : static_cast<TRecF*>(rec)->children) children.add(child);
      FSortForDisplay(children);
      for (int32_t i = children.count - 1; i >= 0; i--) stack.add(children[i]);
    }
  } catch (int) {
    out = "(failed to open or read)";
  }
  delete archive;
  FSetArchive(nullptr);
  FDeleteWorkSet();
  return out;
}

struct RunResult {
  int markers = 0;  // apply points passed before the end or the kill
  bool killed = false;
  int status = -1;
};

// Runs a program; with killAfter >= 0, kills it once it reports that many
// apply points, or after a delay in microseconds when killAfter is -1 and
// delay > 0.
RunResult runProgram(const std::vector<std::string>& args, int killAfter, int delay) {
  int pipeFds[2];
  EXPECT_EQ(pipe(pipeFds), 0);
  pid_t pid = fork();
  if (pid == 0) {
    dup2(pipeFds[1], 2);
    int null = open("/dev/null", O_WRONLY);
    dup2(null, 1);
    close(pipeFds[0]);
    std::vector<char*> argv;
    for (const std::string& arg : args) argv.push_back(const_cast<char*>(arg.c_str()));
    argv.push_back(nullptr);
    execv(argv[0], argv.data());
    _exit(127);
  }
  close(pipeFds[1]);
  RunResult run;
  if (killAfter < 0 && delay > 0) {
    usleep(static_cast<useconds_t>(delay));
    run.killed = kill(pid, SIGKILL) == 0;
  }
  std::string line;
  char c;
  while (read(pipeFds[0], &c, 1) == 1) {
    if (c != '\n') {
      line += c;
      continue;
    }
    if (line.rfind("@apply ", 0) == 0 && ++run.markers == killAfter && !run.killed)
      run.killed = kill(pid, SIGKILL) == 0;
    line.clear();
  }
  close(pipeFds[0]);
  int status = 0;
  waitpid(pid, &status, 0);
  run.status = status;
  if (WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) run.killed = true;
  return run;
}

class CrashHarness : public testing::Test {
 protected:
  CrashHarness() {
    archive = dir.file("crash.kst");
    scratch = dir.file("scratch.kst");
    work = dir.file("work");
    SysMakeFolder(work.ptr);
    settings = dir.file("settings.ini");
    TestWriteFile(settings.ptr, std::string("tmpDirBase=") + dir.path() + "/tmp/\r\n");
    src = dir.file("src");
    for (int i = 0; i < 6; i++) {
      std::string text;
      for (int l = 0; l < 300; l++)
        text += "file " + std::to_string(i) + " line " + std::to_string(l) + "\n";
      TestWriteFile(srcFile(i).c_str(), text);
    }
    TestWriteFile((std::string(src.ptr) + "/日本語/表.txt").c_str(),
                  "double-byte names survive too\n");
  }

  std::string srcFile(int i) const {
    return std::string(src.ptr) + "/dir" + std::to_string(i % 2) + "/f" + std::to_string(i) +
           ".txt";
  }

  std::vector<std::string> command_(const char* program, const char* arc,
                                    std::vector<std::string> rest) {
    std::vector<std::string> args = {program, rest[0], arc, "--settings", settings.ptr};
    args.insert(args.end(), rest.begin() + 1, rest.end());
    return args;
  }

  TestTempDir dir;
  RecorderScope quiet;
  LStr archive, scratch, work, settings, src;
};

}  // namespace

TEST_F(CrashHarness, EveryKillLeavesBeforeOrAfter) {
  const char* plain = KST_PROGRAM;
  const char* crashing = KST_CRASH_PROGRAM;
  int kills = 24;
  if (const char* wanted = std::getenv("KST_CRASH_KILLS")) kills = std::atoi(wanted);
  std::mt19937 gen(20261121);

  ASSERT_EQ(runProgram(command_(plain, archive.ptr, {"add", src.ptr}), -1, 0).status, 0);
  int survived = 0, insideApply = 0, beforeCount = 0, afterCount = 0;
  for (int i = 0; i < kills; i++) {
    std::vector<std::string> command;
    switch (i % 4) {
      case 0: {
        int f = static_cast<int>(gen() % 6);
        std::string text = TestReadFile(srcFile(f).c_str()) + "change " + std::to_string(i) + "\n";
        TestWriteFile(srcFile(f).c_str(), text);
        command = {"add", src.ptr};
        break;
      }
      case 1:
        command = {"rm",
                   "/src/dir" + std::to_string(gen() % 2) + "/f" +
                       std::to_string(gen() % 3 * 2 + i % 2) + ".txt",
                   "-v", "1"};
        break;
      case 2:
        command = {"mkdir", "/src/made" + std::to_string(i)};
        break;
      default:
        command = {"mv", "/src/made" + std::to_string(i - 1), "renamed" + std::to_string(i)};
        break;
    }
    std::string before = digest(archive.ptr, work.ptr);
    ASSERT_NE(before, "(failed to open or read)") << i;
    // The state after the command, from an uninterrupted run on a copy.
    TestWriteFile(scratch.ptr, TestReadFile(archive.ptr));
    RunResult full = runProgram(command_(crashing, scratch.ptr, command), -1, 0);
    std::string after = digest(scratch.ptr, work.ptr);
    // Most kills land on an apply point; some at a random moment.
    RunResult cut = i % 5 == 4 || full.markers == 0
                        ? runProgram(command_(crashing, archive.ptr, command), -1,
                                     1000 + static_cast<int>(gen() % 60000))
                        : runProgram(command_(crashing, archive.ptr, command),
                                     1 + static_cast<int>(gen() % full.markers), 0);
    if (cut.markers > 0 && cut.killed) insideApply++;
    std::string now = digest(archive.ptr, work.ptr);
    bool ok = now == before || now == after;
    EXPECT_TRUE(ok) << "kill " << i << " (" << command[0] << ", " << cut.markers
                    << " apply points): "
                    << (quiet->boxes.count ? quiet->boxes.last()->ptr : "(no box)");
    if (ok) survived++;
    if (now == before && before != after) beforeCount++;
    if (now == after && before != after) afterCount++;
    EXPECT_EQ(FExists(LStr(archive).append("-journal").ptr), kExistsNone) << i;
  }
  std::printf(
      "%d of %d kills left the archive before or after the command "
      "(%d inside the apply step; %d before, %d after)\n",
      survived, kills, insideApply, beforeCount, afterCount);
  EXPECT_EQ(survived, kills);
}
#endif
