#!/bin/bash
# Tries the installer in a Wine session of its own (see wine-session.sh): a silent upgrade over an older version beside a
# host, the width that fits the controls, the installed tool started by that host with its help, the refusal while the
# tool is open, and an uninstall that leaves neither a file nor a key; then the virtual building, chosen and left out.
#
# The installer is a 32-bit program. Where Wine runs none, the same script and files are tried as a 64-bit one.
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
menu_entry="$drive/ProgramData/Microsoft/Windows/Start Menu/Programs/KV-TARN Virtual Building.lnk"
uninstall_key='HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall\QVRKvTARNCfg'
settings_key='HKCU\Software\PELLR\Veldran, Inc\KV-TARN Configuration'
setup=build/installer/KV-TARN-Configuration-$version.exe
controls_key='HKCR\MVAbout.About\CLSID'
about_class=
faults=0
began=$EPOCHREALTIME

fault() {
  echo "FAULT: $*"
  faults=$((faults + 1))
}
part() { echo "--- $(elapsed "$began"): $*"; }
not() { ! "$@"; }
expect() { "$@" || fault "not so: $*"; }
in_registry() { wine reg query "$1" ${2:+/v "$2"} 2>/dev/null | tr -d '\r' | grep -qF -- "${3:-}"; }
has_key() { wine reg query "$1" >/dev/null 2>&1; }
registered_with_host() { grep -qs 'QVRKvTARNCfg.LNSPlugInAPI' "$work/host/data/store.json"; }
install() { timeout -k 5 60 wine "$1" /S "${@:2}"; }
registered_tool() { wine reg query "HKCR\\CLSID\\{8CC61C05-8F9E-42D9-A86A-7867F727A44F}\\LocalServer32" "/reg:$1" 2>/dev/null; }
server_of() { echo "HKCR\\CLSID\\$(wine reg query "HKCR\\$1\\CLSID" /ve | tr -d '\r' | grep -o '{.*}')\\LocalServer32"; }
serves() { wine reg add "$1" /ve /d "$2" /f "${@:3}" >/dev/null; }

# What is on the machine: files outside the system's own and temporary places, and all keys and values but Wine's own.
snapshot() {
  (cd "$drive" && find . -path ./windows -prune -o -path '*/Temp/*' -prune -o -print | sort) >"$1.files"
  local hive
  for hive in 'HKLM\Software' 'HKCU\Software'; do
    wine reg export "$hive" "$work/export.reg" /y >/dev/null && iconv -f UTF-16 -t UTF-8 "$work/export.reg" | tr -d '\r'
  done | awk '/^\[/ { own = /^\[HKEY_CURRENT_USER\\Software\\Wine/ } !own' >"$1.keys"
}

uninstall() {
  wine "$program/uninstall.exe" /S
  for _ in {1..100}; do
    [ -d "$program" ] || break
    sleep 0.1
  done
  expect [ ! -e "$program" ]
}

# same_as NAME: the machine is as it was in that snapshot.
same_as() {
  snapshot "$work/after"
  for part in files keys; do diff "$work/$1.$part" "$work/after.$part" || fault "other $part than $1"; done
}

# building_is there|gone: files, start menu entry and registration of the virtual building.
building_is() {
  local not=
  [ "$1" = gone ] && not=not
  for file in "$program"/{x64/SimHost.exe,x64/SimControls.dll,data/building.json,data/LonWorks} "$menu_entry"; do
    expect $not [ -e "$file" ]
  done
  for key in 'HKCR\MVPlugInLib.ObjectServer\CLSID' "$controls_key" 'HKLM\Software\LonWorks'; do
    expect $not has_key "$key"
  done
}

old_version() {
  rm -rf build/installer/old
  cp -r build/installer/stage build/installer/old
  echo "gone with the next version" >"build/installer/old/program/old only.txt"
  pack old 1.0.0 "$work/old.exe" "$stub"
}

# What the other width's controls would look like; on Windows the program id is shared, on Wine it is not.
other_controls() {
  local key
  for key in 'HKCR\MVAbout.About\CLSID' "HKCR\\CLSID\\$about_class\\InprocServer32"; do
    if [ "$1" = add ]; then wine reg add "$key" /ve /d "$about_class" /f /reg:32; else wine reg delete "$key" /f /reg:32; fi
  done >/dev/null
  [ "$1" = add ] || wine reg delete 'HKCR\MVAbout.About' /f /reg:32 >/dev/null
  [ "$1" = add ] || wine reg delete "HKCR\\CLSID\\$about_class" /f /reg:32 >/dev/null
}

prepare_host() {
  mkdir -p "$work/host" "$drive/LonWorks"
  cp build/win64/SimHost.exe build/win64/SimControls.dll "$work/host"
  cp -r build/win64/data "$work/host"
  rm -f "$work"/host/data/*store.json
  wine reg add 'HKLM\Software\LonWorks' /v 'LonWorks Path' /d 'C:\LonWorks' /f >/dev/null
  wine reg add 'HKCU\Software\LonWorks\Plugins' /v Measure /d 1 /f >/dev/null # the family's
  wine "$work/host/SimHost.exe" /RegServer && wine regsvr32 /s "$work/host/SimControls.dll" &&
    about_class=$(wine reg query "$controls_key" /ve | tr -d '\r' | grep -o '{.*}')
}

rm -rf "$work"
mkdir -p "$work"
stub=x86-unicode
unrun=0 # the exit code where the 32-bit tool is chosen
timeout 60 wine build/win32/SimHost.exe --help 2>/dev/null | grep -q 'Commands of a script' || {
  stub=amd64-unicode
  unrun=3
  setup=$work/this.exe
  echo "Wine here runs no 32-bit programs: the installer is tried as a 64-bit program, and the x86 tool does not run."
  pack stage "$version" "$setup" $stub || fault "the installer could not be packed"
}
old_version || fault "the older version could not be packed"
prepare_host || fault "no host"
snapshot "$work/before"

part "an older version, then this one over it"
expect install "$work/old.exe"
expect in_registry "$uninstall_key" DisplayVersion 1.0.0
expect [ -f "$program/old only.txt" ]
wine reg add "$settings_key" /v Choice /d kept /f >/dev/null
PROGRAMS=$work/host expect scripts/simhost.sh --script installer/before-upgrade.sim
expect install "$setup"
expect in_registry "$uninstall_key" DisplayVersion "$version"
expect in_registry "$settings_key" Choice kept
expect [ ! -e "$program/old only.txt" ]
for file in {x64,x86}/{QVRKvTARNCfg.exe,QVRKvTARNCfg.tlb,HelpFile/{,French/,German/,Spanish/}"TARN-M Help File.chm"} uninstall.exe; do
  expect [ -s "$program/$file" ]
done
for file in Templates/8000AB0C12340001_3_1.bin languages/French.json icon.ico icon32.ico; do
  expect [ -s "$common/$file" ]
done
expect has_key 'HKCR\QVRKvTARNCfg.OVXPlugInAPI\CLSID'
expect registered_with_host
expect [ ! -e "$program/x64/SimHost.exe" ] # there is a host

part "the tool has the width of the controls, or the one that is asked for"
expect in_registry "$uninstall_key" Width x64
expect eval 'registered_tool 64 | grep -q x64'
other_controls add
install "$setup"
code=$?
expect eval '[ $code -eq 0 ] || [ $code -eq $unrun ]' # Wine does not always tell that the program did not run
expect in_registry "$uninstall_key" Width x86
expect eval '! registered_tool 64 | grep -q x64'
expect install "$setup" /X64
other_controls delete
expect in_registry "$uninstall_key" WidthByHand x64
expect eval 'registered_tool 64 | grep -q x64'
expect registered_with_host

part "the host starts the installed tool, which keeps what was chosen and saved before, and opens its help"
PROGRAMS=$work/host expect scripts/simhost.sh --script installer/after-upgrade.sim

part "not while the tool is open"
timeout 30 wine "$program/x64/QVRKvTARNCfg.exe" -Embedding </dev/null >/dev/null 2>&1 &
for _ in {1..30}; do
  wine tasklist 2>/dev/null | grep -q QVRKvTARNCfg && break
  sleep 0.1
done
install "$setup"
code=$?
expect [ $code -eq 5 ]
expect [ -s "$program/x64/QVRKvTARNCfg.exe" ]
wine taskkill /F /IM QVRKvTARNCfg.exe >/dev/null 2>&1
wait

part "nothing is left"
find "$common/Templates" -name '*_2_4.bin' -delete # the host put it there for a device of its own
uninstall
expect eval '! registered_with_host'
backups=$(find "$drive/users" -path '*KV-TARN/Backups' -type d)
expect [ "$(find "$backups" -type f | wc -l)" -eq 2 ]
rm -rf "${backups%/Backups}" # what a person kept is that person's
same_as before

part "without a host the virtual building comes along"
expect wine regsvr32 /s /u "$work/host/SimControls.dll"
expect wine "$work/host/SimHost.exe" /UnregServer
expect wine reg delete 'HKLM\Software\LonWorks' /f
snapshot "$work/bare"
timeout -k 1 10 wineserver -k # a tool that was killed stays in Wine's list of running servers
timeout -k 1 10 wineserver -w
expect install "$work/old.exe" /X64
building_is there
PROGRAMS=$program/x64 expect scripts/simhost.sh --script installer/desk.sim
expect install "$setup"
building_is there
PROGRAMS=$program/x64 expect scripts/simhost.sh --script installer/desk-kept.sim
store=$(find "$drive/users" -name script-store.json)
expect grep -q 'RTU-9 Annex' "$store"

part "it can be left out, stays so, and comes back"
expect install "$setup" /NOBUILDING
building_is gone
expect [ -s "$program/x64/QVRKvTARNCfg.exe" ]
expect install "$setup"
building_is gone
expect grep -q 'RTU-9 Annex' "$store"
expect install "$setup" /BUILDING
building_is there
object_server=$(server_of MVPlugInLib.ObjectServer)
language=$(server_of MVLanguage.Language)
serves "$object_server" 'C:\windows\notepad.exe /Automation'
PROGRAMS=$program/x64 expect scripts/simhost.sh --script installer/no-host.sim
serves "$object_server" 'C:\gone\host.exe'
serves "$language" '%SystemRoot%\notepad.exe' /t REG_EXPAND_SZ # another program's, though the first class is free
PROGRAMS=$program/x64 expect scripts/simhost.sh --script installer/no-host.sim
for key in "$object_server" "$language"; do
  serves "$key" '"C:\Program Files\QVR KV\KV-TARN Configuration\x64\SimHost.exe"'
done
uninstall
rm -rf "${store%/Virtual building/*}" # what a person prepared is that person's
same_as bare

[ $faults -eq 0 ] && echo "all passed"
exit $((faults > 0))
