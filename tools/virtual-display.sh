#!/usr/bin/env bash
# virtual-display.sh [--screen WIDTHxHEIGHT] [--manager "PROGRAM OPTION..."] COMMAND...: runs the command on a new
# virtual display with a window manager (openbox unless another is named, or "none") and a session bus. Everything ends
# with the command; its exit code is returned.
set -euo pipefail
tools=$(dirname "$(readlink -f "$0")")
screen=1600x1200
if [[ $1 == --screen ]]; then
  screen=$2
  shift 2
fi
manager=(openbox --sm-disable --config-file "$tools/openbox.xml")
if [[ $1 == --manager ]]; then
  read -ra manager <<<"$2"
  shift 2
fi

private=$(mktemp -d)
pids=()
finish() {
  local pid
  trap - EXIT INT TERM HUP
  for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null || true; done
  for pid in "${pids[@]}"; do wait "$pid" 2>/dev/null || true; done
  rm -rf "$private"
}
trap finish EXIT
trap 'exit 129' HUP
trap 'exit 130' INT
trap 'exit 143' TERM

unset WAYLAND_DISPLAY XAUTHORITY DBUS_SESSION_BUS_ADDRESS XDG_CURRENT_DESKTOP
export LANG=C.UTF-8 LC_ALL=C.UTF-8 QT_QPA_PLATFORM=xcb XDG_RUNTIME_DIR=$private

# The server picks a free display and writes its number when it is ready. -r turns key repeat off: on a busy machine a
# second can pass between a press and its release.
mkfifo "$private/number"
Xvfb -displayfd 3 -screen 0 "${screen}x24" -nolisten tcp -noreset -r -dpi 96 3>"$private/number" >/dev/null 2>&1 &
pids=("$!")
number=
read -r -t 60 number <"$private/number" || true
[[ -n $number ]] || { echo "Vornalite: no virtual display could be started" >&2; exit 1; }
export DISPLAY=:$number

if [[ ${manager[0]} != none ]]; then
  "${manager[@]}" >/dev/null 2>&1 &
  pids=("$!" "${pids[@]}")
  end=$((SECONDS + 60))
  until [[ $(xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null) == *"window id"* ]]; do # set when the manager is ready
    ((SECONDS < end)) || { echo "Vornalite: the window manager of the virtual display did not start" >&2; exit 1; }
    sleep 0.05
  done
fi

# The bus warns on standard error if it may not raise its limits: that is discarded, the command's output is not.
# shellcheck disable=SC2016
dbus-run-session -- bash -c 'exec "$@" 2>&3 3>&-' command "$@" 3>&2 2>/dev/null &
pids=("$!" "${pids[@]}")
wait "$!"
