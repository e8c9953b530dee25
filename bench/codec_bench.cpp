// Speed and size of the version codec on a corpus of version chains, beside
// xdelta3 and zstd --patch-from in the same run.
//
// usage: codec_bench CORPUS [--ours-only]
//
// CORPUS/<part>/<chain>/v01 .. vNN, v01 the oldest. Each chain is stored the
// way the add command leaves it: every version packed, the newest encoded
// alone, each older one against the next newer. Reading back expands the
// newest, then each older one against the held form just read, and checks
// every byte. Times are processor times, so that other work on the machine
// does not count: ours of the codec on memory, the tools' of their command
// lines (shell included) on files in a memory-backed folder, so theirs
// include starting a process and reading and writing files.
#include <sys/resource.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "lib/lstr.h"
#include "lib/mem_stream.h"
#include "store/codec_settings.h"
#include "store/held_buf.h"
#include "store/pack_bytes.h"
#include "store/version_encoder.h"
#include "store/version_expand.h"

namespace fs = std::filesystem;

namespace {

struct Figures {
  double raw = 0;
  double stored = 0;
  double encodeSeconds = 0;
  double decodeSeconds = 0;
  void add(const Figures& o) {
    raw += o.raw;
    stored += o.stored;
    encodeSeconds += o.encodeSeconds;
    decodeSeconds += o.decodeSeconds;
  }
};

double seconds(const timeval& t) { return t.tv_sec + t.tv_usec / 1e6; }

// Processor time of this process, or of its finished children.
double cpuSeconds(bool children) {
  if (children) {
    rusage usage;
    getrusage(RUSAGE_CHILDREN, &usage);
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
  }
  timespec now;
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return now.tv_sec + now.tv_nsec / 1e9;
}

std::string readFile(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

std::vector<fs::path> sortedEntries(const fs::path& folder, bool folders) {
  std::vector<fs::path> entries;
  for (const fs::directory_entry& e : fs::directory_iterator(folder))
    if (e.is_directory() == folders && e.path().filename() != "manifest.json")
      entries.push_back(e.path());
  std::sort(entries.begin(), entries.end());
  return entries;
}

const uint8_t* bytesOf(const std::string& s) { return reinterpret_cast<const uint8_t*>(s.data()); }
const uint8_t* bytesOf(const LStr& s) { return reinterpret_cast<const uint8_t*>(s.ptr); }

Figures ours(const std::vector<std::string>& raws) {
  const size_t n = raws.size();
  const TCodecSettings settings;
  Figures f;
  std::vector<THeldBuf> held(n);
  std::vector<LStr> stored(n);
  double start = cpuSeconds(false);
  for (size_t i = 0; i < n; i++) {
    LStr packed;
    LMemOutStream out(packed);
    FPackBytes(bytesOf(raws[i]), static_cast<int32_t>(raws[i].size()), out, settings);
    held[i].assign(packed.ptr, packed.length);
  }
  for (size_t i = 0; i < n; i++) {
    LMemOutStream out(stored[i]);
    const THeldView newer(held[i + 1 < n ? i + 1 : i]);
    FEncodeVersion(THeldView(held[i]), i + 1 < n ? &newer : nullptr, out, settings);
  }
  f.encodeSeconds = cpuSeconds(false) - start;

  std::vector<THeldBuf> heldBack(n);
  std::vector<THeldBuf> rawBack(n);
  start = cpuSeconds(false);
  for (size_t k = n; k-- > 0;) {
    const int32_t size = static_cast<int32_t>(raws[k].size());
    const THeldView newer(heldBack[k + 1 < n ? k + 1 : k]);
    FExpandStored(bytesOf(stored[k]), stored[k].length, size, k + 1 < n ? &newer : nullptr,
                  heldBack[k]);
    FExpandRaw(THeldView(heldBack[k]), size, rawBack[k]);
  }
  f.decodeSeconds = cpuSeconds(false) - start;

  for (size_t i = 0; i < n; i++) {
    f.raw += raws[i].size();
    f.stored += stored[i].length;
    if (rawBack[i].size() != static_cast<int32_t>(raws[i].size()) ||
        std::memcmp(raws[i].data(), rawBack[i].data(), raws[i].size()) != 0) {
      std::fprintf(stderr, "codec_bench: version %zu did not come back\n", i + 1);
      std::exit(1);
    }
  }
  return f;
}

void run(const std::string& command) {
  if (std::system(command.c_str()) != 0) {
    std::fprintf(stderr, "codec_bench: failed: %s\n", command.c_str());
    std::exit(1);
  }
}

// One external tool: how it encodes a version alone and against a newer
// one, and how it decodes either.
struct Tool {
  const char* name;
  const char* whole;      // %1 input, %2 output
  const char* delta;      // %1 input, %2 output, %3 newer version
  const char* wholeBack;  // %1 input, %2 output
  const char* deltaBack;  // %1 input, %2 output, %3 newer version
};

const Tool kTools[] = {
    {"xdelta3", "xdelta3 -e -f -c '%1' > '%2'", "xdelta3 -e -f -s '%3' '%1' '%2'",
     "xdelta3 -d -f -c '%1' > '%2'", "xdelta3 -d -f -s '%3' '%1' '%2'"},
    {"zstd", "zstd -q -f '%1' -o '%2'", "zstd -q -f --patch-from='%3' '%1' -o '%2'",
     "zstd -d -q -f '%1' -o '%2'", "zstd -d -q -f --patch-from='%3' '%1' -o '%2'"},
};

std::string fill(const char* pattern, const std::string& a, const std::string& b,
                 const std::string& c) {
  std::string s = pattern;
  const std::string* args[] = {&a, &b, &c};
  for (int i = 0; i < 3; i++) {
    const std::string key = "%" + std::to_string(i + 1);
    for (size_t at; (at = s.find(key)) != std::string::npos;) s.replace(at, 2, *args[i]);
  }
  return s;
}

Figures theirs(const Tool& tool, const std::vector<fs::path>& versions, const fs::path& work) {
  const size_t n = versions.size();
  Figures f;
  auto packed = [&](size_t i) { return (work / ("p" + std::to_string(i))).string(); };
  auto back = [&](size_t i) { return (work / ("b" + std::to_string(i))).string(); };
  double start = cpuSeconds(true);
  for (size_t i = 0; i < n; i++) {
    const std::string newer = i + 1 < n ? versions[i + 1].string() : "";
    run(fill(i + 1 < n ? tool.delta : tool.whole, versions[i].string(), packed(i), newer));
  }
  f.encodeSeconds = cpuSeconds(true) - start;
  start = cpuSeconds(true);
  for (size_t k = n; k-- > 0;)
    run(fill(k + 1 < n ? tool.deltaBack : tool.wholeBack, packed(k), back(k),
             k + 1 < n ? back(k + 1) : ""));
  f.decodeSeconds = cpuSeconds(true) - start;
  for (size_t i = 0; i < n; i++) {
    f.raw += fs::file_size(versions[i]);
    f.stored += fs::file_size(packed(i));
    if (fs::file_size(back(i)) != fs::file_size(versions[i])) {
      std::fprintf(stderr, "codec_bench: %s did not give back %s\n", tool.name,
                   versions[i].c_str());
      std::exit(1);
    }
  }
  return f;
}

void print(const char* who, const Figures& f) {
  std::printf("  %-8s raw %11.0f  stored %10.0f (%6.2f%%)  encode %8.1f MB/s  decode %8.1f MB/s\n",
              who, f.raw, f.stored, 100 * f.stored / f.raw, f.raw / f.encodeSeconds / 1e6,
              f.raw / f.decodeSeconds / 1e6);
}

void compare(const Figures& us, const char* name, const Figures& them) {
  std::printf("  ours/%-7s size %5.2f  encode speed %6.2f  decode speed %6.2f\n", name,
              us.stored / them.stored, them.encodeSeconds / us.encodeSeconds,
              them.decodeSeconds / us.decodeSeconds);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: codec_bench CORPUS [--ours-only]\n");
    return 2;
  }
  const bool withTools = !(argc > 2 && std::string(argv[2]) == "--ours-only");
  const fs::path corpus = argv[1];
  const fs::path shm = fs::exists("/dev/shm") ? "/dev/shm" : fs::temp_directory_path();
  const fs::path work = shm / ("kst-codec-bench-" + std::to_string(getpid()));
  fs::create_directories(work);
  const size_t kToolCount = std::size(kTools);

  for (const fs::path& part : sortedEntries(corpus, true)) {
    Figures us;
    std::vector<Figures> them(kToolCount);
    for (const fs::path& chain : sortedEntries(part, true)) {
      std::vector<fs::path> versions = sortedEntries(chain, false);
      std::vector<std::string> raws;
      for (const fs::path& v : versions) raws.push_back(readFile(v));
      us.add(ours(raws));
      if (!withTools) continue;
      // The tools read their inputs from memory-backed copies, as we do.
      std::vector<fs::path> copies;
      for (size_t i = 0; i < versions.size(); i++) {
        copies.push_back(work / ("v" + std::to_string(i)));
        fs::copy_file(versions[i], copies.back(), fs::copy_options::overwrite_existing);
      }
      for (size_t t = 0; t < kToolCount; t++) them[t].add(theirs(kTools[t], copies, work));
    }
    std::printf("part %s\n", part.filename().c_str());
    print("kestrom", us);
    for (size_t t = 0; t < kToolCount && withTools; t++) print(kTools[t].name, them[t]);
    for (size_t t = 0; t < kToolCount && withTools; t++) compare(us, kTools[t].name, them[t]);
    std::fflush(stdout);
  }
  fs::remove_all(work);
  return 0;
}
