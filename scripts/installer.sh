#!/bin/bash
# usage: installer.sh    makes the installer, which brings the tool in both widths, in build/installer,
# with the help that scripts/manual.sh has made
set -u
cd "$(dirname "$0")/.." || exit
. scripts/common.sh
out=build/installer
version=$(scripts/version.sh)

# stage_tool WIDTH PRESET: a tool with what it wants beside it.
stage_tool() {
  mkdir -p "$out/stage/program/$1" &&
    cp "build/$2/QVRKvTARNCfg.exe" "build/$2/generated/QVRKvTARNCfg.tlb" "$out/stage/program/$1" &&
    cp -r build/help/HelpFile "$out/stage/program/$1"
}

# stage_building WIDTH PRESET: the virtual building, beside the tool.
stage_building() {
  mkdir -p "$out/stage/building/$1" &&
    cp "build/$2/SimHost.exe" "build/$2/SimControls.dll" "$out/stage/building/$1"
}

# stage: everything that is installed, in `program` (the chosen folder) and `common` (the family's folder); `building` and
# `building-common` are what the virtual building has in both.
stage() {
  local stage=$out/stage
  rm -rf "$stage"
  mkdir -p "$stage/program/Licences" "$stage/common/Templates" "$stage/common/languages" "$stage/building" "$stage/building-common/Templates"
  stage_tool x64 win64 && stage_tool x86 win32 &&
    stage_building x64 win64 && stage_building x86 win32 && cp -r build/win64/data "$stage/building" &&
    rm -rf "$stage"/building/data/{LonWorks,*store.json} &&
    scripts/licences.sh "$stage/program/Licences" &&
    cp lang/*.json "$stage/common/languages" &&
    cp resources/icon.ico resources/icon32.ico "$stage/common" &&
    build/asan/write_template "$stage/common/Templates" "$stage/building-common/Templates"
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

# pack STAGE VERSION SETUP [STUB]: makes the installer of a stage. As a 32-bit program it runs on every Windows.
pack() {
  local stage=$PWD/$out/$1
  {
    list_macro Program "$stage/program" '$INSTDIR' && list_macro Common "$stage/common" '$Common' &&
      list_macro Building "$stage/building" '$INSTDIR' && list_macro BuildingCommon "$stage/building-common" '$Common'
  } >"$stage/files.nsh"
  makensis -V2 -WX "-DSTUB=${4:-x86-unicode}" "-DVERSION=$2" "-DFILES=$stage/files.nsh" "-DICON=$PWD/resources/QVRKvTARNCfg.ico" \
    "-DOUT=$PWD/$3" installer/kv-tarn.nsi
}

if [ "${BASH_SOURCE[0]}" = "$0" ]; then
  begin "Make the installer in $out"
  [ -d build/help/HelpFile ] || scripts/manual.sh || finish 1
  scripts/setup.sh && build asan write_template && build win64 programs && build win32 programs || finish 1
  setup=$out/KV-TARN-Configuration-$version.exe
  step "Collect what is installed" stage stage && step "Pack $setup" pack pack stage "$version" "$setup"
  finish $?
fi
