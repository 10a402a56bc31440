#!/usr/bin/env bash
# A hidden window comes back where it was, and the last window with menus is minimised instead of hidden.
set -euo pipefail
# shellcheck source=tools/scenario-steps.sh
. "$(dirname "$0")/../../tools/scenario-steps.sh"

# is_at TITLE GEOMETRY: waits until a window is on the screen at that position and of that size. Openbox moves it there
# step by step when it is restored.
is_at() {
  local is end=$((SECONDS + 10))
  x wait "$1" >"$private/number"
  idle
  while is=$(x geometry "$1") && [[ $is != "$2" ]]; do
    ((SECONDS < end)) || fail "$1 is at $is, not at $2"
    sleep 0.05
  done
}

start "$1" "$private/saved"
overview_place=$(x geometry Overview)
overview=$(x wait Overview)

step "the last window is minimised"
x close Overview
x gone Overview
x activate "$overview"
is_at Overview "$overview_place"

step "Overview, hidden while Main is open, comes back when Main is closed"
drop "$samples"/garnet_A/*
load 0
main_place=$(x geometry "$main")
for _ in 1 2; do
  x close Overview
  x gone Overview
  x close "$main"
  is_at Overview "$overview_place"
  load 0
  is_at "$main" "$main_place"
done
