// A look inside the apply step for crash tests: a function called at each
// point where an apply can be cut off. Only test programs install one,
// through the friend below; the program itself never does.
#pragma once

enum TApplyStage : int {
  kApplyJournalWritten = 1,  // the journal is on disk, the archive untouched
  kApplyRecordCopied = 2,    // more update records are in the archive
  kApplyArchiveFlushed = 3,  // the archive is whole, the journal still there
  kApplyCommitted = 4,       // the journal is gone
};

typedef void (*TApplyProbe)(TApplyStage stage);

// The only way to install a probe.
struct TApplyProbeAccess {
  static void install(TApplyProbe probe);
};
