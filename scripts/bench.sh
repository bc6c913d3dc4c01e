#!/bin/bash
# Builds the benchmarks optimised for this machine's Linux and runs them.
set -u
cd "$(dirname "$0")/.." || exit
. scripts/common.sh
begin "Measure the hot paths"
scripts/setup.sh && build release tarn_bench || finish 1
build/release/tarn_bench "$@"
finish $?
