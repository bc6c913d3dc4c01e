#!/bin/bash
# usage: tidy.sh [FILE...]    clang-tidy, by default over all sources; exits non-zero when it finds anything
#
# Windows sources are read as the cross compiler sees them, all others as clang compiles them for the coverage report.
set -u
cd "$(dirname "$0")/.." || exit
. scripts/common.sh
scripts/setup.sh && build coverage sim_data && build win64 typelibs || exit 1

export output=build/tidy
rm -rf $output
mkdir -p $output

# sources PRESET: our own sources that it compiles.
sources() {
  sed -n "s|^ *\"file\": \"$PWD/\(.*\.cpp\)\",*|\1|p" "build/$1/compile_commands.json" | grep -v '^build/' | sort -u
}

# tidy PRESET FILE ARGUMENT...: what is found goes to a file of its own, as several run at a time.
tidy() {
  clang-tidy-19 -p "build/$1" --quiet --extra-arg=-Wno-error "${@:3}" "$2" >"$output/${2//\//_}" 2>/dev/null ||
    echo "$2: error: could not be checked to its end" >>"$output/${2//\//_}"
}
export -f tidy

# tidy_all PRESET ARGUMENT...: the files whose names come in.
tidy_all() {
  xargs -r -P "$(nproc)" -I '{}' bash -c 'tidy "$@"' - "$1" '{}' "${@:2}"
}

# wanted FILE...: those of the incoming names that were asked for.
wanted() {
  if [ $# -eq 0 ]; then cat; else grep -xF -f <(realpath --relative-to=. "$@"); fi
}

sources coverage | wanted "$@" >$output/native
sources win64 | wanted "$@" | grep -vxF -f <(sources coverage) >$output/windows
[ -s $output/native ] || [ -s $output/windows ] || { say "none of these is a source that is compiled: $*"; exit 1; }
check_native() { tidy_all coverage <$output/native; }
check_windows() { tidy_all win64 --extra-arg=--target=x86_64-w64-mingw32 <$output/windows; }
step "clang-tidy, $(wc -l <$output/native) portable sources" tidy-native check_native
step "clang-tidy, $(wc -l <$output/windows) Windows sources" tidy-windows check_windows

# What stands in a header is found by every file that includes it.
grep -hE ': (warning|error): ' $output/*.cpp | sed "s|^$PWD/||" | sort -u >$output/findings
cat $output/findings
say "clang-tidy: $(wc -l <$output/findings) findings"
[ ! -s $output/findings ]
