#!/bin/bash
# Makes the help: pages to read in any browser in build/help, and of them the help file that the tool opens,
# build/help/TARN-M Help File.chm. The pictures are those of `make shots`; where there are none they are taken first.
set -u
cd "$(dirname "$0")/.." || exit
. scripts/common.sh
out=build/help

# The compiler writes the file of a topic number with its whole path, so it gets the pages as a root folder of its own.
compile() (
  root=$(mktemp -d)
  trap 'rm -rf "$root"' EXIT
  cp -r "$out/." "$root" && compiler=$(readlink -f "$(command -v chmcmd)") && cp "$compiler" "$root/chmcmd" || exit
  for library in $(ldd "$compiler" | grep -o '/[^ ]*') /lib/x86_64-linux-gnu/libpthread.so.0; do
    mkdir -p "$root$(dirname "$library")" && cp -L "$library" "$root$library" || exit
  done
  LC_ALL=C unshare -r --root="$root" --wd=/ /chmcmd help.hhp && cp "$root/help.chm" "$out/TARN-M Help File.chm"
)

generate() {
  rm -rf "$out"
  mkdir -p "$out"
  build/asan/help_generator help/topics $shots "$out" && scripts/check-messages.sh
}

check_numbers() { scripts/check-help.sh "$out/TARN-M Help File.chm" "$out/help.hhp"; }

begin "Make the help in $out"
scripts/setup.sh && build asan help_generator || finish 1
if [ ! -f $shots/message-log.png ] || [ ! -f $shots/configuration-record.png ] || [ ! -f $shots/advice-accept.png ] || [ ! -f $shots/check-out-stands.png ] || [ ! -f $shots/host-new-unit.png ] || [ ! -f $shots/fleet-copied.png ]; then
  build win64 programs && take_shots tests/e2e/{advice,check-out,pages,changes,configuration,fleet,new-unit}.sim || finish 1
fi
step "Write the pages" help-pages generate &&
  step "Compile the help file" help-compile compile &&
  step "Check its topic numbers" help-check check_numbers
finish $?
