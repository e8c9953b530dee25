// The names that an extract may write on this system, judged on the form
// that reaches the system.
#include <gtest/gtest.h>

#include <string>

#include "lib/lstr.h"
#include "lib/sys.h"

namespace {

struct Verdict {
  const char* name;
  SysNameFault fault;
};

void expectVerdicts(std::initializer_list<Verdict> verdicts) {
  for (const Verdict& v : verdicts) EXPECT_EQ(SysCheckName(v.name), v.fault) << v.name;
}

std::string keyOf(const char* relative) {
  LStr key;
  SysPathKey(relative, key);
  return std::string(key.ptr, key.length);
}

}  // namespace

TEST(NameCheck, EverySystemRefusesEscapesOfWhatNeedsNone) {
  expectVerdicts({
      {"readme.txt", kSysNameOk},
      {"..a", kSysNameOk},
      {"表.txt", kSysNameOk},  // a trail byte 0x5C is no separator
      {"{%u007B}%u002E}{%u007B}%u002E}", kSysNameOk},
      {"", kSysNameReserved},
      {".", kSysNameReserved},
      {"..", kSysNameReserved},
      {"a/b", kSysNameReserved},
      {"{%u002E}{%u002E}", kSysNameInexact},
      {"{%u2e}{%u2e}", kSysNameInexact},
      {"{%u002F}etc", kSysNameInexact},
      {"x{%u0000}.txt", kSysNameInexact},
      {"{%u0041}", kSysNameInexact},
      {"..\x81", kSysNameInexact},
      {"\x81", kSysNameInexact},
  });
}

#ifdef _WIN32
TEST(NameCheck, WindowsRefusesDevicesAndNamesItWouldChange) {
  expectVerdicts({
      {"COM10", kSysNameOk},
      {"CONSOLE.txt", kSysNameOk},
      {"NULL", kSysNameOk},
      {"{%u007B}%u0041}.txt", kSysNameOk},
      {"COM1", kSysNameDevice},
      {"com9.txt", kSysNameDevice},
      {"NUL .txt", kSysNameDevice},
      {"aux.c", kSysNameDevice},
      {"Lpt{%u00B9}", kSysNameDevice},
      {"CONOUT$", kSysNameDevice},
      {"x.txt.", kSysNameAltered},
      {"y.txt ", kSysNameAltered},
      {"a:b.txt", kSysNameReserved},
      {"C:", kSysNameReserved},
      {"a\\b", kSysNameReserved},
      {"a*b", kSysNameReserved},
      {"tab\there", kSysNameReserved},
      {"caf{%u00E9}.txt", kSysNameNoForm},
  });
  EXPECT_EQ(keyOf("F\\Same.txt"), keyOf("f\\same.TXT"));
  EXPECT_NE(keyOf("F\\Same.txt"), keyOf("F\\Same.txt2"));
}
#else
TEST(NameCheck, LinuxTakesWhatItsNamesHold) {
  expectVerdicts({
      {"a:b.txt", kSysNameOk},
      {"COM1", kSysNameOk},
      {"x.txt.", kSysNameOk},
      {"tab\there", kSysNameOk},
      {"back{%u005C}slash", kSysNameOk},
      {"bad{%uDCFF}", kSysNameOk},
      {"caf{%u00E9}.txt", kSysNameOk},
      {"back\\slash", kSysNameInexact},
      // The bytes of a valid UTF-8 character, or a surrogate no byte gives.
      {"{%uDCC3}{%uDCA9}", kSysNameInexact},
      {"{%uDC41}", kSysNameInexact},
  });
  EXPECT_NE(keyOf("F/Same.txt"), keyOf("f/same.txt"));
  EXPECT_EQ(keyOf("back{%u005C}slash"), "back\\slash");
}
#endif

#ifndef _WIN32
#include <fcntl.h>
#include <unistd.h>

#include "support/temp_dir.h"

// Names of random bytes made on the disk directly: each comes back from a
// listing in a form that reaches the same file and that an extract takes.
TEST(NameCheck, RandomDiskNamesComeBackToTheirFiles) {
  const unsigned char alphabet[] = {'{',  '%',  'u',  '0',  '4',  '1',  '}',  '\\', 'a',
                                    '.',  0x81, 0x7B, 0xFF, 0x80, 0xA0, 0xC3, 0xA9, 0xE3,
                                    0x82, 0xEF, 0xBC, 0x8B, 0xFD, 0xED, 0xB2};
  uint32_t state = 99;
  for (int round = 0; round < 20; round++) {
    TestTempDir dir;
    int made = 0;
    for (int i = 0; i < 50; i++) {
      std::string name;
      int length = 1 + static_cast<int>(state % 10);
      for (int j = 0; j < length; j++) {
        state = state * 1103515245u + 12345u;
        name += static_cast<char>(alphabet[(state >> 16) % sizeof alphabet]);
      }
      if (name == "." || name == "..") continue;
      std::string path = std::string(dir.path()) + "/" + name;
      int fd = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL, 0644);
      if (fd < 0) continue;  // made already
      close(fd);
      made++;
    }
    SysFolderScan scan(dir.path());
    LStr name;
    SysFileInfo info;
    int found = 0;
    while (scan.next(name, info)) {
      found++;
      LStr path(dir.path());
      path.append('/').append(name);
      SysFileInfo again;
      EXPECT_TRUE(SysStat(path.ptr, &again)) << name.ptr;
      EXPECT_EQ(SysCheckName(name.ptr), kSysNameOk) << name.ptr;
    }
    EXPECT_EQ(found, made);
  }
}
#endif
