#!/bin/bash
# Which lines of the portable core the core tests run: a table by folder, and build/coverage/uncovered with the lines
# that none runs. Exits non-zero when a folder falls below what is kept up.
set -u
cd "$(dirname "$0")/.." || exit
. scripts/common.sh
scripts/setup.sh && build coverage core_tests || exit 1

built=build/coverage
run_tests() {
  rm -f $built/core.profraw
  LLVM_PROFILE_FILE=$PWD/$built/core.profraw timeout -k 5 900 $built/core_tests --gtest_brief=1 &&
    llvm-profdata-19 merge -sparse $built/core.profraw -o $built/core.profdata &&
    llvm-cov-19 export -format=lcov -instr-profile=$built/core.profdata $built/core_tests >$built/core.lcov
}
step "Core tests, counting lines" coverage run_tests || exit 1

# least: percent of a folder's lines. What an application is made of is kept higher than the tools below it.
awk -v uncovered=$built/uncovered '
  function least(folder) { return folder ~ /pages|shell|logger|serverlink|host|plugin/ ? 95 : 93 }
  function percent(part, whole) { return whole ? 100 * part / whole : 100 }
  function row(name, part, whole, pipe) {
    low += percent(part, whole) < least(name)
    printf "  %-20s %6d lines %6d run %7.1f %%%s\n", name, whole, part, percent(part, whole),
           percent(part, whole) < least(name) ? "  BELOW " least(name) " %" : "" | pipe
  }
  function end_of_gap() {
    if (from) gaps = gaps " " (from == to ? from : from "-" to)
    from = 0
  }
  /^SF:/ { sub(/^SF:(.*\/)?src\//, "src/"); file = $0; ours = /^src\//; gaps = ""; lines = run = from = 0 }
  /^DA:/ && ours {
    split(substr($0, 4), at, ",")
    lines++
    if (at[2] > 0) { run++; end_of_gap() } else { if (!from) from = at[1]; to = at[1] }
  }
  /^end_of_record/ && ours && lines {
    end_of_gap()
    folder = file
    sub(/\/[^\/]*$/, "", folder)
    all[folder] += lines; done[folder] += run; total += lines; totalRun += run
    if (gaps) printf "%s (%.1f %%):%s\n", file, percent(run, lines), gaps >uncovered
    if (percent(run, lines) < 90) poor = poor sprintf("  %-40s %7.1f %%\n", file, percent(run, lines))
  }
  END {
    printf "" >uncovered
    for (folder in all) row(folder, done[folder], all[folder], "sort")
    close("sort")
    row("all", totalRun, total, "cat")
    close("cat")
    if (poor) printf "Files below 90 %%:\n%s", poor
    exit low > 0
  }' $built/core.lcov
status=$?
say "Lines that no test runs: $built/uncovered"
exit $status
