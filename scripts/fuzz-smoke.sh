#!/usr/bin/env bash
# Builds the libFuzzer targets with clang and runs each one for a few seconds
# from its seeds (fuzz/seeds/<name>, where there are any): every target must
# start, take input and find nothing.
# Usage: scripts/fuzz-smoke.sh [seconds per target, default 10]
# The build goes to build/fuzz (or $KST_FUZZ_BUILD).
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/require.sh
require cmake:cmake clang++:clang
seconds="${1:-10}"
build="${KST_FUZZ_BUILD:-build/fuzz}"

cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_COMPILER=clang++ \
  -DKST_FUZZ=ON -DKST_TESTS=OFF >/dev/null
cmake --build "$build" -j2

status=0
for target in "$build"/fuzz/*_fuzz; do
  [ -x "$target" ] || continue
  name=$(basename "$target")
  corpus=$(mktemp -d)
  seeds="fuzz/seeds/${name%_fuzz}"
  [ -d "$seeds" ] && cp "$seeds"/* "$corpus"/
  log=$(mktemp)
  if "$target" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=4096 -malloc_limit_mb=4096 \
      "$corpus" >"$log" 2>&1; then
    echo "$name: $(grep -E '^Done [0-9]+ runs' "$log" || echo 'done')"
  else
    echo "$name: FAILED"
    tail -n 40 "$log"
    status=1
  fi
  rm -rf "$corpus" "$log"
done
exit $status
