# Sourced by the Wine scripts: one test prefix, Japanese locale, no noise.
export WINEPREFIX="${KST_WINEPREFIX:-$HOME/.cache/kestrom/wine}"
export WINEARCH=win64
export WINEDEBUG="${WINEDEBUG:--all}"
export WINEDLLOVERRIDES="mscoree,mshtml="
export LANG=ja_JP.UTF-8
export LC_ALL=ja_JP.UTF-8
