#!/usr/bin/env bash
# kst check of one file with many versions: a text of about 200 KB gets a
# small edit (two lines changed, its size kept) before each of 2 000 adds,
# and the archive is checked after 200 versions and after 2 000, as whole
# processes, medians of three. A check that reads each version once grows
# tenfold from the one to the other; one that walks each version's chain
# from the newest grows a hundredfold.
#
# usage: bench/check_bench.sh [VERSIONS, default 2000]
#   WORK   scratch folder (default /tmp/kst-check-bench); its archives are
#          made once per number of versions and kept
#   BUILD  the build folder of the linux preset (default build/linux)
set -euo pipefail
here="$(cd "$(dirname "$0")" && pwd)"
repo="$(dirname "$here")"
versions="${1:-2000}"
work="${WORK:-/tmp/kst-check-bench}"
build="${BUILD:-$repo/build/linux}"
small=$((versions / 10))

. "$repo/scripts/require.sh"
require cmake:cmake g++:g++ python3:python3 /usr/bin/time:time
[ "$build" = "$repo/build/linux" ] && (cd "$repo" && cmake --preset linux >/dev/null)
cmake --build "$build" --target kst -j2 >/dev/null
kst_program="$build/cli/kst"
run="$work/run"
mkdir -p "$run"
. "$here/measure.sh"
kst=$(script kst "exec '$kst_program' \"\$1\" --settings '$run/none.ini' \"\${@:2}\"")

if [ ! -f "$work/$versions.done" ]; then
  rm -f "$work"/*.kst "$work"/*.done
  mkdir -p "$work/src"
  # Each round edits the text and gives it a later time, then adds it.
  python3 - "$work/src/text.txt" "$versions" "$small" "$work" "$kst" <<'PY'
import os, random, subprocess, sys, shutil
path, versions, small, work, kst = sys.argv[1], int(sys.argv[2]), int(sys.argv[3]), sys.argv[4], sys.argv[5]
rng = random.Random(1)
lines = ["line %05d: %s" % (i, " ".join(rng.choice(["alpha", "beta", "gamma", "delta", "omega"])
         for _ in range(6))) for i in range(5000)]
for v in range(1, versions + 1):
    for _ in range(2):
        at = rng.randrange(len(lines))
        lines[at] = "line %05d: %s" % (at, " ".join(rng.choice(["alpha", "beta", "gamma",
                    "delta", "omega"]) for _ in range(6)))
    with open(path, "w") as f:
        f.write("\n".join(lines) + "\n")
    os.utime(path, (1600000000 + v * 60, 1600000000 + v * 60))
    subprocess.run([kst, "add", os.path.join(work, "many.kst"), path], check=True,
                   stdout=subprocess.DEVNULL)
    if v == small:
        shutil.copy(os.path.join(work, "many.kst"), os.path.join(work, "few.kst"))
PY
  touch "$work/$versions.done"
fi

few=$(median3 check-few "$kst" check "$work/few.kst")
many=$(median3 check-many "$kst" check "$work/many.kst")
echo "file of $(du -b "$work/src/text.txt" | awk '{printf "%.0f", $1 / 1024}') KB; archives $(du -b "$work/few.kst" | awk '{printf "%.1f", $1 / 1048576}') and $(du -b "$work/many.kst" | awk '{printf "%.1f", $1 / 1048576}') MB"
printf '%-28s %16s\n' "" "kst check (s, MB)"
printf '%-28s %16s\n' "$small versions" "$few" "$versions versions" "$many"
awk -v a="${few%% *}" -v b="${many%% *}" -v n="$((versions / small))" \
  'BEGIN {if (a > 0) printf "ratio %.1fx for %dx the versions\n", b / a, n}'
tail -2 "$run/check-many.out"
