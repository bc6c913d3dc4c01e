#!/bin/bash
# Draws QVRKvTARNCfg.ico, the program's, and icon32.ico and icon.ico, those of its windows in the common files, from the
# two .mvg drawings; the small drawing keeps to whole pixels at 16. To be run after a change of either. Needs
# ImageMagick.
set -eu
cd "$(dirname "$0")"
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# The drawings are 768 pixels wide, which all sizes but 20 and 40 divide.
draw() { convert -size 768x768 xc:none -draw "$(<"$1.mvg")" -filter Box -resize "$2x$2" "PNG32:$scratch/$2.png"; }
for size in 16 20; do draw QVRKvTARNCfg16 $size; done
for size in 24 32 40 48 64 256; do draw QVRKvTARNCfg $size; done

# icon FILE SIZE...
icon() {
  local file=$1
  shift
  convert "${@/#/$scratch/}" "$file"
}
icon QVRKvTARNCfg.ico {256,64,48,40,32,24,20,16}.png
icon icon32.ico {64,48,40,32,24,20,16}.png
icon icon.ico {32,16}.png
