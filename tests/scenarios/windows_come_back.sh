#!/usr/bin/env bash
# A hidden window comes back where it was, and the last window with menus stays within reach as an icon.
set -euo pipefail
# shellcheck source=tools/scenario-steps.sh
. "$(dirname "$0")/../../tools/scenario-steps.sh"

# stands TITLE PLACE: waits until a window is on the screen, which must be at that place.
stands() {
  local is
  x wait "$1" >"$private/number"
  idle
  is=$(x geometry "$1")
  [[ $is == "$2" ]] || fail "$1 is at $is, not at $2"
}

start "$1" "$private/saved"
overview_place=$(x geometry Overview)
overview=$(x wait Overview)

step "the last window becomes an icon"
x close Overview
x gone Overview
x activate "$overview"
stands Overview "$overview_place"

step "what is hidden while Main is there comes back when Main is closed"
drop "$samples"/garnet_A/*
load 0
main_place=$(x geometry "$main")
for _ in 1 2; do
  x close Overview
  x gone Overview
  x close "$main"
  stands Overview "$overview_place"
  load 0
  stands "$main" "$main_place"
done
