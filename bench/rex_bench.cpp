// Matching speed of a path-like pattern over 100 000 generated paths, in
// characters searched per second, without folding and with case, width and
// blank folding. The tree is compiled once; each path is one search, as the
// conditions run it.
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <random>
#include <vector>

#include "lib/ustr.h"
#include "rex/context.h"
#include "rex/parse.h"
#include "rex/search.h"

namespace {
const int32_t kPaths = 100000;
const int kRounds = 5;

const char16_t* const kFolders[] = {
    u"Users", u"project",  u"src",     u"lib",       u"docs",      u"ドキュメント",
    u"ﾃｽﾄ",   u"Ｄａｔａ", u"archive", u"old files", u"写真 2019", u"build",
};
const char16_t* const kNames[] = {u"main", u"readme", u"設定", u"ﾒﾓ", u"Report", u"index_v2"};
const char16_t* const kExtensions[] = {u".cpp", u".h", u".txt", u".CPP", u".ｔｘｔ", u".png"};

template <typename T, size_t N>
const T& pick(std::mt19937& random, const T (&items)[N]) {
  return items[random() % N];
}

std::vector<UStr> makePaths() {
  std::mt19937 random(1414);
  std::vector<UStr> paths(kPaths);
  for (UStr& path : paths) {
    path.append(reinterpret_cast<const UChar*>(u"C:"));
    int depth = 2 + static_cast<int>(random() % 5);
    for (int i = 0; i < depth; i++) {
      path.append('\\');
      path.append(reinterpret_cast<const UChar*>(pick(random, kFolders)));
    }
    path.append('\\');
    path.append(reinterpret_cast<const UChar*>(pick(random, kNames)));
    path.append(reinterpret_cast<const UChar*>(pick(random, kExtensions)));
  }
  return paths;
}

void measure(const char* label, URex* rex, const std::vector<UStr>& paths, int32_t flags) {
  int64_t characters = 0;
  for (const UStr& path : paths) characters += path.length;
  double best = 1e30;
  int32_t matches = 0;
  for (int round = 0; round < kRounds; round++) {
    matches = 0;
    auto start = std::chrono::steady_clock::now();
    for (const UStr& path : paths)
      if (FRexSearch(rex, path.ptr, path.length, nullptr, nullptr, flags) >= 0) matches++;
    std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    if (took.count() < best) best = took.count();
  }
  std::printf("%-28s %7d paths %9lld chars %7d matches %8.3f s %9.2f M chars/s\n", label, kPaths,
              static_cast<long long>(characters), matches, best, characters / best / 1e6);
}
}  // namespace

int main() {
  std::vector<UStr> paths = makePaths();
  const char16_t pattern[] = u"\\\\(src|lib|ﾃｽﾄ)\\\\([^\\\\]+\\\\)*[a-z_0-9]+\\.(cpp|h|txt)$";
  std::unique_ptr<URex> rex(FRexCompile(reinterpret_cast<const UChar*>(pattern)));
  if (rex == nullptr) return 1;
  std::printf("best of %d rounds\n", kRounds);
  measure("no folding", rex.get(), paths, 0);
  measure("case + width + blanks", rex.get(), paths, kRexFoldCase | kRexFoldWidth | kRexSkipBlanks);
  return 0;
}
