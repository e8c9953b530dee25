#!/usr/bin/env bash
# Installs what is missing, builds kst with the linux preset, and shows it at
# work on a small folder: added twice with a change in between, listed, its
# file's versions shown, and an old version read back.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh
. scripts/require.sh
require cmake:cmake g++:g++
cmake --preset linux >/dev/null
cmake --build --preset linux --target kst
kst_program="$(pwd)/build/linux/cli/kst"

demo="$(mktemp -d)"
trap 'rm -rf "$demo"' EXIT
# The demonstration keeps away from the user's own settings file.
kst() { "$kst_program" "$1" --settings "$demo/none.ini" "${@:2}"; }
show() {
  echo
  echo "\$ kst $*"
  kst "$@"
}

mkdir -p "$demo/プロジェクト/docs"
printf 'Kestrom のデモ\n' >"$demo/プロジェクト/README.txt"
printf 'first draft\n' >"$demo/プロジェクト/docs/notes.txt"
cd "$demo"

show add demo.kst プロジェクト --comment "最初の版"
sleep 1  # a new modification time, as an editor would leave it
printf 'second draft, longer\n' >"プロジェクト/docs/notes.txt"
show add demo.kst プロジェクト --comment "二番目の版"
show ls demo.kst /プロジェクト
show log demo.kst /プロジェクト/docs/notes.txt
show cat demo.kst /プロジェクト/docs/notes.txt -v 1
show find demo.kst --name '*.txt' --versions 0
