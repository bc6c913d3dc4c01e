#!/bin/bash
# usage: check-programs.sh FOLDER FORMAT
#
# Checks the Windows programs in FOLDER: built for the machine of FORMAT (pei-i386, pei-x86-64), no compiler
# run-time library needed beside them, loaded at random addresses and without executable data, the type
# libraries for both widths in the tool and in the controls, and the shipped tool under 4 MB.
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
type_libraries() {
  local start
  for start in $(LC_ALL=C grep -obUaP 'MSFT\x02\x00\x01\x00' "$1" | cut -d: -f1); do
    echo $(($(od -An -tu1 -j $((start + 20)) -N1 "$1") & 15))
  done
}

# The own one first, which the system takes when only the program is named.
case $2 in
  *x86-64) kinds='3 1' ;;
  *) kinds='1 3' ;;
esac
for program in QVRKvTARNCfg.exe SimControls.dll; do
  found=$(type_libraries "$1/$program" | xargs)
  [ "$found" = "$kinds" ] || complain "the type libraries in $1/$program are of system kind '$found', not '$kinds'"
done

tool=$1/QVRKvTARNCfg.exe
size=$(stat -c %s "$tool" 2>/dev/null || echo 0)
[ "$size" -gt 0 ] || complain "$tool is missing"
[ "$size" -lt $((4 << 20)) ] || complain "$tool has $size bytes"
exit $status
