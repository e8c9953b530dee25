#!/usr/bin/env bash
# Prepares the Wine prefix that the Windows programs run in: code page 932,
# Japanese fonts mapped to Noto CJK so that Japanese text renders, and title
# bars drawn by Wine with their button symbols.
set -euo pipefail
here="$(cd "$(dirname "$0")" && pwd)"
. "$here/wine-env.sh"
. "$here/require.sh"
require wine:wine wineboot:wine wineserver:wine
marlett=/usr/share/wine/fonts/marlett.ttf
[ -f "$marlett" ] || { echo "wine-prefix.sh: $marlett is missing (package fonts-wine)" >&2; exit 127; }

# A 64-bit prefix made before Debian's 32-bit Wine was installed has no
# 32-bit system folder, and Wine's launcher, which then starts every program
# through the 32-bit loader, fails in it: such a prefix of ours is made again.
wow=""
[ "$WINEARCH" = win64 ] && [ -x /usr/lib/wine/wine ] && wow="-wow"
stamp="$WINEPREFIX/.kestrom-prefix-3$wow"
[ -f "$stamp" ] && exit 0
if compgen -G "$WINEPREFIX/.kestrom-prefix-*" >/dev/null; then
  wineserver -k >/dev/null 2>&1 || true
  rm -rf "$WINEPREFIX"
fi

mkdir -p "$WINEPREFIX"
wineboot -i >/dev/null 2>&1
font="Noto Sans CJK JP"
for face in "MS Gothic" "MS PGothic" "MS UI Gothic" "MS Mincho" "MS PMincho" \
            "Meiryo" "Meiryo UI" "Yu Gothic" "Yu Gothic UI" "MS Shell Dlg" "MS Shell Dlg 2" "Tahoma"; do
  wine reg add 'HKCU\Software\Wine\Fonts\Replacements' /v "$face" /t REG_SZ /d "$font" /f >/dev/null 2>&1
done
# This Wine does not find the symbol font of its own title-bar buttons in
# its data folder; in the prefix's font folder it does.
cp "$marlett" "$WINEPREFIX/drive_c/windows/Fonts/"
# Without a window manager (a virtual display) Wine draws the title bars
# itself, so that screenshots show them.
wine reg add 'HKCU\Software\Wine\X11 Driver' /v Decorated /t REG_SZ /d N /f >/dev/null 2>&1
wineserver -w
touch "$stamp"
