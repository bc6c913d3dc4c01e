#!/bin/bash
# usage: e2e.sh [FILE...]
#
# Runs end-to-end scripts, by default all of tests/e2e: *.sim works the tool's real windows from the simulated
# building, *.js drives it as an automation client. Outside a Wine session it starts one with a new prefix.
#
#   PRESET=win64             whose build is tested
#   COPY=build/e2e-win64     where its programs are copied to; what is there is removed
set -u
cd "$(dirname "$0")/.." || exit
. scripts/common.sh
. scripts/results.sh
mkdir -p "$results"
built=build/${PRESET:-win64}
found=$results/e2e-${PRESET:-win64}

shopt -s nullglob
[ $# -gt 0 ] || set -- tests/e2e/*.sim tests/e2e/*.js
if [ -z "${IN_WINE_SESSION:-}" ]; then
  rm -rf build/wine-tests
  exec scripts/wine-session.sh build/wine-tests "$0" "$@"
fi

[ $# -gt 0 ] || exit 0

# A copy of the programs: the tests never meet the values that a person keeps beside the built ones.
export PROGRAMS=${COPY:-build/e2e-${PRESET:-win64}}
rm -rf "$PROGRAMS"
mkdir -p "$PROGRAMS"
cp -r "$built"/*.exe "$built"/*.dll "$built/data" "$PROGRAMS" 2>/dev/null
rm -f "$PROGRAMS"/*_tests.exe

run_script() {
  case $1 in
    *.sim) scripts/simhost.sh --script "$1" ;;
    *.js) timeout -k 5 120 wine cscript.exe //nologo "$1" ;;
  esac
}

# A script that breaks off, or a host that crashes on a second thread, still exits with 0: the last words count too.
ended_well() { tr -d '\r' <"$1" | tail -n 1 | grep -qE '^(all passed|.*\.sim held after .*)$'; }

status=0
rm -f "$found" "$logs/e2e-register.log"
for program in QVRKvTARNCfg "${HOST:-SimHost}"; do
  timeout -k 5 60 wine "$PROGRAMS/$program.exe" /RegServer </dev/null >>"$logs/e2e-register.log" 2>&1 ||
    say "  $program could not be registered, see $logs/e2e-register.log"
done
for script in "$@"; do
  name=$(basename "$script")
  log=$logs/e2e-$name.log
  rm -f "$PROGRAMS"/data/*store.json
  before=$EPOCHREALTIME
  if run_script "$script" </dev/null >"$log" 2>&1 && ended_well "$log"; then
    verdict=PASS
  else
    verdict=FAIL
    status=1
    tail -n 60 "$log"
    # What a failed script left running must not meet the next one.
    timeout -k 1 10 wineserver -k
    timeout -k 1 10 wineserver -w
  fi
  say "  $verdict $script ($(elapsed "$before"))"
  echo "$verdict $script" >>"$found"
done
exit $status
