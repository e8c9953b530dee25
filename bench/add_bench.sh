#!/usr/bin/env bash
# The add command on a real tree (the system's header folder, about 8 000
# files and 100 MB): a new archive (on every core, and on one thread), the
# same tree again with nothing changed, again after 1% of its files changed,
# and the whole archive extracted. Beside it, in the same run: git add -A &&
# git commit, tar | zstd -3 and plain tar, of the same tree. Each as a whole
# process with its peak memory. Where the tree stays the same, the programs
# that are compared run in turn, and each gets the median of its rounds.
#
# usage: bench/add_bench.sh
#   SOURCE  the folder whose files make the tree (default /usr/include)
#   WORK    scratch folder (default /tmp/kst-add-bench); its tree is made
#           once and kept
#   BUILD   the build folder of the linux preset (default build/linux)
set -euo pipefail
here="$(cd "$(dirname "$0")" && pwd)"
repo="$(dirname "$here")"
source_dir="${SOURCE:-/usr/include}"
work="${WORK:-/tmp/kst-add-bench}"
build="${BUILD:-$repo/build/linux}"
tree="$work/tree"

. "$repo/scripts/require.sh"
require cmake:cmake g++:g++ python3:python3 git:git tar:tar zstd:zstd /usr/bin/time:time
[ "$build" = "$repo/build/linux" ] && (cd "$repo" && cmake --preset linux >/dev/null)
cmake --build "$build" --target kst -j2 >/dev/null
kst_program="$build/cli/kst"

# The tree: the regular files of the source. Names that differ only in case
# are one name in an archive, as on Windows: only the first of them is taken.
if [ ! -f "$work/tree.done" ]; then
  rm -rf "$work"
  mkdir -p "$tree"
  (cd "$source_dir" && find . -type f | LC_ALL=C sort |
    awk '{ key = tolower($0) } !(key in seen) { seen[key]; print }' >"$work/files")
  tar -cf - -C "$source_dir" -T "$work/files" | tar -xf - -C "$tree"
  touch "$work/tree.done"
fi
run="$work/run"
rm -rf "$run"
mkdir -p "$run"

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
# The seconds of a result, and its peak memory in MB kept in $run/NAME.mb.
keep() {
  local name="$1" result="$2"
  echo "${result#* }" >"$run/$name.mb"
  echo "${result%% *}"
}
mb() { cat "$run/$1.mb"; }
size_mb() { du -sb "$1" | awk '{printf "%.1f", $1 / 1048576}'; }

# The commands, as programs. A settings file of its own, so that the
# user's options do not count.
kst=$(script kst "exec '$kst_program' \"\$1\" --settings '$run/none.ini' \"\${@:2}\"")
git_commit=$(script git-commit "export GIT_DIR='$run/git' GIT_WORK_TREE='$tree'
git add -A
git -c user.name=bench -c user.email=bench@localhost commit -q -m \"\$1\" || true")
git_checkout=$(script git-checkout "git --git-dir='$run/git' --work-tree=\"\$1\" checkout -f HEAD -- .")
tar_zstd=$(script tar-zstd "tar -cf - -C '$work' tree | zstd -3 -q -f -o \"\$1\"")
zstd_tar=$(script zstd-tar "zstd -d -q -c \"\$1\" | tar -xf - -C \"\$2\"")

echo "tree: $files files, $(awk -v b="$bytes" 'BEGIN {printf "%.1f", b / 1048576}') MB from $source_dir"
echo "beside: $(git --version), $(tar --version | head -1), zstd $(zstd -V | sed -n 's/.* v\([0-9.]*\).*/\1/p'), $(nproc) cores"

new_git="rm -rf '$run/git'; git init -q --bare '$run/git'; sync"
mapfile -t first < <(interleaved 5 "rm -f '$run/a.kst'; sync" kst-add-1 "$kst" add "$run/a.kst" "$tree" ";;" \
  "$new_git" git-commit-1 "$git_commit" first ";;" \
  : tarzst-1 "$tar_zstd" "$run/t1.tar.zst" ";;" \
  : tar-1 tar -cf "$run/t1.tar" -C "$work" tree)
k1=$(keep kst-add-1 "${first[0]}")
g1=$(keep git-commit-1 "${first[1]}")
z1=$(keep tarzst-1 "${first[2]}")
t1=$(keep tar-1 "${first[3]}")
k1one=$(keep kst-add-1-one "$(median3_after "rm -f '$run/one.kst'; sync" kst-add-1-one \
  "$kst" add "$run/one.kst" "$tree" --threads 1)")
ks1=$(size_mb "$run/a.kst"); gs1=$(size_mb "$run/git"); ts1=$(size_mb "$run/t1.tar"); zs1=$(size_mb "$run/t1.tar.zst")

mapfile -t again < <(interleaved 5 : kst-add-again "$kst" add "$run/a.kst" "$tree" ";;" \
  : git-commit-again "$git_commit" again)
k0=$(keep kst-add-again "${again[0]}")
g0=$(keep git-commit-again "${again[1]}")

# A clean copy of the tree comes back at the end, so that the next run
# starts from the same files.
cp -a "$tree" "$run/original"
trap 'rm -rf "$tree"; mv "$run/original" "$tree"' EXIT
change_one_percent
k2=$(keep kst-add-2 "$(measure kst-add-2 "$kst" add "$run/a.kst" "$tree")")
g2=$(keep git-commit-2 "$(measure git-commit-2 "$git_commit" second)")
z2=$(keep tarzst-2 "$(measure tarzst-2 "$tar_zstd" "$run/t2.tar.zst")")
t2=$(keep tar-2 "$(measure tar-2 tar -cf "$run/t2.tar" -C "$work" tree)")
ks2=$(size_mb "$run/a.kst"); gs2=$(size_mb "$run/git")
ts2=$(awk -v a="$ts1" -v b="$(size_mb "$run/t2.tar")" 'BEGIN {printf "%.1f", a + b}')
zs2=$(awk -v a="$zs1" -v b="$(size_mb "$run/t2.tar.zst")" 'BEGIN {printf "%.1f", a + b}')

# The folder of an extract, emptied before each run and written out to the
# disk, so that no run pays for the writing back of the one before.
fresh() { echo "rm -rf '$run/$1'; mkdir -p '$run/$1'; sync"; }
mapfile -t out < <(interleaved 3 "$(fresh kst-out)" kst-extract "$kst" extract "$run/a.kst" -d "$run/kst-out" ";;" \
  "$(fresh git-out)" git-checkout "$git_checkout" "$run/git-out" ";;" \
  "$(fresh zst-out)" tarzst-extract "$zstd_tar" "$run/t2.tar.zst" "$run/zst-out" ";;" \
  "$(fresh tar-out)" tar-extract tar -xf "$run/t2.tar" -C "$run/tar-out")
k3=$(keep kst-extract "${out[0]}")
g3=$(keep git-checkout "${out[1]}")
z3=$(keep tarzst-extract "${out[2]}")
t3=$(keep tar-extract "${out[3]}")

same() { diff -rq "$tree" "$1" >/dev/null && echo same || echo DIFFERENT; }
ratio() { awk -v a="$1" -v b="$2" 'BEGIN {if (b > 0) printf "%.2fx", a / b; else print "-"}'; }

echo "kst: $(tail -1 "$run/kst-add-1.out") / $(tail -1 "$run/kst-add-2.out") / $(tail -1 "$run/kst-extract.out")"
row() { printf '%-34s %9s %9s %9s %9s\n' "$@"; }
row "" kst git tar.zst tar
row "first add (s)" "$k1" "$g1" "$z1" "$t1"
row "first add, one thread (s)" "$k1one" "" "" ""
row "first add, peak memory (MB)" "$(mb kst-add-1)" "$(mb git-commit-1)" "$(mb tarzst-1)" "$(mb tar-1)"
row "add again, nothing changed (s)" "$k0" "$g0" "" ""
row "second add, 1% changed (s)" "$k2" "$g2" "$z2" "$t2"
row "extract the newest tree (s)" "$k3" "$g3" "$z3" "$t3"
row "extract, peak memory (MB)" "$(mb kst-extract)" "$(mb git-checkout)" "$(mb tarzst-extract)" "$(mb tar-extract)"
row "stored after the first (MB)" "$ks1" "$gs1" "$zs1" "$ts1"
row "stored after both (MB)" "$ks2" "$gs2" "$zs2" "$ts2"
row "extracted tree equals the source" "$(same "$run/kst-out/tree")" "$(same "$run/git-out")" \
  "$(same "$run/zst-out/tree")" "$(same "$run/tar-out/tree")"
echo "ratios: first add $(ratio "$k1" "$g1") of git, $(ratio "$k1" "$z1") of tar.zst;" \
  "add again $(ratio "$k0" "$g0") of git; extract $(ratio "$k3" "$z3") of tar.zst"
