#!/bin/bash
# Installs the packages of scripts/packages.txt that are missing; does nothing, quickly, when all are there.
set -u
cd "$(dirname "$0")/.." || exit
. scripts/common.sh

mapfile -t wanted < <(grep -v '^#' scripts/packages.txt)
if ! command -v dpkg-query >/dev/null; then
  say "this is no Debian system; it needs what these packages hold: ${wanted[*]}"
  exit 0
fi

installed=$(dpkg-query -W -f='${db:Status-Status} ${Package}\n' "${wanted[@]}" 2>/dev/null |
  sed -n 's/^installed //p')
mapfile -t missing < <(printf '%s\n' "${wanted[@]}" | grep -vxF -e "$installed")
[ ${#missing[@]} -eq 0 ] && exit 0

root=()
if [ "$(id -u)" != 0 ]; then
  if ! command -v sudo >/dev/null; then
    say "packages are missing and only root can add them: apt-get install ${missing[*]}"
    exit 1
  fi
  root=(sudo)
fi

apt=("${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq -o DPkg::Lock::Timeout=300)
install_missing() {
  "${apt[@]}" update && "${apt[@]}" -y --no-install-recommends install "${missing[@]}"
}
step "Install once ${missing[*]}" setup install_missing
