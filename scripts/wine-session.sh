#!/bin/bash
# usage: wine-session.sh PREFIX COMMAND...
#
# Runs COMMAND (which starts its Windows programs with `wine`) in a Wine session of its own and exits with its
# exit code: own prefix, private X display with a window manager. Whatever happens, every process of the session
# ends with it. A prefix that is not there yet is made from build/wine-template, in a moment and with little disk
# space; one that is there is used again, with what earlier sessions left in its registry.
#
#   WINE_TEMPLATE=build/wine-template
#   WINE_DISPLAY=user      the caller's display instead of a private one
#   SESSION_TIMEOUT=600    seconds until COMMAND is ended; 0 for no limit
#   SESSION_CPU=N          sessions beside each other say which CPU is theirs; any by default
#
# Exit codes of its own: 90 no display, 91 no prefix, 92 prefix in use, 124 COMMAND took too long.
set -u
[ $# -ge 2 ] || { sed -n '2,/^set/s/^# \{0,1\}//p' "$0"; exit 2; }
prefix=$(realpath -m "$1")
shift
template=$(realpath -m "$(dirname "$0")/../${WINE_TEMPLATE:-build/wine-template}")
limit=${SESSION_TIMEOUT:-600}

export WINEPREFIX=$prefix WINEARCH=win64 WINEDEBUG=${WINEDEBUG:--all}
export WINEDLLOVERRIDES='winemenubuilder.exe=d;mscoree,mshtml='
scratch=$(mktemp -d)
children=()

# A call between two processes is three times faster when both, and the wineserver, share one CPU. The display may use all.
mapfile -t cpus < <(taskset -pc $$ | sed 's/.*: //' | tr ',' '\n' |
  while IFS=- read -r first last; do seq "$first" "${last:-$first}"; done)
all=$(IFS=,; echo "${cpus[*]}")
taskset -pc "${cpus[${SESSION_CPU:-$$} % ${#cpus[@]}]}" $$ >/dev/null

end_wine() {
  timeout -k 1 10 wineserver -k
  timeout -k 1 10 wineserver -w || timeout -k 1 5 wineserver -k9
} >/dev/null 2>&1

end_session() {
  trap - EXIT
  trap '' INT TERM HUP
  [ ${#children[@]} -gt 0 ] && kill "${children[-1]}" 2>/dev/null
  end_wine
  [ ${#children[@]} -gt 0 ] && kill "${children[@]}" 2>/dev/null
  wait 2>/dev/null
  rm -rf "$scratch"
}
trap end_session EXIT
trap 'end_session; exit 130' INT
trap 'end_session; exit 143' TERM HUP

fail() {
  echo "wine-session: $2" >&2
  exit "$1"
}

# The session's services outlive the first program; with the caller's pipe in hand they would keep it open.
quietly() { "$@" </dev/null >/dev/null 2>&1 8>&- 9>&-; }

# Even when this script is killed outright, what it started ends with it.
bound() { exec setpriv --pdeathsig TERM "$@"; }

start_display() {
  bound taskset -c "$all" Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp </dev/null >/dev/null 2>&1 3>"$scratch/display" 9>&- &
  children+=($!)
  for _ in {1..200}; do
    [ -s "$scratch/display" ] && break
    sleep 0.1
  done
  [ -s "$scratch/display" ] || fail 90 "Xvfb did not start"
  DISPLAY=:$(<"$scratch/display")
  export DISPLAY
  bound taskset -c "$all" openbox </dev/null >/dev/null 2>&1 9>&- &
  children+=($!)
}

# Runs once per checkout. The template gets its name only when complete: a broken start is never taken for a good one.
make_template() {
  export WINEPREFIX=$template.new
  rm -rf "$WINEPREFIX"
  mkdir -p "$WINEPREFIX/drive_c/windows/Fonts"
  cp /usr/share/wine/fonts/*.ttf "$WINEPREFIX/drive_c/windows/Fonts/"
  quietly timeout -k 5 180 wine cmd /c exit &&
    quietly timeout -k 5 60 wine reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f ||
    fail 91 "could not make the prefix $template"
  end_wine
  # Documents and the like would be the caller's own folders.
  find "$WINEPREFIX"/drive_c/users -type l -execdir sh -c 'rm "$1" && mkdir "$1"' sh {} \;
  mv "$WINEPREFIX" "$template"
  export WINEPREFIX=$prefix
}

# The programs of Wine are shared with the template by hard links; what a session changes is copied.
make_prefix() {
  (
    flock -w 300 8 || exit 1
    [ -d "$template" ] || make_template
  ) 8>"$template.lock" || exit 91
  rm -rf "$prefix.new"
  cp -al "$template" "$prefix.new" 2>/dev/null || { rm -rf "$prefix.new"; cp -a "$template" "$prefix.new"; }
  local part
  for part in "$template"/*.reg "$template/drive_c/users"; do
    part=${part#"$template"/}
    rm -rf "$prefix.new/$part"
    cp -a "$template/$part" "$prefix.new/$part" || fail 91 "could not make the prefix $prefix"
  done
  mv "$prefix.new" "$prefix"
}

mkdir -p "$(dirname "$prefix")" "$(dirname "$template")"
exec 9>"$prefix.lock"
flock -w 300 9 || fail 92 "another session is using $prefix"

[ "${WINE_DISPLAY:-}" = user ] || start_display
[ -d "$prefix" ] || make_prefix
quietly wineserver -p10
quietly timeout -k 5 60 wine cmd /c exit || fail 91 "could not start Wine in $prefix"

export IN_WINE_SESSION=1
bound timeout -k 5 "$limit" "$@" </dev/null 9>&- &
children+=($!)
wait "${children[-1]}"
