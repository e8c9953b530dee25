#!/usr/bin/env bash
# Builds the desktop program and starts it: natively on Windows, under Wine
# on Linux. On Linux without a display it runs on a virtual one with a small
# demonstration archive, saves a screenshot and prints where it is.
# Arguments go to the program (archives to open, files to add).
# KST_WINDOWS_PRESET=windows32 builds and starts the 32-bit programs instead,
# in a 32-bit Wine prefix of their own (Debian package wine32:i386).
set -euo pipefail
cd "$(dirname "$0")/.."
here="$(pwd)/scripts"
preset="${KST_WINDOWS_PRESET:-windows}"

case "$(uname -s)" in
  MINGW* | MSYS* | CYGWIN*)
    cmake --preset "$preset" >/dev/null
    cmake --build --preset "$preset" --target kestrom
    exec "build/$preset/kestrom.exe" "$@"
    ;;
esac

"$here/install-deps.sh"
. "$here/require.sh"
require cmake:cmake x86_64-w64-mingw32-g++-posix:g++-mingw-w64-x86-64-posix wine:wine \
  Xvfb:xvfb xdotool:xdotool python3:python3
if [ "$preset" = windows32 ]; then
  require i686-w64-mingw32-g++-posix:g++-mingw-w64-i686-posix /usr/lib/wine/wine:wine32:i386
  export KST_WINEARCH=win32
fi
"$here/wine-prefix.sh"
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset" --target kestrom kst
. "$here/wine-env.sh"
kestrom="$(pwd)/build/$preset/kestrom.exe"

if [ -n "${DISPLAY:-}" ]; then
  exec wine "$kestrom" "$@"
fi

shot="$(pwd)/build/$preset/kestrom-screenshot.png"
demo="$(mktemp -d)"
. "$here/virtual-display.sh"
start_virtual_display "$demo/fb"
trap 'kill "$xvfb_pid" 2>/dev/null || true; rm -rf "$demo"' EXIT

# A demonstration archive: a folder added twice with a change in between.
mkdir -p "$demo/プロジェクト/資料"
printf 'Kestrom のデモ\n' >"$demo/プロジェクト/はじめに.txt"
printf '第一版\n' >"$demo/プロジェクト/資料/報告書.txt"
kst_exe="$(pwd)/build/$preset/cli/kst.exe"
kst() { wine "$kst_exe" "$1" --settings "Z:$demo/none.ini" "${@:2}" >/dev/null; }
(cd "$demo" && kst add デモ.kst プロジェクト --comment "最初の版")
sleep 1
printf '第二版、少し長く\n' >"$demo/プロジェクト/資料/報告書.txt"
(cd "$demo" && kst add デモ.kst プロジェクト --comment "二番目の版")

wine "$kestrom" "-cf:Z:${demo//\//\\}\\settings.ini" "-af:Z:${demo//\//\\}\\デモ.kst" "$@" &
program=$!
window="$(find_window '^Kestrom - ')" || { echo "run.sh: the window did not appear" >&2; exit 1; }
sleep 2
# Into the folder, and onto the file with two versions.
xdotool windowfocus --sync "$window" 2>/dev/null || true
xdotool key --delay 300 Down Right Right Right Right
sleep 1
shoot_window "$window" "$shot"
xdotool key --delay 300 alt+f x
wait "$program" || true
echo "No display: kestrom.exe ran on a virtual one. Screenshot: $shot"
