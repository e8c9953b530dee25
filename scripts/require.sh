# Sourced by the scripts: `require PROGRAM:PACKAGE ...` stops the script,
# naming every program that is not on the PATH and the Debian package that
# brings it, before any step depends on it.
require() {
  local wanted program package missing=()
  for wanted in "$@"; do
    program="${wanted%%:*}"
    package="${wanted#*:}"
    command -v "$program" >/dev/null 2>&1 || missing+=("$program (package $package)")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  local line
  for line in "${missing[@]}"; do echo "missing program: $line" >&2; done
  exit 127
}
