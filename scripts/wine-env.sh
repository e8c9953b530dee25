# Sourced by the Wine scripts: one test prefix, Japanese locale, no noise.
# KST_WINEARCH=win32 selects a prefix of its own for the 32-bit programs.
export WINEARCH="${KST_WINEARCH:-win64}"
if [ "$WINEARCH" = win32 ]; then
  export WINEPREFIX="${KST_WINEPREFIX:-$HOME/.cache/kestrom/wine32}"
else
  export WINEPREFIX="${KST_WINEPREFIX:-$HOME/.cache/kestrom/wine}"
fi
export WINEDEBUG="${WINEDEBUG:--all}"
export WINEDLLOVERRIDES="mscoree,mshtml="
export LANG=ja_JP.UTF-8
export LC_ALL=ja_JP.UTF-8
