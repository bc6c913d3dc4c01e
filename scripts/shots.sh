#!/bin/bash
# Saves screenshots of the windows, taken by the end-to-end scripts that ask for some, to build/shots.
set -u
cd "$(dirname "$0")/.." || exit
. scripts/common.sh
begin "Save screenshots of the windows to $shots"
scripts/setup.sh && build win64 programs || finish 1
mapfile -t scripts < <(grep -lE '^\s*shot ' tests/e2e/*.sim)
take_shots "${scripts[@]}"
finish $?
