#!/bin/bash
# Builds the Windows programs and opens the simulated building, from which the tool is started. Without a display
# it works through a scripted job on a private one and leaves screenshots.
set -u
cd "$(dirname "$0")/.." || exit
. scripts/common.sh
begin "Build the tool for Windows and open it in the simulated building"

user_display() {
  # Wine needs an X server; a Wayland desktop offers one too, as a rule as display :0.
  [ -n "${DISPLAY:-}" ] || { [ -n "${WAYLAND_DISPLAY:-}" ] && export DISPLAY=:0; } || return 1
  timeout 5 xdotool getdisplaygeometry >/dev/null 2>&1
}

scripts/setup.sh && build win64 programs || finish 1
if user_display; then
  say "  SimHost is open on display $DISPLAY; this command ends when it is closed"
  WINE_DISPLAY=user SESSION_TIMEOUT=0 SIMHOST_TIMEOUT=0 scripts/wine-session.sh build/wine-prefix scripts/simhost.sh
  finish $?
fi
say "  No display here: a scripted job runs instead, on a private one"
take_shots tests/e2e/main-job.sim
status=$?
grep -hE '^ +(metric:|imperial:|refused:|30.5 stored)' "$logs/e2e-main-job.sim.log" | sed 's/^      //'
finish $status
