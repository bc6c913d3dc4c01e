#!/bin/bash
# Builds and tests everything and ends with one line "N passed, N failed": test cases, end-to-end scripts, and as
# failures also the steps that could not be done. Exits non-zero on any failure.
set -u
cd "$(dirname "$0")/.." || exit
. scripts/common.sh
. scripts/results.sh

check() { step "$@" || broken "$2"; }

# beside NAME COMMAND...: runs it beside what follows; what it says is shown by `join`.
lanes=()
beside() {
  "${@:2}" >"$logs/beside-$1.log" 2>&1 &
  lanes+=("$! $logs/beside-$1.log")
}
join() {
  local lane
  for lane in "${lanes[@]}"; do
    wait "${lane%% *}"
    cat "${lane#* }"
  done
}

# wine_tests PRESET PART...: in a session of its own.
wine_tests() {
  local prefix=build/wine-tests-$1-$2
  rm -rf "$prefix"
  SESSION_TIMEOUT=900 scripts/wine-session.sh "$prefix" scripts/wine-tests.sh "$@" || broken "wine-session-$1-$2"
}

# Many machines have the 64-bit half of Wine alone.
runs_x86() {
  timeout 120 scripts/wine-session.sh build/wine-tests timeout 60 wine build/win32/SimHost.exe --help >"$logs/x86.log" 2>&1 &&
    grep -q 'Commands of a script' "$logs/x86.log"
}

linux_tests() {
  rm -f "$logs"/core-linux*
  gtest_shares "Core tests on Linux" core-linux timeout -k 5 900 build/asan/core_tests
  say "    $(awk '/ failures survived, / { n += $1 } END { print n + 0 }' "$logs"/core-linux-*.log) failing host calls injected and survived"
  for seeds in fuzz/seeds/*; do
    name=fuzz_${seeds##*/}
    check "Repeat the inputs of $name" "$name" timeout -k 5 60 "build/asan/$name" "$seeds"
  done
}

begin "Build and test everything: Linux with sanitizers, Windows x64 and x86, Wine, end to end, help, installer, code format"
scripts/setup.sh || finish 1
rm -rf "$results"
mkdir -p "$results"

check "Code format" format scripts/format.sh --check
check "Directions between rooms" rooms scripts/rooms.sh
check "The schema of configuration files" schema scripts/check-schema.py

tests_x86=()
build asan core_tests fuzz_targets help_generator || broken build-asan
build win64 all || broken build-win64
if build win32 programs; then
  check "Check the x86 programs" check-win32 scripts/check-programs.sh build/win32 pei-i386
  if runs_x86; then
    tests_x86=(wine_tests win32)
  elif scripts/x86.sh --there; then
    tests_x86=(scripts/x86.sh --tests)
  else
    skipped x86-on-wine "Tests of the x86 programs: NOT RUN, Wine here runs no 32-bit programs (\`make x86\` brings one that does); only their build was checked"
  fi
  [ ${#tests_x86[@]} -eq 0 ] || build win32 all || broken build-win32-tests
else
  broken build-win32
fi
[ ! -f "$results/steps" ] || ! grep -q '^FAIL build' "$results/steps" || totals

# Most of what Wine does is waiting: its sessions run beside each other and the rest.
check "Check the x64 programs" check-win64 scripts/check-programs.sh build/win64 pei-x86-64
SESSION_CPU=0 beside programs wine_tests win64 programs
SESSION_CPU=1 beside scripts wine_tests win64 scripts
if [ ${#tests_x86[@]} -gt 0 ]; then
  SESSION_CPU=0 beside x86-programs "${tests_x86[@]}" programs
  SESSION_CPU=1 beside x86-scripts "${tests_x86[@]}" scripts
fi
linux_tests
OLD_PICTURES=1 check "Help" help scripts/manual.sh
check "Make the installer" installer scripts/installer.sh
check "Install, upgrade, use and uninstall on Wine" installer-test scripts/installer-test.sh
join
totals
