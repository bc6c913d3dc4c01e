#!/bin/bash
# Measures what the tool promises: ratios in one run on this machine's Linux, the cost of bringing the tool up under
# Wine against the cost of its host calls alone, and the size of the executable.
set -u
cd "$(dirname "$0")/.." || exit
. scripts/common.sh
begin "Measure speed and size"
scripts/setup.sh && build release tarn_bench && build win64 programs BenchHost EmptyWindow || finish 1
status=0
# On one core, and before everything else that runs on it where that is allowed.
alone=(taskset -c 0)
chrt -f 1 true 2>/dev/null && alone=(chrt -f 1 "${alone[@]}")
mkdir -p build/bench
"${alone[@]}" build/release/tarn_bench "$@" || status=1
say ""
# table SCRIPT WARM: runs a script and prints the table of what it measured, without the first WARM values of each.
table() {
  HOST=BenchHost scripts/e2e.sh "bench/$1.sim" || status=1
  tr -d '\r' <"$logs/e2e-$1.sim.log" | sed -n 's/^MEASURED //p' | awk -v warm="$2" -f bench/table.awk || status=1
}
say "The tool under Wine, in milliseconds, against the same calls made by a process that does nothing else"
say "(memory: in megabytes, against an empty window of the same toolkit)"
table load 1
table work 2
say "The last five of twenty tools on twenty controllers"
BUILDING=build/bench/units table windows 15
say "One unit's values for a hundred others"
SIMHOST_TIMEOUT=1500 SESSION_TIMEOUT=1500 BUILDING=build/bench/hundred table copying 0
say "$(stat -c '%s bytes  %n' build/win64/QVRKvTARNCfg.exe) (limit 4194304)"
[ "$(stat -c %s build/win64/QVRKvTARNCfg.exe)" -le 4194304 ] || status=1
finish $status
