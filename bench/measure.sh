# Sourced by the benchmarks: `measure NAME COMMAND...` runs a command as a
# whole process, its output kept in $run/NAME.out, and prints its seconds
# and its peak memory in MB; `median3 NAME COMMAND...` runs it three times
# and prints the run of median seconds. Needs $run and GNU time.
measure() {
  local name="$1"
  shift
  /usr/bin/time -f "%e %M" -o "$run/$name.time" "$@" >"$run/$name.out" 2>&1 || true
  # The last line: GNU time puts a line about a failed exit before it.
  tail -n 1 "$run/$name.time" | awk '{printf "%.2f %.1f", $1, $2 / 1024}'
}
median3() {
  local name="$1"
  shift
  { measure "$name" "$@"; echo; measure "$name" "$@"; echo; measure "$name" "$@"; echo; } |
    sort -n | sed -n 2p
}
