// An archive filled by real add commands from a source folder on disk, for
// tests that read back what the add stored.
#pragma once

#include <string>

#include "lib/file_time.h"
#include "lib/file_util.h"
#include "lib/sys.h"
#include "store/add_command.h"
#include "store/cond.h"
#include "store/work_set.h"
#include "support/archive_fixture.h"

class AddedArchiveTest : public ArchiveTest {
 protected:
  AddedArchiveTest() : src(dir.file("src")) {
    FNewWorkSet();
    archive->loadArchive(dir.file("a.kst").ptr, false, false);
    SysMakeFolder(src.ptr);
    options.userTag = "host/user";
  }
  ~AddedArchiveTest() override { FDeleteWorkSet(); }

  // Writes a source file with its own modification time.
  void put(const char* name, const std::string& bytes, int64_t time) {
    LStr path(src);
    path.append(SysPathSeparator());
    path.append(name);
    FMakeDirs(path.ptr);
    TestWriteFile(path.ptr, bytes);
    SysTime t;
    FFromUnixTime(time, t);
    SysSetFileTimes(path.ptr, 0, t, t);
  }
  // Adds the source folder under the root, with a comment on the new
  // versions, and starts a fresh work set as the application does.
  void add(const char* comment = "") {
    LStrs paths;
    paths.add(new LStr(src));
    TCond cond;
    cond.addComment = comment;
    cond.Parse();
    FCmdAdd(archive->root, paths, &cond, options);
    FNewWorkSet();
  }

  LStr src;
  TAddOptions options;
};
