#!/usr/bin/env bash
# Builds the desktop program and starts it: natively on Windows, under Wine
# on Linux. On Linux without a display it runs on a virtual one with a small
# demonstration archive, saves a screenshot and prints where it is.
# Arguments go to the program (archives to open, files to add).
set -euo pipefail
cd "$(dirname "$0")/.."
here="$(pwd)/scripts"

case "$(uname -s)" in
  MINGW* | MSYS* | CYGWIN*)
    cmake --preset windows >/dev/null
    cmake --build --preset windows --target kestrom
    exec build/windows/kestrom.exe "$@"
    ;;
esac

"$here/install-deps.sh"
. "$here/require.sh"
require cmake:cmake x86_64-w64-mingw32-g++-posix:g++-mingw-w64-x86-64-posix wine:wine \
  Xvfb:xvfb xdotool:xdotool python3:python3
"$here/wine-prefix.sh"
cmake --preset windows >/dev/null
cmake --build --preset windows --target kestrom kst
. "$here/wine-env.sh"
kestrom="$(pwd)/build/windows/kestrom.exe"

if [ -n "${DISPLAY:-}" ]; then
  exec wine "$kestrom" "$@"
fi

shot="$(pwd)/build/windows/kestrom-screenshot.png"
demo="$(mktemp -d)"
mkdir -p "$demo/fb"
display=""
for n in $(seq 140 199); do
  [ -e "/tmp/.X$n-lock" ] || { display=":$n"; break; }
done
Xvfb "$display" -screen 0 1024x768x24 -fbdir "$demo/fb" -nolisten tcp >/dev/null 2>&1 &
xvfb_pid=$!
trap 'kill "$xvfb_pid" 2>/dev/null || true; rm -rf "$demo"' EXIT
export DISPLAY="$display"

# A demonstration archive: a folder added twice with a change in between.
mkdir -p "$demo/プロジェクト/資料"
printf 'Kestrom のデモ\n' >"$demo/プロジェクト/はじめに.txt"
printf '第一版\n' >"$demo/プロジェクト/資料/報告書.txt"
kst_exe="$(pwd)/build/windows/cli/kst.exe"
kst() { wine "$kst_exe" "$1" --settings "Z:$demo/none.ini" "${@:2}" >/dev/null; }
(cd "$demo" && kst add デモ.kst プロジェクト --comment "最初の版")
sleep 1
printf '第二版、少し長く\n' >"$demo/プロジェクト/資料/報告書.txt"
(cd "$demo" && kst add デモ.kst プロジェクト --comment "二番目の版")

wine "$kestrom" "-cf:Z:${demo//\//\\}\\settings.ini" "-af:Z:${demo//\//\\}\\デモ.kst" "$@" &
program=$!
window=""
for _ in $(seq 300); do
  window="$(xdotool search --name '^Kestrom - ' 2>/dev/null | head -n 1 || true)"
  [ -n "$window" ] && break
  sleep 0.1
done
[ -n "$window" ] || { echo "run.sh: the window did not appear" >&2; exit 1; }
sleep 2
# Into the folder, and onto the file with two versions.
xdotool windowfocus --sync "$window" 2>/dev/null || true
xdotool key --delay 300 Down Right Right Right Right
sleep 1
eval "$(xdotool getwindowgeometry --shell "$window")"
python3 "$here/xvfb-shot.py" "$demo/fb" "$shot" "$X" "$Y" "$WIDTH" "$HEIGHT"
xdotool key --delay 300 alt+f x
wait "$program" || true
echo "No display: kestrom.exe ran on a virtual one. Screenshot: $shot"
