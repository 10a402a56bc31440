#!/usr/bin/env bash
# After "Show All" and "Update" Main is active below the species windows: the linked cursor follows the pointer at once.
set -euo pipefail
# shellcheck source=tools/scenario-steps.sh
. "$(dirname "$0")/../../tools/scenario-steps.sh"

start "$1" "$private/saved"
drop "$samples"/garnet_A/*
load 0
for button in PB_AllSpecies PB_SpeciesUpdate; do
  step "$button"
  leave_map
  push "$button"
  last=$(x list | tail -n 1)
  [[ $last == *" Ti" ]] || fail "on top is $last"
  x shot Al "$private/Al.png"
  map move 100 100
  x differs Al 0 0 "$private/Al.png"
done
