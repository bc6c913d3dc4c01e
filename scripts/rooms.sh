#!/bin/bash
# Checks that each room of src includes only rooms below it, and that Windows headers stand at the Windows edge alone.
set -u
cd "$(dirname "$0")/.." || exit

# room: the rooms that it may include.
rooms='
base:
automation: base
ui: base automation
host: base automation
logger: base ui
fields: base ui
serverlink: base automation ui
shell: base automation ui host logger fields
pages: base automation ui host logger fields shell
configuration: base automation ui host logger fields shell
advice: base automation ui host logger fields shell configuration
checkout: base automation ui host logger fields shell configuration
fleet: base automation ui host logger fields shell configuration
plugin: base automation ui host logger fields shell configuration advice checkout fleet
platform/win32/system: base automation ui plugin
platform/win32/com: base automation platform/win32/system
platform/win32/window: base automation ui shell platform/win32/system
platform/win32/control: base automation ui platform/win32/system platform/win32/com platform/win32/window
app: base automation ui host logger fields serverlink shell pages configuration advice checkout fleet plugin platform/win32/system platform/win32/com
  platform/win32/window platform/win32/control
'
# A leaf: names of the host alone.
leaf=host/contract.h
edge=/win32/
status=0

# Lines "file:room of the file:room that it includes".
(cd src && grep -roE --include='*.h' --include='*.cpp' '^#include "[^"]+/[^"]+"' .) | grep -v "\"$leaf\"" |
  sed -E 's|^\./((platform/win32/)?[a-z]+)/([^:]*):#include "((platform/win32/)?[a-z0-9]+)/.*|\1/\3:\1:\4|' |
  awk -F: -v rooms="$rooms" '
    BEGIN {
      n = split(rooms, words, /[ \n]+/)
      for (i = 1; i <= n; ++i) if (sub(/:$/, "", words[i])) room = words[i]; else below[room, words[i]] = 1
    }
    $2 != $3 && !(($2, $3) in below) { print "src/" $1 " includes " $3 ", which is not below its room"; bad = 1 }
    END { exit bad }' || status=1

grep -rlE --include='*.h' --include='*.cpp' '^#include <(windows|ole2|objbase|oleauto|commctrl)\.h>' src simulator tests bench |
  grep -v "$edge" | sed 's/$/ includes a Windows header/' | grep . && status=1
exit $status
