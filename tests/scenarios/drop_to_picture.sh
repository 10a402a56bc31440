#!/usr/bin/env bash
# Drops files from another process and compares the pixels of the canvas with those that the arithmetic computes.
set -euo pipefail
# shellcheck source=tools/scenario-steps.sh
. "$(dirname "$0")/../../tools/scenario-steps.sh"

# map_is TABLE LEVEL FILE: the canvas shows the file in that colour table, smoothed to that level.
map_is() {
  expect "$@"
  map_shows "$private/expected.png"
}

start "$1" "$private/saved"
drop "$samples"/garnet_A/*
drop "$samples"/counts16/*

step "8 bits, another species, smoothed, another table"
load 0
map_is 10 0 "$samples/garnet_A/garnet_A_Al.tif"
press Down
map_is 10 0 "$samples/garnet_A/garnet_A_Ca.tif"
press Control+3
map_is 10 3 "$samples/garnet_A/garnet_A_Ca.tif"
menu "$main" c Down
map_is 1 3 "$samples/garnet_A/garnet_A_Ca.tif"

step "a species window"
push PB_AllSpecies
window=$(x wait "Ti (sm3)")
expect 1 3 "$samples/garnet_A/garnet_A_Ti.tif"
x shows "$window" 1 0 "$private/expected.png"

step "16 bits, smoothed as the cluster before; raw"
x activate Overview
load 1
x activate "$main"
press Down
chromium="$samples/counts16/alloy Cr counts.tif"
map_is 1 3 "$chromium"
press Control+0
map_is 1 0 "$chromium"
