# shellcheck shell=bash
# Sourced by the test scripts: runs test programs and counts. Each result is one line in a file of build/results, so
# that scripts in other processes add to the same count.

results=${RESULTS:-build/results}

# broken NAME: a step that could not be done counts as one failure.
broken() { echo "FAIL $1" >>"$results/steps"; }

# skipped NAME WHY: a step that this machine cannot do; said here and again beside the count, which it is not part of.
skipped() {
  say "  $2"
  echo "SKIP $1 $2" >>"$results/steps"
}

# gtest TITLE NAME COMMAND...: runs a GoogleTest program whole and shows the failed cases' output alone.
gtest() {
  local title=$1 name=$2 started=$EPOCHREALTIME status=0
  local log=$logs/$name.log found=$results/$name
  shift 2
  "$@" </dev/null >"$log" 2>&1 || status=$?
  awk -v found="$found" '
    { sub(/\r$/, "") }
    /^\[ RUN      \] / { name = $4; text = "" ; next }
    name == "" { next }
    /\[       OK \] / { print "PASS " name > found; name = ""; next }
    /\[  SKIPPED \] / { print "SKIP " name > found; name = ""; print text; next }
    /\[  FAILED  \] / { print "FAIL " name > found; print text $0; name = ""; next }
    /^Modules:$/ { muted = 1 }  # the tail of the report of a crash on Wine
    !muted { text = text $0 "\n" }
    END { if (name != "") { print "FAIL " name > found; print text "[ no end   ] " name } }' "$log"
  touch "$found"
  # It stopped before or after its cases, or there were none.
  if { [ $status -ne 0 ] || ! grep -q '^PASS' "$found"; } && ! grep -q '^FAIL' "$found"; then
    tail -n 60 "$log"
    echo "FAIL $name" >>"$found"
  fi
  say "  $title: $(tally "$found"), $(elapsed "$started")"
}

# gtest_shares TITLE NAME COMMAND...: the same in several processes, as many at a time as there are processors. A share is
# small enough that the last one does not keep the others waiting.
gtest_shares() (
  shares=$((3 * $(nproc)))
  for ((share = 0; share < shares; share++)); do
    [ $share -lt "$(nproc)" ] || wait -n
    GTEST_TOTAL_SHARDS=$shares GTEST_SHARD_INDEX=$share gtest "$1, share $((share + 1)) of $shares" "$2-$share" "${@:3}" &
  done
  wait
)

# tally FILE...: the counts in words.
tally() {
  awk '{ n[$1]++ } END {
    printf "%d passed, %d failed", n["PASS"], n["FAIL"]
    if (n["SKIP"]) printf ", %d skipped", n["SKIP"] }' "$@"
}

# The closing line of the test run, and its end.
totals() {
  local counts
  counts=$(cat "$results"/* | grep -v '^SKIP' | tally)
  grep -h '^FAIL' "$results"/* /dev/null
  sed -n 's/^SKIP [^ ]* //p' "$results/steps" 2>/dev/null
  say "Took $(elapsed "$began")"
  say "$counts"
  case $counts in *" 0 failed") exit 0 ;; *) exit 1 ;; esac
}
