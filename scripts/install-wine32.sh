#!/usr/bin/env bash
# Installs Debian's 32-bit Wine (wine32:i386), in which the 32-bit programs
# and their tests run. Best effort: where it cannot be had, it says why and
# leaves apt as it found it, and the 32-bit build is then compiled only.
#
# The i386 index of the security suite has been served out of step with its
# Release file ("Mirror sync in progress?"), and without it the i386
# libraries stay at versions older than their amd64 pairs, which must be the
# same. The index that was served matches the amd64 one, so when apt refuses
# it, it is fetched as it is and put where apt keeps its lists. That index is
# not checked against the signed Release file (its checksum is the one that
# does not match); apt checks the packages against the hashes it gives.
set -uo pipefail
. "$(dirname "$0")/require.sh"
require apt-get:apt dpkg:dpkg /usr/lib/apt/apt-helper:apt xz:xz-utils

[ -x /usr/lib/wine/wine ] && exit 0

sudo_cmd=()
[ "$(id -u)" -eq 0 ] || sudo_cmd=(sudo)
as_root() { "${sudo_cmd[@]}" env DEBIAN_FRONTEND=noninteractive "$@"; }

added_arch=""
if ! dpkg --print-foreign-architectures | grep -qx i386; then
  as_root dpkg --add-architecture i386
  added_arch=yes
fi

. /etc/os-release
lists=/var/lib/apt/lists
index="dists/$VERSION_CODENAME-security/main/binary-i386/Packages"
if ! as_root apt-get update -qq >/dev/null 2>&1 && ! compgen -G "$lists/*_debian-security_${index//\//_}*" >/dev/null; then
  mirror=$(grep -rhE '^(URIs:|deb )' /etc/apt/sources.list /etc/apt/sources.list.d/ 2>/dev/null |
    grep -oE 'https?://[^ ]+/debian-security' | head -1)
  fetched=$(mktemp --suffix=.xz)
  if [ -n "$mirror" ] && /usr/lib/apt/apt-helper download-file "$mirror/$index.xz" "$fetched" >/dev/null 2>&1; then
    host_path="${mirror#*://}"
    xz -dc "$fetched" | as_root tee "$lists/${host_path//\//_}_${index//\//_}" >/dev/null
  fi
  rm -f "$fetched"
fi

# The SASL libraries are named so that apt's resolver, which otherwise gives
# up on them, takes the i386 versions that match the amd64 ones installed.
if as_root apt-get install -y -qq --no-install-recommends \
    wine32:i386 libsasl2-2:i386 libsasl2-modules-db:i386 >/dev/null 2>&1; then
  echo "installed: wine32:i386"
  exit 0
fi

echo "wine32:i386 could not be installed: the 32-bit programs are compiled but not run" >&2
if [ -n "$added_arch" ] && ! dpkg-query -W -f='${Architecture}\n' 2>/dev/null | grep -qx i386; then
  as_root dpkg --remove-architecture i386
  as_root apt-get update -qq >/dev/null 2>&1
fi
exit 0
