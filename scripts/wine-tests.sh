#!/bin/bash
# The part of the tests that needs Wine; runs inside a Wine session (see wine-session.sh) after the win64 build.
set -u
cd "$(dirname "$0")/.." || exit
. scripts/common.sh
. scripts/results.sh

# The programs find their data in the folder that they are run in.
in_build() { (cd build/win64 && exec timeout -k 5 300 wine "$@"); }

gtest "Core tests on Wine" core-wine in_build core_tests.exe
gtest "Windows tests on Wine" win32-wine in_build win32_tests.exe
scripts/e2e.sh
exit 0  # what failed is counted
