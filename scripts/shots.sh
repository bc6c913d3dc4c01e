#!/bin/bash
# Saves screenshots of the windows, taken while the scripted job runs, to build/shots.
set -u
cd "$(dirname "$0")/.." || exit
. scripts/common.sh
begin "Save screenshots of the windows to $shots"
scripts/setup.sh && build win64 programs || finish 1
take_shots
finish $?
