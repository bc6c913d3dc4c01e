#!/bin/bash
# Fails the host's calls two at a time in every save of every page, and says how many failures were survived. Takes
# long; the single failures are part of the tests.
set -u
cd "$(dirname "$0")/.." || exit
. scripts/common.sh

begin "Fail two host calls at a time"
scripts/setup.sh || finish 1
build release core_tests || finish 1
build/release/core_tests --gtest_filter='*Torture.*' --gtest_also_run_disabled_tests --gtest_brief=1
finish $?
