#!/usr/bin/env bash
# Installs from Debian's packages whatever the build and the tests need and
# the machine lacks. Safe to run again: it only acts on what is missing.
set -euo pipefail
. "$(dirname "$0")/require.sh"
require apt-get:apt dpkg-query:dpkg

# fonts-wine holds the glyphs of the title bars' buttons that Wine draws.
packages=(cmake g++ make libgtest-dev libbenchmark-dev googletest
          g++-mingw-w64-x86-64-posix g++-mingw-w64-i686-posix
          wine wine64 fonts-wine xvfb xdotool locales fonts-noto-cjk
          clang libclang-rt-14-dev xdelta3 zstd python3 git time)

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done

sudo_cmd=()
[ "$(id -u)" -eq 0 ] || sudo_cmd=(sudo)

if [ ${#missing[@]} -gt 0 ]; then
  echo "installing: ${missing[*]}"
  # An index that fails to download (the i386 ones of install-wine32.sh
  # have) leaves its old copy in use; what cannot be found then fails below.
  "${sudo_cmd[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update -qq || true
  "${sudo_cmd[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
fi

# Wine takes its ANSI code page from the locale: ja_JP gives code page 932.
if ! locale -a 2>/dev/null | grep -qi '^ja_JP\.utf-\?8$'; then
  "${sudo_cmd[@]}" sed -i 's/^# *\(ja_JP.UTF-8 UTF-8\)/\1/' /etc/locale.gen
  grep -q '^ja_JP.UTF-8 UTF-8' /etc/locale.gen || echo 'ja_JP.UTF-8 UTF-8' | "${sudo_cmd[@]}" tee -a /etc/locale.gen >/dev/null
  require locale-gen:locales
  "${sudo_cmd[@]}" locale-gen >/dev/null
fi

"$(dirname "$0")/install-wine32.sh"
