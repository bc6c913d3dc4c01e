#!/bin/bash
# usage: check-programs.sh FOLDER FORMAT
#
# Checks the Windows programs in FOLDER: built for the machine of FORMAT (pei-i386, pei-x86-64), no compiler
# run-time library needed beside them, loaded at random addresses and without executable data, the type library of
# the same machine in the tool and in the controls, and the shipped tool under 4 MB.
set -u
status=0
complain() {
  echo "$*"
  status=1
}

# DllCharacteristics: high-entropy addresses (64 bits only), movable, no executable data.
hardened=0x140
[ "$2" = pei-x86-64 ] && hardened=0x160

for program in "$1"/*.exe "$1"/*.dll; do
  [ -f "$program" ] || continue
  headers=$(objdump -p "$program") || complain "$program cannot be read"
  grep -q "file format $2\$" <<<"$headers" || complain "$program is not $2"
  libraries=$(grep -iE 'DLL Name: (libstdc|libgcc|libwinpthread|libssp)' <<<"$headers") &&
    complain "$program needs: $libraries"
  characteristics=$((16#$(awk '$1 == "DllCharacteristics" { print $2 }' <<<"$headers")))
  [ $((characteristics & hardened)) -eq $((hardened)) ] || complain "$program is not hardened"
  grep -q '\.reloc' <(objdump -h "$program") || complain "$program cannot be moved: it has no relocations"
done

# The header of a type library: four letters, a version, and in byte 20 the kind of system (1: 32 bits, 3: 64 bits).
check_type_library() {
  local start kind
  start=$(LC_ALL=C grep -obUaP -m1 'MSFT\x02\x00\x01\x00' "$1" | head -n1 | cut -d: -f1)
  [ -n "$start" ] || { complain "$1 has no type library"; return; }
  kind=$(($(od -An -tu1 -j $((start + 20)) -N1 "$1") & 15))
  [ $kind -eq "$2" ] || complain "the type library in $1 is of system kind $kind, not $2"
}

case $2 in
  *x86-64) kind=3 ;;
  *) kind=1 ;;
esac
for program in QVRKvTARNCfg.exe SimControls.dll; do check_type_library "$1/$program" $kind; done

tool=$1/QVRKvTARNCfg.exe
size=$(stat -c %s "$tool" 2>/dev/null || echo 0)
[ "$size" -gt 0 ] || complain "$tool is missing"
[ "$size" -lt $((4 << 20)) ] || complain "$tool has $size bytes"
exit $status
