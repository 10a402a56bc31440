# shellcheck shell=bash disable=SC2034
# What the roads share: starting the program, finding its windows and controls, waiting for what a step must bring
# about. VORNALITE_XDRIVER holds the path of the driver (tools/xdriver). Nothing here sleeps; every wait has a limit.

: "${VORNALITE_XDRIVER:?is not set}"
samples=$(readlink -f "$(dirname "${BASH_SOURCE[0]}")/../samples")
private=$(mktemp -d)
program= # its process
bar=     # height of the menu bar, which lies above the content of a window
main=    # number of the window Main, whose title changes with every load

x() {
  "$VORNALITE_XDRIVER" "$@" || {
    echo "no success: $*" >&2
    return 1
  }
}
step() { echo "  $*"; }
fail() {
  echo "failed: $*" >&2
  trap - ERR
  cat "$private/messages" >&2 || true # what the program said
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
}

# check ROW: the check box of a row, which loads its cluster or, if it is shown, hides it.
check() {
  x click Overview 31 $((bar + 43 + 20 * $1))
  x ping Overview
}

# load ROW: checks it and waits until its cluster is there. The title of Main then is two numbers or more.
load() {
  check "$1"
  main=$(x wait '/[0-9]+(  [0-9]+)+' 60)
  x ping "$main"
}

# Main

# Middles of controls, in the content of the window of its smallest height.
declare -A spot=([PB_RGB]="910 333" [PB_SaveImage]="910 388" [BBcursorArrow]="159 337" [BBcursorX]="182 337"
  [BBcursorCircles]="205 337" [CB_ShowDrawing]="263 359" [CB_ScaleUp]="42 329" [PBdraw]="294 330" [PBundraw]="294 330" [PBdrawUndo]="60 330"
  [PB_AllSpecies]="518 330" [PB_SpeciesClose]="518 388")

push() {
  local at
  read -ra at <<<"${spot[$1]}"
  x click "$main" "${at[0]}" $((at[1] + bar))
  x ping "$main"
}

# map ACTION X Y ...: an action of the pointer at a place on the canvas of Main, which lies at 60, 14.
map() {
  local action=$1 at=() number
  shift
  for number in "$@"; do at+=($((number + (${#at[@]} % 2 ? bar + 14 : 60)))); done
  x "$action" "$main" "${at[@]}"
}

# Off the map, so that no cursor marks it.
leave_map() { x move "$main" 700 $((bar + 150)) && x ping "$main"; }

# menu WINDOW LETTER KEY...: opens a menu by its underlined letter, goes with the keys from the first entry to another.
menu() {
  open_menu "$1" "$2"
  x key "${@:3}" Return
  x ping "$1"
}

open_menu() {
  x activate "$1"
  x key "Alt+$2"
  x ping "$1"
}

# smooth KEY: smooths by a shortcut; the buttons come back when all species are done.
smooth() {
  keep buttons "$main" 0 298 970 116
  x key "$1"
  x ping "$main"
  x shows "$main" 0 $((bar + 298)) "$private/buttons.png"
}

# choose WINDOW X Y KEY...: opens the popup menu there and goes with the keys to another entry.
choose() {
  x click "$1" "$2" $((bar + $3))
  x ping "$1"
  x key "${@:4}" Return
  x ping "$1"
}

# Pictures

# keep NAME WINDOW [X Y WIDTH HEIGHT]: notes what is shown in the content of a window.
keep() {
  local name=$1 window=$2
  shift 2
  [[ $# -eq 0 ]] || set -- "$1" $(($2 + bar)) "$3" "$4"
  x shot "$window" "$private/$name.png" "$@"
}
keep_map() { keep "$1" "$main" 60 14 "${2:-256}" "${3:-256}"; }

# map_changes NAME: waits until the map looks other than it was when that was kept.
map_changes() { x differs "$main" 60 $((bar + 14)) "$private/$1.png"; }
# map_shows PICTURE: waits until the map is exactly that picture.
map_shows() { x shows "$main" 60 $((bar + 14)) "$1"; }

# file_comes FILE: waits for a file.
file_comes() {
  local end=$((SECONDS + 10))
  until [[ -f $1 ]]; do
    ((SECONDS < end)) || fail "no file $1"
    x ping "$main"
  done
}
