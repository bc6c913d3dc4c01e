#!/bin/bash
# usage: check-programs.sh FOLDER FORMAT
#
# Checks the Windows programs in FOLDER: built for the machine of FORMAT (pei-i386, pei-x86-64), no compiler
# run-time library needed beside them, and the shipped tool under 4 MB.
set -u
status=0
complain() {
  echo "$*"
  status=1
}

for program in "$1"/*.exe "$1"/*.dll; do
  [ -f "$program" ] || continue
  headers=$(objdump -p "$program") || complain "$program cannot be read"
  grep -q "file format $2\$" <<<"$headers" || complain "$program is not $2"
  libraries=$(grep -iE 'DLL Name: (libstdc|libgcc|libwinpthread|libssp)' <<<"$headers") &&
    complain "$program needs: $libraries"
done

tool=$1/QVRKvTARNCfg.exe
size=$(stat -c %s "$tool" 2>/dev/null || echo 0)
[ "$size" -gt 0 ] || complain "$tool is missing"
[ "$size" -lt $((4 << 20)) ] || complain "$tool has $size bytes"
exit $status
