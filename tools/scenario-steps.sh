# shellcheck shell=bash disable=SC2034
# Shared by the scenarios: starting the program, using its windows and controls, and waiting. VORNALITE_XDRIVER holds
# the path of the driver (tools/xdriver). Every wait is for something observable and has a limit. After an action, a
# step waits with `idle` until the program has finished its response, or with `map_changes` and the like for what a
# timer does later.

: "${VORNALITE_XDRIVER:?is not set}"
samples=$(readlink -f "$(dirname "${BASH_SOURCE[0]}")/../samples")
private=$(mktemp -d)
program= # its process
bar=     # height of the menu bar, which lies above the content of a window
main=    # number of the window Main, whose title changes with every load

x() {
  "$VORNALITE_XDRIVER" "$@" || {
    echo "xdriver failed: $*" >&2
    return 1
  }
}
# idle: waits until the program has handled all earlier input and shows the result.
idle() { x idle Overview 120; }
# busy: whether the program is working.
busy() { ! "$VORNALITE_XDRIVER" idle Overview 0; }
step() { echo "  $*"; }
fail() {
  echo "failed: $*" >&2
  trap - ERR
  cat "$private/messages" >&2 || true # the program's standard error
  [[ -z ${out:-} ]] || "$VORNALITE_XDRIVER" shot root "$out/failed.png" || true
  exit 1
}

finish() {
  if [[ -n $program ]]; then
    kill "$program" 2>/dev/null || true
    wait "$program" 2>/dev/null || true
  fi
  rm -rf "$private"
}
trap finish EXIT
trap 'exit 143' TERM INT HUP
set -E
trap 'fail "in line ${BASH_LINENO[*]}: $BASH_COMMAND"' ERR

# start BINARY SAVED: starts the program; the folder SAVED is the user's desktop folder.
start() {
  mkdir -p "$private/home/.config" "$2"
  echo "XDG_DESKTOP_DIR=\"$(readlink -f "$2")\"" >"$private/home/.config/user-dirs.dirs"
  HOME=$private/home XDG_CONFIG_HOME=$private/home/.config "$1" 2>"$private/messages" &
  program=$!
  x wait Overview >"$private/number"
  idle
  local height
  read -r _ _ _ height < <(x geometry Overview)
  bar=$((height - 474))
}

# ended STATUS: waits until the program has ended, with that status.
ended() {
  local status=0
  wait "$program" || status=$?
  program=
  [[ $status == "$1" ]] || fail "the program ended with $status"
}

# Overview

drop() {
  local keys=()
  [[ $1 != --mods ]] || keys=("$1" "$2")
  x drop "${keys[@]}" Overview 300 $((bar + 300)) "${@:1 + ${#keys[@]}}" >"$private/answer"
  idle
}

# check ROW: clicks the check box of a row, which loads its cluster or, if that is shown, hides it.
check() {
  x click Overview 31 $((bar + 43 + 20 * $1))
  idle
}

# load ROW: checks a row and finds Main, whose title is two or more numbers after a load.
load() {
  check "$1"
  main=$(x wait '/[0-9]+(  [0-9]+)+')
}

# Main

# Centres of controls in the content of Main at its minimum height.
declare -A spot=([PB_RGB]="910 333" [PB_SaveImage]="910 388" [BBcursorArrow]="159 337" [BBcursorX]="182 337"
  [BBcursorCircles]="205 337" [CB_ShowDrawing]="263 359" [CB_ScaleUp]="42 329" [PBdraw]="294 330" [PBundraw]="294 330" [PBdrawUndo]="60 330"
  [PB_AllSpecies]="518 330" [PB_SpeciesUpdate]="518 359" [PB_SpeciesClose]="518 388")

push() {
  local at
  read -ra at <<<"${spot[$1]}"
  x click "$main" "${at[0]}" $((at[1] + bar))
  idle
}

# map ACTION X Y: a pointer action at a position on the canvas of Main, which is at 60, 14.
map() {
  x "$1" "$main" $(($2 + 60)) $(($3 + bar + 14))
  idle
}

# drag_over_map X,Y X,Y ...: presses the button at the first position on the canvas, moves to the others, releases it.
drag_over_map() {
  local to
  map press "${1%,*}" "${1#*,}"
  for to in "${@:2}"; do map move "${to%,*}" "${to#*,}"; done
  x release
  idle
}

# leave_map: moves the pointer off the map, which removes the cursor from it.
leave_map() { x move "$main" 700 $((bar + 150)) && idle; }

# press KEY...: presses and releases keys, or combinations of them, one after the other.
press() { x key "$@" && idle; }

# menu WINDOW LETTER KEY...: opens a menu by its underlined letter and selects the entry that the keys lead to from the
# first.
menu() {
  open_menu "$1" "$2"
  press "${@:3}" Return
}

open_menu() {
  x activate "$1"
  press "Alt+$2"
}

# choose WINDOW X Y KEY...: opens the popup menu there and selects the entry that the keys lead to.
choose() {
  x click "$1" "$2" $((bar + $3))
  idle
  press "${@:4}" Return
}

# Pictures

# keep NAME WINDOW [X Y WIDTH HEIGHT]: takes a screenshot of the content of a window.
keep() {
  local name=$1 window=$2
  shift 2
  [[ $# -eq 0 ]] || set -- "$1" $(($2 + bar)) "$3" "$4"
  x shot "$window" "$private/$name.png" "$@"
}
keep_map() { keep "$1" "$main" 60 14 "${2:-256}" "${3:-256}"; }

# map_changes NAME: waits until the map differs from the screenshot NAME.
map_changes() { x differs "$main" 60 $((bar + 14)) "$private/$1.png"; }
# map_shows FILE: waits until the map is exactly that picture.
map_shows() { x shows "$main" 60 $((bar + 14)) "$1"; }

# expect TABLE LEVEL FILE: computes into expected.png what a canvas must show of a sample map.
expect() { python3 "$samples/../tests/scenarios/expected.py" "$private/expected.png" "$@"; }

# file_comes FILE: waits for a file.
file_comes() {
  local end=$((SECONDS + 30))
  until [[ -f $1 ]]; do
    ((SECONDS < end)) || fail "no file $1"
    idle
  done
}
