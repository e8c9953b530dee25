#!/usr/bin/env bash
# Installs what is missing, builds every configuration and runs every test:
# Linux natively, Linux under AddressSanitizer and UndefinedBehaviorSanitizer,
# the Windows build under Wine, the 32-bit Windows build under a 32-bit Wine
# (compiled only where install-wine32.sh could not install Debian's
# wine32:i386), and a short run of every fuzz target.
set -euo pipefail
cd "$(dirname "$0")/.."
here="$(pwd)/scripts"

"$here/install-deps.sh"
. "$here/require.sh"
require cmake:cmake ctest:cmake g++:g++ clang++:clang \
  x86_64-w64-mingw32-g++-posix:g++-mingw-w64-x86-64-posix \
  i686-w64-mingw32-g++-posix:g++-mingw-w64-i686-posix \
  wine:wine wineboot:wine wineserver:wine Xvfb:xvfb xdotool:xdotool python3:python3
"$here/wine-prefix.sh"

for preset in linux linux-asan; do
  echo "== $preset"
  cmake --preset "$preset" >/dev/null
  cmake --build --preset "$preset"
  ctest --preset "$preset"
done


echo "== windows (under Wine)"
# The end-to-end test checks what the desktop program wrote with the Linux
# build's kst, so that its checks do not rest on the Windows build alone.
cmake --preset windows -DKST_NATIVE_PROGRAM="$(pwd)/build/linux/cli/kst" >/dev/null
cmake --build --preset windows
. "$here/wine-env.sh"
# One persistent server for the whole run: each test program then starts in
# milliseconds instead of seconds.
wineserver -p 2>/dev/null || true  # one may be running already
trap 'wineserver -k >/dev/null 2>&1 || true' EXIT
# Wine's own services start with its first program and live as long as the
# server; started here, they do not hold ctest's output pipes open.
"$here/wine-run" cmd /c exit >/dev/null 2>&1 </dev/null || true
ctest --preset windows

echo "== windows32"
cmake --preset windows32 -DKST_NATIVE_PROGRAM="$(pwd)/build/linux/cli/kst" >/dev/null
cmake --build --preset windows32
if [ -x /usr/lib/wine/wine ]; then
  KST_WINEARCH=win32 "$here/wine-prefix.sh"
  (
    export KST_WINEARCH=win32
    . "$here/wine-env.sh"
    wineserver -p 2>/dev/null || true
    trap 'wineserver -k >/dev/null 2>&1 || true' EXIT
    "$here/wine-run" cmd /c exit >/dev/null 2>&1 </dev/null || true
    ctest --preset windows32
  )
else
  echo "compiled only: running the 32-bit programs needs wine32:i386"
fi

echo "== fuzz targets (short run)"
"$here/fuzz-smoke.sh" 5
