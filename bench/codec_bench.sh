#!/usr/bin/env bash
# Builds the corpus of version chains and the codec benchmark, and runs it
# beside xdelta3 and zstd --patch-from.
#
# usage: bench/codec_bench.sh [SEED]
#   CORPUS  where the corpus goes (default /tmp/kst-codec-corpus-SEED); an
#           existing one with the same seed is reused
#   BUILD   the build folder (default /tmp/b-codec), a Release build
set -euo pipefail
here="$(cd "$(dirname "$0")" && pwd)"
repo="$(dirname "$here")"
seed="${1:-1}"
corpus="${CORPUS:-/tmp/kst-codec-corpus-$seed}"
build="${BUILD:-/tmp/b-codec}"

"$repo/scripts/install-deps.sh"
. "$repo/scripts/require.sh"
require cmake:cmake g++:g++ python3:python3 xdelta3:xdelta3 zstd:zstd
corpus_maker="$repo/../shared/bench/make_corpus.py"
[ -f "$corpus_maker" ] || { echo "the corpus maker is missing: $corpus_maker" >&2; exit 1; }

if ! grep -q "\"seed\": $seed," "$corpus/manifest.json" 2>/dev/null; then
  rm -rf "$corpus"
  python3 "$corpus_maker" "$seed" "$corpus" >/dev/null
fi

cmake -S "$repo" -B "$build" -DCMAKE_BUILD_TYPE=Release -DKST_BENCH=ON -DKST_TESTS=OFF >/dev/null
cmake --build "$build" --target codec_bench -j2 >/dev/null

echo "corpus $corpus (seed $seed), $(xdelta3 -V 2>&1 | head -1), $(zstd -V)"
"$build/bench/codec_bench" "$corpus" 2> >(grep -v "long mode automatically triggered" >&2)
