#!/usr/bin/env bash
# The long forms of the safety checks that the test command runs briefly:
# 200 kills of kst in the middle of its commands, every fuzz target for ten
# minutes (the archive loader from its seed archives), and an add and
# extract of a file of the largest size, 2 147 483 647 bytes.
# Usage: scripts/long-checks.sh [kills, default 200] [seconds per fuzz target, default 600]
set -euo pipefail
cd "$(dirname "$0")/.."
kills="${1:-200}"
seconds="${2:-600}"

scripts/install-deps.sh
. scripts/require.sh
require cmake:cmake g++:g++
cmake --preset linux >/dev/null
cmake --build --preset linux --target crash_tests cli_tests
echo "== crash harness: $kills kills"
KST_CRASH_KILLS="$kills" build/linux/tests/crash_tests

echo "== fuzz targets: $seconds s each"
scripts/fuzz-smoke.sh "$seconds"

echo "== the largest file"
KST_LARGE_FILE_SIZE=2147483647 build/linux/tests/cli_tests --gtest_filter='KstLargestFile.*'
