#!/bin/bash
# Makes the help in all its languages: in build/help/LANGUAGE pages to read in any browser, and of them the help files
# that the tool opens, in build/help/HelpFile as they are installed. The pictures are taken first where there are none of
# the present programs.
#
#   OLD_PICTURES=1    those of older programs will do
set -u
cd "$(dirname "$0")/.." || exit
. scripts/common.sh
out=build/help
pictures=build/pictures
name="TARN-M Help File.chm"
mapfile -t languages < <(ls help/topics)

present_pictures() {
  local made=$pictures/made source
  [ -n "${OLD_PICTURES:-}" ] && [ -f $made ] && return
  for source in build/win64/{QVRKvTARNCfg,SimHost}.exe build/win64/SimControls.dll help/pictures.sim lang/*.json simulator/data/*.json; do
    [ -f "$made" ] && [ ! "$source" -nt "$made" ] || return
  done
}

# Each language in a session of its own: a file that is there already is asked about.
take_pictures() {
  local language script
  rm -rf $pictures
  mkdir -p $pictures
  for language in "${languages[@]}"; do
    script=$pictures/$language.sim
    { printf 'language "%s"\nshot-folder "%s"\n' "$language" "$language" && cat help/pictures.sim; } >"$script"
    COPY=build/e2e-pictures SHOTS=$pictures RESULTS=$pictures scripts/e2e.sh "$script" || return
  done
  touch $pictures/made
}

# The viewer reads lists and search words in the code page of Western European languages alone.
generate() {
  local file
  rm -rf "$out"
  build/asan/help_generator help/topics $pictures "$out" || return
  for file in "$out"/*/*.{html,hhc,hhk,hhp}; do
    iconv -f utf-8 -t windows-1252 "$file" >"$file.part" && mv "$file.part" "$file" || return
  done
}

# compile FOLDER FILE: the compiler writes the file of a topic number with its whole path, so it gets the pages as a root
# folder of its own.
compile() (
  root=$(mktemp -d)
  trap 'rm -rf "$root"' EXIT
  cp -r "$1/." "$root" && compiler=$(readlink -f "$(command -v chmcmd)") && cp "$compiler" "$root/chmcmd" || exit
  for library in $(ldd "$compiler" | grep -o '/[^ ]*') /lib/x86_64-linux-gnu/libpthread.so.0; do
    mkdir -p "$root$(dirname "$library")" && cp -L "$library" "$root$library" || exit
  done
  enter=(unshare -r --root="$root" --wd=/)
  [ "$(id -u)" != 0 ] || enter=(chroot "$root") # a container may refuse new name spaces even to root
  LC_ALL=C "${enter[@]}" /chmcmd help.hhp && mkdir -p "$(dirname "$2")" && cp "$root/help.chm" "$2"
)

# The English file is the one whose name the tool is given; the others lie in folders beside it.
file_of() { if [ "$1" = English ]; then echo "$out/HelpFile/$name"; else echo "$out/HelpFile/$1/$name"; fi; }

for_each() {
  local language
  for language in "${languages[@]}"; do "$@" "$language" || return; done
}
compile_one() { compile "$out/$1" "$(file_of "$1")"; }
check_one() { scripts/check-help.sh "$(file_of "$1")" "$out/$1/help.hhp"; }

begin "Make the help in $out"
scripts/setup.sh && build asan help_generator && build win64 programs || finish 1
present_pictures || step "Take its pictures in ${#languages[@]} languages" help-pictures take_pictures || finish 1
step "Write the pages" help-pages generate &&
  step "Compile the help files" help-compile for_each compile_one &&
  step "Check their topic numbers" help-check for_each check_one &&
  step "Check the messages that it names" help-messages scripts/check-messages.sh &&
  step "Check the translations" help-translations scripts/check-translations.sh
finish $?
