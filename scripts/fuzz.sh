#!/bin/bash
# usage: fuzz.sh [SECONDS] [TARGET...]    runs the fuzz targets, by default all of them for 60 s each
#
# New inputs that reach new code are kept in build/fuzz/corpus, an input that fails in build/fuzz/found. What is worth
# repeating in every test run goes into fuzz/seeds/<target>.
set -u
cd "$(dirname "$0")/.." || exit
. scripts/common.sh
seconds=${1:-60}
shift
[ $# -gt 0 ] || set -- $(basename -s .cpp fuzz/*.cpp)
begin "Fuzz $* for $seconds s each"
scripts/setup.sh && build fuzz fuzz_targets || finish 1

fuzz() {
  local corpus=build/fuzz/corpus/$1 found=build/fuzz/found/$1
  mkdir -p "$corpus" "$found"
  "build/fuzz/fuzz_$1" -max_total_time="$seconds" -max_len=65536 -timeout=10 -rss_limit_mb=1024 \
    -artifact_prefix="$found/" -print_final_stats=1 "$corpus" "fuzz/seeds/$1"
}

status=0
for target in "$@"; do
  step "Fuzz $target" "fuzz-$target" fuzz "$target" || status=1
  say "    $(grep -aE '^stat::(number_of_executed_units|average_exec_per_sec)' "$logs/fuzz-$target.log" |
    tr -s ' \n' ' ')"
done
finish $status
