#!/bin/bash
# usage: shot.sh WINDOW FILE
#
# Saves a window with its frame as FILE (PNG). WINDOW is an X window id such as 0x1a00003 or the exact title.
set -u
[ $# -eq 2 ] || { sed -n '2,/^set/s/^# \{0,1\}//p' "$0"; exit 2; }

find_window() {
  case $1 in
    0x*) printf '%s\n' "$1" ;;
    *)
      # xdotool takes a regular expression: its special characters in the title are meant as they stand.
      local pattern
      pattern=$(printf '%s' "$1" | sed 's/[][\\.*^$+?(){}|]/\\&/g')
      timeout 2 xdotool search --onlyvisible --name "^$pattern\$" 2>/dev/null | tail -n 1
      ;;
  esac
}

# What a window has not painted yet is black.
painted() { [ "$(convert "$1" -format '%[fx:mean>0.1]' info:)" = 1 ]; }

mkdir -p "$(dirname "$2")"
taken=
for _ in {1..15}; do
  window=$(find_window "$1")
  [ -n "$window" ] && timeout 10 import -silent -window "$window" -frame "png:$2.part" 2>/dev/null && taken=1
  [ -n "$taken" ] && painted "$2.part" && break
  sleep 0.2
done
[ -n "$taken" ] && mv "$2.part" "$2" && exit 0
echo "shot: no window '$1' to save as $2" >&2
exit 1
