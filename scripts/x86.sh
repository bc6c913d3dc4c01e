#!/bin/bash
# Tests the x86 programs, and both widths beside each other: hosts of this family are 32-bit. Wine with both halves comes
# in a small Debian of its own, build/x86-root, which is made once (3 minutes, 1.5 GB), since the packages of a machine
# may not take the 32-bit half. Where the machine refuses, it says so and is skipped.
#
#   x86.sh --there             only answers whether the small Debian is there and may be used
#   x86.sh --tests PART...     only runs these parts of the tests in it (see wine-tests.sh), and after the programs both
#                              widths beside each other; the results are added to those that are there
set -u
cd "$(dirname "$0")/.." || exit
. scripts/common.sh
. scripts/results.sh

root=$PWD/build/x86-root
packages=wine,wine64,wine32:i386,fonts-wine,xvfb,openbox,xdotool,imagemagick,util-linux,procps,x11-utils

# Mounts are the command's own and end with it.
in_root() {
  unshare -m bash -c '
    set -e
    root=$1 project=$2
    shift 2
    mount -t proc proc "$root/proc"
    mount --rbind /dev "$root/dev"
    mount -t tmpfs tmpfs "$root/tmp"
    mkdir -p "$root$project"
    mount --bind "$project" "$root$project"
    exec chroot "$root" /usr/bin/env -C "$project" HOME=/root LC_ALL=C.UTF-8 WINE_TEMPLATE=build/wine-template-x86 LOGS=build/log/x86 SHOTS=build/shots/x86 "$@"
  ' _ "$root" "$PWD" "$@"
}

usable() { [ -f "$root/made" ] && in_root true 2>/dev/null; }

# Of the main suite alone: those with later versions may be ahead of it on one architecture.
suite() {
  apt-get indextargets --format '$(CREATED_BY) $(SITE) $(RELEASE)' | awk '$1 == "Packages" && $3 !~ /-/ { print $2, $3; exit }'
}

make_root() {
  local site release
  read -r site release < <(suite) && [ -n "$release" ] || return
  command -v mmdebstrap >/dev/null || apt-get -qq -y --no-install-recommends install mmdebstrap || return
  rm -rf --one-file-system "$root"
  echo "deb $site $release main" |
    mmdebstrap --architectures=amd64,i386 --variant=apt --aptopt='APT::Install-Recommends "false"' --include="$packages" \
      "$release" "$root" - &&
    echo "127.0.0.1 localhost" >"$root/etc/hosts" && in_root wine --version && touch "$root/made"
}

# session NAME COMMAND...: in a fresh prefix.
session() {
  local prefix=build/wine-x86-$1
  rm -rf "$prefix"
  in_root env SESSION_TIMEOUT=900 scripts/wine-session.sh "$prefix" "${@:2}" || broken "x86-$1"
}
tests() {
  local part
  for part in "$@"; do
    session "$part" scripts/wine-tests.sh win32 "$part"
    [ "$part" != programs ] || session widths scripts/both-widths.sh
  done
}

case ${1:-} in
  --there) usable; exit ;;
  --tests) tests "${@:2}"; exit 0 ;;  # what failed is counted
esac

begin "Test the x86 programs in a system of their own"
scripts/setup.sh || finish 1
if [ "$(id -u)" != 0 ] || ! unshare -m true 2>/dev/null; then
  say "  skipped: this needs root, and mounts of its own"
  finish 0
fi
usable || step "Make the system once" x86-root make_root || { say "  skipped: it could not be made here"; finish 0; }
rm -rf "$results"
mkdir -p "$results"
build win32 all || finish 1
tests programs scripts
totals
