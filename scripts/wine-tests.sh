#!/bin/bash
# usage: wine-tests.sh [PRESET]
#
# The part of the tests that needs Wine; runs inside a Wine session (see wine-session.sh) after the build of PRESET,
# win64 by default.
set -u
cd "$(dirname "$0")/.." || exit
. scripts/common.sh
. scripts/results.sh

export PRESET=${1:-win64}
# The programs find their data in the folder that they are run in.
in_build() { (cd "build/$PRESET" && exec timeout -k 5 600 wine "$@"); }

# Failing host calls one by one is the same on every system, and long.
gtest "Core tests on Wine ($PRESET)" "core-$PRESET" in_build core_tests.exe --gtest_filter=-*Torture.*
gtest "Windows tests on Wine ($PRESET)" "windows-$PRESET" in_build win32_tests.exe
scripts/e2e.sh
exit 0  # what failed is counted
