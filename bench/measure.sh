# Sourced by the benchmarks: `measure NAME COMMAND...` runs a command as a
# whole process, its output kept in $run/NAME.out, and prints its seconds
# and its peak memory in MB; `median3 NAME COMMAND...` runs it three times
# and prints the run of median seconds; `median3_after SETUP NAME
# COMMAND...` runs the shell text SETUP, untimed, before each of the three;
# `interleaved ROUNDS SETUP NAME COMMAND... ;; SETUP NAME COMMAND...` runs
# the commands in turn, round after round, and prints the run of median
# seconds of each, a line each in the order given, so that programs that
# are compared see the same load of the machine.
# Needs $run and GNU time. A command is a program: a shell function cannot
# be timed as a process, so the benchmarks write theirs as scripts.
measure() {
  local name="$1" start end
  shift
  # Wall time to the millisecond (GNU time gives hundredths, too coarse for
  # the commands that take a few of them); GNU time for the peak memory.
  start=$(date +%s%N)
  /usr/bin/time -f "%M" -o "$run/$name.time" "$@" >"$run/$name.out" 2>&1 || true
  end=$(date +%s%N)
  # The last line: GNU time puts a line about a failed exit before it.
  awk -v ns="$((end - start))" -v kb="$(tail -n 1 "$run/$name.time")" \
    'BEGIN {printf "%.3f %.1f", ns / 1e9, kb / 1024}'
}
median3_after() {
  local setup="$1" name="$2" i
  shift 2
  for i in 1 2 3; do
    eval "$setup"
    measure "$name" "$@"
    echo
  done | sort -n | sed -n 2p
}
median3() { median3_after : "$@"; }
interleaved() {
  local rounds="$1" arg group=() groups=() round g
  shift
  for arg in "$@" ";;"; do
    if [ "$arg" = ";;" ]; then
      groups+=("$(printf '%q ' "${group[@]}")")
      group=()
    else
      group+=("$arg")
    fi
  done
  for ((round = 0; round < rounds; round++)); do
    for g in "${groups[@]}"; do
      eval "set -- $g"
      eval "$1"
      measure "$2" "${@:3}" >>"$run/$2.rounds"
      echo >>"$run/$2.rounds"
    done
  done
  for g in "${groups[@]}"; do
    eval "set -- $g"
    sort -n "$run/$2.rounds" | sed -n "$(((rounds + 1) / 2))p"
    rm -f "$run/$2.rounds"
  done
}
# A script in $run/bin that runs the given shell text with its arguments;
# prints its path.
script() {
  local name="$1" body="$2"
  mkdir -p "$run/bin"
  printf '#!/usr/bin/env bash\nset -e\n%s\n' "$body" >"$run/bin/$name"
  chmod +x "$run/bin/$name"
  echo "$run/bin/$name"
}
