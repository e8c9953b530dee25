#!/usr/bin/env bash
# The add command on a source tree of at least 5 000 files and 100 MB: a new
# archive (on every core, and on one thread), the same tree again with
# nothing changed, again after 1% of its files changed, and the whole
# archive extracted. Beside it, in the same run: git add -A && git commit,
# and tar, of the same tree. Each as a whole process, with its peak memory.
#
# usage: bench/add_bench.sh [SEED]
#   WORK   scratch folder (default /tmp/kst-add-bench-SEED); its tree is
#          made once per seed and kept
#   BUILD  the Release build folder (default /tmp/b-cli-rel)
set -euo pipefail
here="$(cd "$(dirname "$0")" && pwd)"
repo="$(dirname "$here")"
seed="${1:-1}"
work="${WORK:-/tmp/kst-add-bench-$seed}"
build="${BUILD:-/tmp/b-cli-rel}"
tree="$work/tree"
min_files=5000

"$repo/scripts/install-deps.sh"
. "$repo/scripts/require.sh"
require cmake:cmake g++:g++ python3:python3 git:git tar:tar zstd:zstd /usr/bin/time:time
corpus_maker="$repo/../shared/bench/make_corpus.py"
[ -f "$corpus_maker" ] || { echo "the corpus maker is missing: $corpus_maker" >&2; exit 1; }
cmake -S "$repo" -B "$build" -DCMAKE_BUILD_TYPE=Release -DKST_TESTS=OFF >/dev/null
cmake --build "$build" --target kst -j2 >/dev/null
kst_program="$build/cli/kst"
# A settings file of its own, so that the user's options do not count.
kst() { "$kst_program" "$1" --settings "$work/none.ini" "${@:2}"; }

# The tree: the version-chain corpus (text, a large file, binaries), then
# headers of the system in sorted order until there are enough files.
if [ ! -f "$work/tree.done" ]; then
  rm -rf "$work"
  mkdir -p "$tree"
  python3 "$corpus_maker" "$seed" "$tree/corpus" >/dev/null
  have=$(find "$tree" -type f | wc -l)
  # Names that differ only in case are one name in an archive, as on
  # Windows: only the first of them is taken. awk rather than head, which
  # would fail the pipe with SIGPIPE.
  find /usr/include -type f | LC_ALL=C sort |
    awk -v n=$((min_files - have)) '{ key = tolower($0) } !(key in seen) && ++taken <= n { seen[key]; print }' |
    while read -r f; do
      dest="$tree/include/${f#/usr/include/}"
      mkdir -p "$(dirname "$dest")"
      cp "$f" "$dest"
    done
  touch "$work/tree.done"
fi
rm -rf "$work/run"
mkdir -p "$work/run"
run="$work/run"

files=$(find "$tree" -type f | wc -l)
bytes=$(find "$tree" -type f -printf '%s\n' | awk '{s += $1} END {print s}')

# 1% of the files, every hundredth in sorted order, get a line in the middle.
change_one_percent() {
  find "$tree" -type f | LC_ALL=C sort | awk 'NR % 100 == 0' | python3 -c '
import sys
for path in sys.stdin.read().splitlines():
    with open(path, "rb") as f:
        data = f.read()
    middle = len(data) // 2
    with open(path, "wb") as f:
        f.write(data[:middle] + b"\n/* changed by the benchmark */\n" + data[middle:])
'
}

. "$here/measure.sh"
# Seconds of one command, and its peak memory in MB kept in $run/NAME.mb.
seconds() {
  local name="$1" result
  shift
  result=$(measure "$name" "$@")
  echo "${result#* }" >"$run/$name.mb"
  echo "${result%% *}"
}
mb() { cat "$run/$1.mb"; }

size_mb() { du -sb "$1" | awk '{printf "%.1f", $1 / 1048576}'; }

git_do() { git --git-dir="$run/git" --work-tree="$1" "${@:2}"; }
git_commit() { git_do "$tree" add -A && { git_do "$tree" -c user.name=bench -c user.email=bench@localhost commit -q -m "$1" || true; }; }

git init -q --bare "$run/git"
# A clean copy of the tree comes back for every round, so that a second run
# starts from the same files.
cp -a "$tree" "$run/original"
trap 'rm -rf "$tree"; mv "$run/original" "$tree"' EXIT

echo "tree: $files files, $(awk -v b="$bytes" 'BEGIN {printf "%.1f", b / 1048576}') MB (seed $seed)"
echo "beside: $(git --version), $(tar --version | head -1), zstd $(zstd -V | sed -n 's/.* v\([0-9.]*\).*/\1/p')"

k1=$(seconds kst-add-1 kst add "$run/a.kst" "$tree")
k1one=$(seconds kst-add-1-one kst add "$run/one.kst" "$tree" --threads 1)
g1=$(seconds git-commit-1 git_commit first)
t1=$(seconds tar-1 tar -cf "$run/t1.tar" -C "$work" tree)
z1=$(seconds tarzst-1 tar --zstd -cf "$run/t1.tar.zst" -C "$work" tree)
ks1=$(size_mb "$run/a.kst"); gs1=$(size_mb "$run/git"); ts1=$(size_mb "$run/t1.tar"); zs1=$(size_mb "$run/t1.tar.zst")

k0=$(seconds kst-add-again kst add "$run/a.kst" "$tree")
g0=$(seconds git-commit-again git_commit again)

change_one_percent
k2=$(seconds kst-add-2 kst add "$run/a.kst" "$tree")
g2=$(seconds git-commit-2 git_commit second)
t2=$(seconds tar-2 tar -cf "$run/t2.tar" -C "$work" tree)
z2=$(seconds tarzst-2 tar --zstd -cf "$run/t2.tar.zst" -C "$work" tree)
ks2=$(size_mb "$run/a.kst"); gs2=$(size_mb "$run/git")
ts2=$(awk -v a="$(size_mb "$run/t1.tar")" -v b="$(size_mb "$run/t2.tar")" 'BEGIN {printf "%.1f", a + b}')
zs2=$(awk -v a="$zs1" -v b="$(size_mb "$run/t2.tar.zst")" 'BEGIN {printf "%.1f", a + b}')

mkdir -p "$run/kst-out" "$run/git-out" "$run/tar-out" "$run/zst-out"
k3=$(seconds kst-extract kst extract "$run/a.kst" -d "$run/kst-out")
g3=$(seconds git-checkout git_do "$run/git-out" checkout -f HEAD -- .)
t3=$(seconds tar-extract tar -xf "$run/t2.tar" -C "$run/tar-out")
z3=$(seconds tarzst-extract tar --zstd -xf "$run/t2.tar.zst" -C "$run/zst-out")

same() { diff -rq "$tree" "$1" >/dev/null && echo same || echo DIFFERENT; }

echo "kst: $(tail -1 "$run/kst-add-1.out") / $(tail -1 "$run/kst-add-2.out") / $(tail -1 "$run/kst-extract.out")"
printf '%-34s %9s %9s %9s %9s\n' "" kst git tar tar.zst
printf '%-34s %9s %9s %9s %9s\n' "first add (s)" "$k1" "$g1" "$t1" "$z1"
printf '%-34s %9s %9s %9s %9s\n' "first add, one thread (s)" "$k1one" "" "" ""
printf '%-34s %9s %9s %9s %9s\n' "first add, peak memory (MB)" "$(mb kst-add-1)" "$(mb git-commit-1)" \
  "$(mb tar-1)" "$(mb tarzst-1)"
printf '%-34s %9s %9s %9s %9s\n' "add again, nothing changed (s)" "$k0" "$g0" "" ""
printf '%-34s %9s %9s %9s %9s\n' "second add, 1% changed (s)" "$k2" "$g2" "$t2" "$z2"
printf '%-34s %9s %9s %9s %9s\n' "extract the newest tree (s)" "$k3" "$g3" "$t3" "$z3"
printf '%-34s %9s %9s %9s %9s\n' "extract, peak memory (MB)" "$(mb kst-extract)" "$(mb git-checkout)" \
  "$(mb tar-extract)" "$(mb tarzst-extract)"
printf '%-34s %9s %9s %9s %9s\n' "stored after the first (MB)" "$ks1" "$gs1" "$ts1" "$zs1"
printf '%-34s %9s %9s %9s %9s\n' "stored after both (MB)" "$ks2" "$gs2" "$ts2" "$zs2"
printf '%-34s %9s %9s %9s %9s\n' "extracted tree equals the source" "$(same "$run/kst-out/tree")" \
  "$(same "$run/git-out")" "$(same "$run/tar-out/tree")" "$(same "$run/zst-out/tree")"
