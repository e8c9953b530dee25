#!/usr/bin/env bash
# Prepares the Wine prefix that the Windows programs run in: code page 932,
# Japanese fonts mapped to Noto CJK so that Japanese text renders, and title
# bars drawn by Wine.
set -euo pipefail
here="$(cd "$(dirname "$0")" && pwd)"
. "$here/wine-env.sh"
. "$here/require.sh"
require wine:wine wineboot:wine wineserver:wine

stamp="$WINEPREFIX/.kestrom-prefix-2"
[ -f "$stamp" ] && exit 0

mkdir -p "$WINEPREFIX"
wineboot -i >/dev/null 2>&1
font="Noto Sans CJK JP"
for face in "MS Gothic" "MS PGothic" "MS UI Gothic" "MS Mincho" "MS PMincho" \
            "Meiryo" "Meiryo UI" "Yu Gothic" "Yu Gothic UI" "MS Shell Dlg" "MS Shell Dlg 2" "Tahoma"; do
  wine reg add 'HKCU\Software\Wine\Fonts\Replacements' /v "$face" /t REG_SZ /d "$font" /f >/dev/null 2>&1
done
# Without a window manager (a virtual display) Wine draws the title bars
# itself, so that screenshots show them.
wine reg add 'HKCU\Software\Wine\X11 Driver' /v Decorated /t REG_SZ /d N /f >/dev/null 2>&1
wineserver -w
touch "$stamp"
