# shellcheck shell=bash
# Sourced by the other scripts, which run in the project's folder: messages, steps with a log, builds.

logs=${LOGS:-build/log}
mkdir -p "$logs"

say() { printf '%s\n' "$*"; }

# elapsed SINCE: seconds since a value of $EPOCHREALTIME, with one decimal.
elapsed() { awk -v a="${1/,/.}" -v b="${EPOCHREALTIME/,/.}" 'BEGIN { printf "%.1f s", b - a }'; }

# step TITLE LOG COMMAND...: one line for the step; its output goes to the log and is shown on failure.
step() {
  local title=$1 log=$logs/$2.log started=$EPOCHREALTIME status=0
  shift 2
  printf '  %s ... ' "$title"
  "$@" </dev/null >"$log" 2>&1 || status=$?
  if [ $status -eq 0 ]; then
    say "$(elapsed "$started")"
  else
    say "FAILED ($(elapsed "$started"), whole output in $log)"
    tail -n 60 "$log"
  fi
  return $status
}

# build PRESET TARGET...: configures where that was not done yet, then builds.
build() {
  local preset=$1
  shift
  configure_and_build() {
    [ -f "build/$preset/build.ninja" ] || cmake --preset "$preset" || return
    cmake --build "build/$preset" --target "$@" -- --quiet
  }
  step "Build $preset" "build-$preset" configure_and_build "$@"
}

# begin WHAT / finish STATUS: the first and the last line of a command.
begin() {
  began=$EPOCHREALTIME
  say "$*"
}

finish() {
  if [ "$1" -eq 0 ]; then say "Done in $(elapsed "$began")"; else say "Failed after $(elapsed "$began")"; fi
  exit "$1"
}

shots=build/shots

# take_shots SCRIPT...: works through end-to-end scripts and says which pictures they left.
take_shots() {
  local status=0
  rm -rf "$shots"
  scripts/e2e.sh "$@" || status=$?
  find "$shots" -name '*.png' | sort | sed 's/^/  /'
  return $status
}
