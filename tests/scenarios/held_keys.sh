#!/usr/bin/env bash
# Keys held over the map: Control makes the circle grow and Option shrink as long as they are down, Shift changes its
# colour; the pointer does not move.
set -euo pipefail
# shellcheck source=tools/scenario-steps.sh
. "$(dirname "$0")/../../tools/scenario-steps.sh"

start "$1" "$private/saved"
drop "$samples"/garnet_A/*
load 0
push BBcursorCircles
leave_map
keep_map bare
map move 128 128
map_changes bare

# Control and Option go on changing the circle while they are down, Shift changes it once.
for key in Control Alt Shift; do
  step "$key"
  keep_map before
  x keydown "$key"
  map_changes before
  if [[ $key != Shift ]]; then
    keep_map held
    map_changes held
  fi
  x keyup "$key"
  idle
done

step "no trace of the circle is left"
leave_map
map_shows "$private/bare.png"
