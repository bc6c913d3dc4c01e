#!/bin/bash
# usage: simhost.sh ARGUMENT...    starts the simulated building; runs inside a Wine session (see wine-session.sh)
#
#   SIMHOST_TIMEOUT=240     seconds until it is ended, 0 for no limit
#   PROGRAMS=build/win64    the folder of the programs
#   SHOTS=build/shots       where pictures go
#   HOST=SimHost            which of them, for example the one that measures
#   BUILDING=FOLDER         the data of another building
set -u
cd "$(dirname "$0")/.." || exit
export SIMHOST_SHOT=$PWD/scripts/shot.sh SIMHOST_SHOTS=$PWD/${SHOTS:-build/shots}
mkdir -p "$SIMHOST_SHOTS"
exec timeout -k 5 "${SIMHOST_TIMEOUT:-240}" wine "${PROGRAMS:-build/win64}/${HOST:-SimHost}.exe" ${BUILDING:+--data "$BUILDING"} "$@"
