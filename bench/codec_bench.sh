#!/usr/bin/env bash
# Builds the corpus of version chains and the codec benchmark, and runs it
# beside xdelta3 and zstd --patch-from; then, as whole processes, kstcodec
# on the ~12 MB file of the corpus beside zstd -3, alone and against its
# next version, with the peak memory of each.
#
# usage: bench/codec_bench.sh [SEED]
#   CORPUS  where the corpus goes (default /tmp/kst-codec-corpus-SEED); an
#           existing one with the same seed is reused
#   BUILD   the build folder of the linux preset (default build/linux)
set -euo pipefail
here="$(cd "$(dirname "$0")" && pwd)"
repo="$(dirname "$here")"
seed="${1:-1}"
corpus="${CORPUS:-/tmp/kst-codec-corpus-$seed}"
build="${BUILD:-$repo/build/linux}"

. "$repo/scripts/require.sh"
require cmake:cmake g++:g++ python3:python3 xdelta3:xdelta3 zstd:zstd /usr/bin/time:time
corpus_maker="$repo/../shared/bench/make_corpus.py"
[ -f "$corpus_maker" ] || { echo "the corpus maker is missing: $corpus_maker" >&2; exit 1; }

if ! grep -q "\"seed\": $seed," "$corpus/manifest.json" 2>/dev/null; then
  rm -rf "$corpus"
  python3 "$corpus_maker" "$seed" "$corpus" >/dev/null
fi

[ "$build" = "$repo/build/linux" ] && (cd "$repo" && cmake --preset linux >/dev/null)
cmake --build "$build" --target codec_bench kstcodec -j2 >/dev/null

echo "corpus $corpus (seed $seed), $(xdelta3 -V 2>&1 | head -1), $(zstd -V)"
"$build/bench/codec_bench" "$corpus" 2> >(grep -v "long mode automatically triggered" >&2)

# Whole processes on one large file: its version before the newest, alone
# and against the newest (as the archive stores it), each beside zstd in
# turn, medians of nine rounds.
. "$here/measure.sh"
run="$(mktemp -d)"
trap 'rm -rf "$run"' EXIT
chain="$(ls -d "$corpus"/b/*/ | head -1)"
newest="$(ls "$chain" | sort | tail -1)"
older="$(ls "$chain" | sort | tail -2 | head -1)"
target="$chain/$older"
reference="$chain/$newest"
kstcodec="$build/tools/kstcodec"
echo
echo "one file: $target ($(du -b "$target" | awk '{printf "%.1f", $1 / 1048576}') MB) against $newest"
printf '%-28s %20s %20s %8s\n' "" "kstcodec (s, MB)" "zstd -3 (s, MB)" "ratio"
row() {
  local label="$1" k="$2" z="$3"
  printf '%-28s %20s %20s %8s\n' "$label" "$k" "$z" \
    "$(awk -v a="${k%% *}" -v b="${z%% *}" 'BEGIN {if (b > 0) printf "%.2fx", a / b; else print "-"}')"
}
whole=$(interleaved 9 : kc-whole "$kstcodec" encode "$target" ";;" \
  : zstd-whole zstd -3 -f -o "$run/whole.zst" "$target")
delta=$(interleaved 9 : kc-delta "$kstcodec" encode "$target" "$reference" ";;" \
  : zstd-delta zstd -3 -f --patch-from="$reference" -o "$run/delta.zst" "$target")
row "encode whole" "$(sed -n 1p <<<"$whole")" "$(sed -n 2p <<<"$whole")"
row "encode against the next" "$(sed -n 1p <<<"$delta")" "$(sed -n 2p <<<"$delta")"
