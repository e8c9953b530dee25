// The second phase of the add command: each new version is read, compared
// with its predecessor and stored. Files are read and encoded on a pool of
// threads, a few versions ahead, while the blocks are written on the
// command's thread in the order of the versions: so the archive's bytes do
// not depend on the number of threads. The versions are handed over while
// the walk of the sources makes them, so that the threads encode the first
// files while the walk goes on (the walk of 8 000 headers took a twentieth
// of their first add).
#pragma once

#include <cstdint>
#include <memory>

struct TAddOptions;
class TVer;
class TWorkSet;

class TAddStore {
 public:
  TAddStore(TWorkSet& work, const TAddOptions& options);
  // Waits for the encodings that run; those not started are dropped.
  ~TAddStore();
  TAddStore(const TAddStore&) = delete;
  TAddStore& operator=(const TAddStore&) = delete;

  // A new version, the next of work.versions: its file may be read and
  // encoded from now on.
  void take(TVer* ver);
  // Stores the versions taken, in their order; a dropped version leaves the
  // array and its file. Counts the stored versions in work.done and the
  // dropped ones in work.skipped. A failure or a stop throws, as on one
  // thread.
  void run();

 private:
  class Pipeline;
  std::unique_ptr<Pipeline> pipeline_;
};
