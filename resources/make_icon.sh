#!/bin/bash
# Draws QVRKvTARNCfg.ico from the two .mvg drawings, of which the small one keeps to whole pixels; to be run after a
# change of either. Needs ImageMagick.
set -eu
cd "$(dirname "$0")"
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

draw() { convert -size 768x768 xc:none -draw "$(<"$1.mvg")" -filter Box -resize "$2x$2" "PNG32:$scratch/$2.png"; }
draw QVRKvTARNCfg 48
draw QVRKvTARNCfg 32
draw QVRKvTARNCfg16 16
convert "$scratch/48.png" "$scratch/32.png" "$scratch/16.png" QVRKvTARNCfg.ico
