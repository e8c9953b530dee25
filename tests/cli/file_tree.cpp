#include "file_tree.h"

#include "lib/io_file.h"
#include "lib/lstr.h"
#include "lib/sys.h"

namespace {

void collect(const LStr& folder, const std::string& prefix, TestTree& tree) {
  SysFolderScan scan(folder.ptr);
  LStr name;
  SysFileInfo info;
  while (scan.isOpen() && scan.next(name, info)) {
    LStr path(folder);
    path.append('/');
    path.append(name);
    std::string relative = prefix + name.ptr;
    if (info.attributes & kSysAttrDirectory) {
      collect(path, relative + "/", tree);
      continue;
    }
    LIoFile file(path.ptr, 'r', true);
    LStr bytes;
    file.readAll(bytes);
    tree[relative] = std::string(bytes.ptr, bytes.length);
  }
}

}  // namespace

TestTree TestTreeOf(const char* folder) {
  TestTree tree;
  collect(LStr(folder), "", tree);
  return tree;
}
