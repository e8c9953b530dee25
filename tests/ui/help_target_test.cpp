#include "ui/help_target.h"

#include <gtest/gtest.h>

#include "lib/file_util.h"
#include "lib/sys.h"
#include "support/file_bytes.h"
#include "support/temp_dir.h"

namespace {

TEST(HelpTarget, CompiledFileFirstThenTheHtmlPageThenNothing) {
  TestTempDir dir;
  LStr compiled = dir.file("Kestrom.chm");
  LStr index = dir.file("help");
  index.append(SysPathSeparator());
  index.append("index.html");
  EXPECT_TRUE(FHelpTarget(compiled.ptr, "index").empty());
  FMakeDirs(index.ptr);
  TestWriteFile(index.ptr, "<html></html>");
  EXPECT_STREQ(FHelpTarget(compiled.ptr, "index").ptr, index.ptr);
  // A page that is not there is not replaced by another one.
  EXPECT_TRUE(FHelpTarget(compiled.ptr, "ADD_DLG").empty());
  TestWriteFile(compiled.ptr, "compiled");
  EXPECT_STREQ(FHelpTarget(compiled.ptr, "index").ptr, compiled.ptr);
}

}  // namespace
