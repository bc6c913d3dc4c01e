#!/bin/bash
# Measures what the tool promises: ratios in one run on this machine's Linux, the cost of bringing the tool up under
# Wine against the cost of its host calls alone, and the size of the executable.
set -u
cd "$(dirname "$0")/.." || exit
. scripts/common.sh
begin "Measure speed and size"
scripts/setup.sh && build release tarn_bench && build win64 programs || finish 1
status=0
# On one core, and before everything else that runs on it where that is allowed.
alone=(taskset -c 0)
chrt -f 1 true 2>/dev/null && alone=(chrt -f 1 "${alone[@]}")
"${alone[@]}" build/release/tarn_bench "$@" || status=1
say ""
scripts/e2e.sh bench/load.sim || status=1
grep 'host calls of' build/log/e2e-load.sim.log
say "$(stat -c '%s bytes  %n' build/win64/QVRKvTARNCfg.exe) (limit 4194304)"
[ "$(stat -c %s build/win64/QVRKvTARNCfg.exe)" -le 4194304 ] || status=1
finish $status
