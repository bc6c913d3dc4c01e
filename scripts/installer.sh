#!/bin/bash
# usage: installer.sh [x64|x86]...    makes the installers, by default for x64, in build/installer
set -u
cd "$(dirname "$0")/.." || exit
. scripts/common.sh
out=build/installer
version=$(scripts/version.sh)

# stage ARCH PRESET: everything that is installed, in `program` (the chosen folder) and `common` (the family's folder).
stage() {
  local stage=$out/$1
  rm -rf "$stage"
  mkdir -p "$stage/program/HelpFile" "$stage/program/Licences" "$stage/common/Templates" "$stage/common/languages"
  cp "build/$2/QVRKvTARNCfg.exe" "build/$2/generated/QVRKvTARNCfg.tlb" "$stage/program" &&
    cp "build/help/TARN-M Help File.chm" "$stage/program/HelpFile" &&
    scripts/licences.sh "$stage/program/Licences" &&
    cp lang/*.json "$stage/common/languages" &&
    cp resources/icon.ico resources/icon32.ico "$stage/common" &&
    build/asan/write_template "$stage/common/Templates"
}

# list_macro NAME FOLDER TARGET: the instructions that install, and that remove, each file of FOLDER.
list_macro() {
  local folder
  echo "!macro Install$1"
  (cd "$2" && find . -mindepth 0 -type d | sort) | sed 's/^\.//; s|/|\\|g' | while IFS= read -r folder; do
    echo "  SetOutPath \"$3$folder\""
    find "$2${folder//\\//}" -maxdepth 1 -type f | sort | sed 's/.*/  File "&"/'
  done
  echo '  SetOutPath "$TEMP"' # the present folder of a process cannot be removed
  echo "!macroend"
  echo "!macro Remove$1"
  (cd "$2" && find . -type f | sort) | sed 's/^\.//; s|/|\\|g' | sed "s|.*|  Delete \"$3&\"|"
  (cd "$2" && find . -mindepth 1 -type d | sort -r) | sed 's/^\.//; s|/|\\|g' | sed "s|.*|  RMDir \"$3&\"|"
  echo "!macroend"
}

# pack ARCH VERSION SETUP: makes the installer of a stage.
pack() {
  local stage=$PWD/$out/$1
  { list_macro Program "$stage/program" '$INSTDIR' && list_macro Common "$stage/common" '$Common'; } >"$stage/files.nsh"
  makensis -V2 -WX "-DARCH=${1%%-*}" "-DVERSION=$2" "-DFILES=$stage/files.nsh" "-DICON=$PWD/resources/QVRKvTARNCfg.ico" \
    "-DOUT=$PWD/$3" installer/kv-tarn.nsi
}

if [ "${BASH_SOURCE[0]}" = "$0" ]; then
  begin "Make the installers in $out"
  [ $# -gt 0 ] || set -- x64
  [ -f "build/help/TARN-M Help File.chm" ] || scripts/manual.sh || finish 1
  scripts/setup.sh && build asan write_template || finish 1
  for arch in "$@"; do
    preset=win64
    [ "$arch" = x86 ] && preset=win32
    setup=$out/KV-TARN-Configuration-$version-$arch.exe
    build $preset tarn_tool && step "Collect what is installed" "stage-$arch" stage "$arch" $preset &&
      step "Pack $setup" "pack-$arch" pack "$arch" "$version" "$setup" || finish 1
  done
  finish 0
fi
