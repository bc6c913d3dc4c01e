#!/bin/bash
# Both widths on one machine: a host of one width works with the tool of the other, and taking one tool away leaves what the
# other needs. Runs inside a Wine session that runs 32-bit and 64-bit programs (see x86.sh).
set -u
cd "$(dirname "$0")/.." || exit
. scripts/common.sh
. scripts/results.sh

folder=build/widths
found=$results/both-widths
mkdir -p "$results"
rm -rf "$folder" "$found"
for width in win32 win64; do
  mkdir -p "$folder/$width"
  cp -r build/$width/{SimHost.exe,QVRKvTARNCfg.exe,*.dll,data} "$folder/$width"
done

# Only what is named is registered: host or tool, and its width.
register() { timeout -k 5 60 wine "$folder/$2/$1.exe" "/$3" </dev/null >>"$logs/both-widths.log" 2>&1; }
only() {
  local program width
  for program in SimHost QVRKvTARNCfg; do
    for width in win32 win64; do register $program $width UnregServer; done
  done
  while [ $# -gt 0 ]; do
    register "$1" "$2" RegServer
    shift 2
  done
}

# job TITLE HOST-WIDTH: the main job, through the real windows.
job() {
  local verdict=FAIL log=$logs/both-widths-${1// /-}.log
  rm -f "$folder/$2"/data/*store.json
  PROGRAMS=$folder/$2 scripts/simhost.sh --script tests/e2e/main-job.sim </dev/null >"$log" 2>&1 &&
    tr -d '\r' <"$log" | tail -n 1 | grep -q 'held after' && verdict=PASS
  [ $verdict = PASS ] || tail -n 20 "$log"
  echo "$verdict $1" | tr ' ' '-' | sed 's/-/ /' >>"$found"
  say "  $verdict $1"
}

only SimHost win32 QVRKvTARNCfg win64
job "a 32-bit host and the 64-bit tool" win32
only SimHost win64 QVRKvTARNCfg win32
job "a 64-bit host and the 32-bit tool" win64
only SimHost win64 QVRKvTARNCfg win32 QVRKvTARNCfg win64
register QVRKvTARNCfg win32 UnregServer
job "the 64-bit tool after the 32-bit one was taken away" win64
only SimHost win32 QVRKvTARNCfg win64 QVRKvTARNCfg win32
register QVRKvTARNCfg win64 UnregServer
job "the 32-bit tool after the 64-bit one was taken away" win32
exit 0  # what failed is counted
