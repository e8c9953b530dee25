# Sourced by the scripts that run the desktop program on a display of their
# own: a virtual display whose screen is kept as a file (so that screenshots
# read it), a wait for a window by its name, and a screenshot of a window.
# The caller has required Xvfb, xdotool and python3.
virtual_display_here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"

# Starts a virtual display on the first free number, keeping its screen in
# the folder $1; exports DISPLAY and sets xvfb_pid, which the caller ends.
start_virtual_display() {
  local n
  virtual_screen="$1"
  mkdir -p "$virtual_screen"
  for n in $(seq 140 199); do
    [ -e "/tmp/.X$n-lock" ] || break
  done
  Xvfb ":$n" -screen 0 1024x768x24 -fbdir "$virtual_screen" -nolisten tcp >/dev/null 2>&1 &
  xvfb_pid=$!
  export DISPLAY=":$n"
  for _ in $(seq 50); do xdotool getmouselocation >/dev/null 2>&1 && break; sleep 0.1; done
}

# Prints the id of the first window whose name matches $1, waiting up to 30
# seconds; fails when none appears.
find_window() {
  local id
  for _ in $(seq 300); do
    id="$(xdotool search --name "$1" 2>/dev/null | head -n 1 || true)"
    [ -n "$id" ] && { echo "$id"; return 0; }
    sleep 0.1
  done
  return 1
}

# Saves the window $1 as the PNG file $2; with no window, the whole screen.
shoot_window() {
  local X Y WIDTH HEIGHT
  if [ -z "$1" ]; then
    python3 "$virtual_display_here/xvfb-shot.py" "$virtual_screen" "$2"
    return
  fi
  eval "$(xdotool getwindowgeometry --shell "$1")"
  python3 "$virtual_display_here/xvfb-shot.py" "$virtual_screen" "$2" "$X" "$Y" "$WIDTH" "$HEIGHT"
}
