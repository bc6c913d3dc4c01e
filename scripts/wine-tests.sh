#!/bin/bash
# usage: wine-tests.sh PRESET [PART...]
#
# The tests that need Wine; runs inside a Wine session (see wine-session.sh) after the build of PRESET. Its parts are
# "programs", the test programs, and "scripts", those from end to end.
set -u
cd "$(dirname "$0")/.." || exit
. scripts/common.sh
. scripts/results.sh

export PRESET=$1
shift
# The programs find their data in the folder that they are run in.
in_build() { (cd "build/$PRESET" && exec timeout -k 5 600 wine "$@"); }

programs() {
  # Failing host calls one by one is the same on every system, and long.
  gtest "Core tests on Wine ($PRESET)" "core-$PRESET" in_build core_tests.exe --gtest_filter=-*Torture.*
  gtest "Windows tests on Wine ($PRESET)" "windows-$PRESET" in_build win32_tests.exe
}
scripts() { scripts/e2e.sh; }

[ $# -gt 0 ] || set -- programs scripts
for part in "$@"; do $part; done
exit 0  # what failed is counted
