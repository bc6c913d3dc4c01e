#!/bin/bash
# Tries the installer in a Wine session of its own (see wine-session.sh): a silent upgrade over an older version beside a
# host, the installed tool started by that host with its help, the refusal while the tool is open, and an uninstall that
# leaves neither a file nor a key.
set -u
cd "$(dirname "$0")/.." || exit
. scripts/common.sh
. scripts/installer.sh
if [ -z "${IN_WINE_SESSION:-}" ]; then
  rm -rf build/wine-installer
  exec scripts/wine-session.sh build/wine-installer "$0"
fi

work=build/installer-test
drive=$WINEPREFIX/drive_c
program="$drive/Program Files/QVR KV/KV-TARN Configuration"
common="$drive/LonWorks/Apps/QVR KV/OvxCommonFiles"
uninstall_key='HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall\QVRKvTARNCfg'
settings_key='HKCU\Software\PELLR\Veldran, Inc\KV-TARN Configuration'
setup=build/installer/KV-TARN-Configuration-$version-x64.exe
faults=0
began=$EPOCHREALTIME

fault() {
  echo "FAULT: $*"
  faults=$((faults + 1))
}
part() { echo "--- $(elapsed "$began"): $*"; }
expect() { "$@" || fault "not so: $*"; }
in_registry() { wine reg query "$1" ${2:+/v "$2"} 2>/dev/null | tr -d '\r' | grep -qF -- "${3:-}"; }
registered_with_host() { grep -qs 'QVRKvTARNCfg.LNSPlugInAPI' "$work/host/data/store.json"; }
install() { timeout -k 5 60 wine "$1" /S; }

# What is on the machine: files outside the system's own and temporary places, and all keys and values but Wine's own.
snapshot() {
  (cd "$drive" && find . -path ./windows -prune -o -path '*/Temp/*' -prune -o -print | sort) >"$1.files"
  local hive
  for hive in 'HKLM\Software' 'HKCU\Software'; do
    wine reg export "$hive" "$work/export.reg" /y >/dev/null && iconv -f UTF-16 -t UTF-8 "$work/export.reg" | tr -d '\r'
  done | awk '/^\[/ { own = /^\[HKEY_CURRENT_USER\\Software\\Wine/ } !own' >"$1.keys"
}

old_version() {
  rm -rf build/installer/x64-old
  cp -r build/installer/x64 build/installer/x64-old
  echo "gone with the next version" >"build/installer/x64-old/program/old only.txt"
  pack x64-old 0.9.0 "$work/old.exe"
}

prepare_host() {
  mkdir -p "$work/host" "$drive/LonWorks"
  cp build/win64/SimHost.exe build/win64/SimControls.dll "$work/host"
  cp -r build/win64/data "$work/host"
  rm -f "$work"/host/data/*store.json
  wine reg add 'HKLM\Software\LonWorks' /v 'LonWorks Path' /d 'C:\LonWorks' /f >/dev/null
  wine "$work/host/SimHost.exe" /RegServer && wine regsvr32 /s "$work/host/SimControls.dll"
}

rm -rf "$work"
mkdir -p "$work"
old_version || fault "the older version could not be packed"
prepare_host || fault "no host"
snapshot "$work/before"

part "an older version, then this one over it"
expect install "$work/old.exe"
expect in_registry "$uninstall_key" DisplayVersion 0.9.0
expect [ -f "$program/old only.txt" ]
wine reg add "$settings_key" /v Choice /d kept /f >/dev/null
expect install "$setup"
expect in_registry "$uninstall_key" DisplayVersion "$version"
expect in_registry "$settings_key" Choice kept
expect [ ! -e "$program/old only.txt" ]
for file in QVRKvTARNCfg.exe QVRKvTARNCfg.tlb "HelpFile/TARN-M Help File.chm" uninstall.exe; do
  expect [ -s "$program/$file" ]
done
for file in Templates/8000AB0C12340001_3_1.bin languages/French.json icon.ico icon32.ico; do
  expect [ -s "$common/$file" ]
done
expect in_registry 'HKCR\QVRKvTARNCfg.OVXPlugInAPI\CLSID'
expect registered_with_host

part "the host starts the installed tool, which opens its help"
PROGRAMS=$work/host expect scripts/simhost.sh --script installer/installed.sim

part "not while the tool is open"
timeout 30 wine "$program/QVRKvTARNCfg.exe" -Embedding </dev/null >/dev/null 2>&1 &
for _ in {1..30}; do
  wine tasklist 2>/dev/null | grep -q QVRKvTARNCfg && break
  sleep 0.1
done
install "$setup"
code=$?
expect [ $code -eq 5 ]
expect [ -s "$program/QVRKvTARNCfg.exe" ]
wine taskkill /F /IM QVRKvTARNCfg.exe >/dev/null 2>&1
wait

part "nothing is left"
find "$common/Templates" -name '*_2_4.bin' -delete # the host put it there for a device of its own
wine "$program/uninstall.exe" /S
for _ in {1..100}; do
  [ -d "$program" ] || break
  sleep 0.1
done
expect [ ! -e "$program" ]
expect eval '! registered_with_host'
snapshot "$work/after"
for part in files keys; do diff "$work/before.$part" "$work/after.$part" || fault "other $part than before"; done

[ $faults -eq 0 ] && echo "all passed"
exit $((faults > 0))
