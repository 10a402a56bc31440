#!/usr/bin/env bash
# Keys held over the map: Control makes the circle grow and Option shrink as long as they are down, Shift changes its
# colour; the pointer does not move.
set -euo pipefail
# shellcheck source=tools/road-steps.sh
. "$(dirname "$0")/../../tools/road-steps.sh"

start "$1" "$private/saved"
drop "$samples"/garnet_A/*
load 0
push BBcursorCircles
leave_map
keep_map bare
map move 128 128
map_changes bare
keep_map circle

step "Control"
x keydown Control
map_changes circle
keep_map grown
map_changes grown
x keyup Control
x ping "$main"
keep_map large

step "Option"
x keydown Alt
map_changes large
keep_map shrunk
map_changes shrunk
x keyup Alt
x ping "$main"
keep_map small

step "Shift"
x keydown Shift
map_changes small
x keyup Shift

step "no trace of the circle is left"
leave_map
map_shows "$private/bare.png"
