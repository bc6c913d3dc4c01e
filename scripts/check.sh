#!/bin/bash
# What takes too long for every test run: static checks of all sources, and which lines the core tests run.
set -u
cd "$(dirname "$0")/.." || exit
. scripts/common.sh
begin "Static checks and coverage"
status=0
scripts/tidy.sh || status=1
scripts/coverage.sh || status=1
finish $status
