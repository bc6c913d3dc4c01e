#!/bin/bash
# usage: licences.sh FOLDER    copies the licences of everything that is linked into the tool or packed with it
set -eu
for package in libfmt-dev libasio-dev nlohmann-json3-dev gcc-mingw-w64-base mingw-w64-x86-64-dev nsis; do
  source=/usr/share/doc/$package/copyright
  [ -f "$source" ] || { echo "the licence of $package is not in $source"; exit 1; }
  cp -L "$source" "$1/$package.txt"
done
for name in $(sed -n 's/^header_only([a-z_]* \([a-z]*\).*/\1/p' cmake/*.cmake); do
  compgen -G "$1/*$name*.txt" >/dev/null || { echo "the licence of $name is not among those in $1"; exit 1; }
done
# The licences that these files refer to instead of printing them.
for name in $(grep -oh '/usr/share/common-licenses/[A-Za-z0-9.-]*[A-Za-z0-9]' "$1"/*.txt | sort -u); do
  [ ! -f "$name" ] || cp -L "$name" "$1/$(basename "$name").txt"
done
