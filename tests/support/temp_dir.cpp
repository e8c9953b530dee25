#include "support/temp_dir.h"

#include <cstdio>

#include "lib/sys.h"

TestTempDir::TestTempDir() {
  static int serial = 0;
  LStr base;
  SysTempFolder(base);
  for (;;) {
    path_.clear();
    path_.append(base);
    path_.format("kst-test-%u-%d", SysProcessId(), ++serial);
    if (SysMakeFolder(path_.ptr)) break;
  }
}

TestTempDir::~TestTempDir() { TestRemoveTree(path_.ptr); }

LStr TestTempDir::file(const char* name) const {
  LStr result(path_);
  result.append(SysPathSeparator());
  result.append(name);
  return result;
}

bool TestRemoveTree(const char* path) {
  {
    SysFolderScan scan(path);
    LStr name;
    SysFileInfo info;
    while (scan.isOpen() && scan.next(name, info)) {
      LStr child(path);
      child.append(SysPathSeparator());
      child.append(name);
      if ((info.attributes & kSysAttrDirectory) && !(info.attributes & kSysAttrLink)) {
        TestRemoveTree(child.ptr);
      } else {
        SysSetAttributes(child.ptr, kSysAttrNormal);
        SysDeleteFile(child.ptr);
      }
    }
  }
  return SysRemoveFolder(path);
}
