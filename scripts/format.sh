#!/bin/bash
# usage: format.sh [--check]    brings the sources into the agreed format, or says where they are not
set -u
cd "$(dirname "$0")/.." || exit
. scripts/common.sh
scripts/setup.sh || exit 1
mode=(-i)
[ "${1:-}" = --check ] && mode=(--dry-run -Werror)
find src simulator tests bench fuzz help installer \( -name '*.h' -o -name '*.cpp' \) -print0 2>/dev/null |
  xargs -0 -r -P "$(nproc)" -n 16 clang-format "${mode[@]}"
