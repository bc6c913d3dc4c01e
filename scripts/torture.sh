#!/bin/bash
# Fails the host's calls two at a time in the saves of every page, one share for each core, and says how many pairs were
# survived. The single failures are part of the tests.
set -u
cd "$(dirname "$0")/.." || exit
. scripts/common.sh

begin "Fail two host calls at a time"
scripts/setup.sh || finish 1
build release core_tests || finish 1

shares=$(nproc)
pairs() {
  local share status=0 running=()
  for ((share = 0; share < shares; share++)); do
    GTEST_TOTAL_SHARDS=$shares GTEST_SHARD_INDEX=$share build/release/core_tests --gtest_filter='*PairTorture.*' \
      --gtest_also_run_disabled_tests --gtest_brief=1 >"$logs/torture-$share.log" 2>&1 &
    running+=($!)
  done
  for share in "${running[@]}"; do wait "$share" || status=1; done
  [ $status -eq 0 ] || grep -h -A3 'Failure$' "$logs"/torture-*.log | head -n 60
  return $status
}

rm -f "$logs"/torture-*.log
step "Fail pairs, $shares at a time" torture pairs
status=$?
say "$(awk '/failures survived/ { n += $1 } END { print n + 0 }' "$logs"/torture-*.log) pairs of failures injected and survived"
finish $status
