#!/usr/bin/env bash
# The species windows form rows from the bottom left of the usable screen; none covers another or its title bar.
set -euo pipefail
# shellcheck source=tools/scenario-steps.sh
. "$(dirname "$0")/../../tools/scenario-steps.sh"

start "$1" "$private/saved"
drop "$samples"/garnet_A/*
load 0
push PB_AllSpecies

read -r left top width height < <(xprop -root _NET_WORKAREA | sed 's/.*= //; s/,//g')
step "$width x $height of the screen are usable"
columns=$((width / 258))
i=0
for name in Al Ca Fe K Mg Mn Si Ti; do
  window=$(x wait "$name")
  row=$((i / columns))
  wanted="$((left + (i - row * columns) * 258)) $((top + height - row * (257 + 22) - 257)) 258 257"
  is=$(x geometry "$window")
  [[ $is == "$wanted" ]] || fail "$name is at $is, not at $wanted"
  # left, right, top, bottom of the frame
  read -r _ _ title foot < <(xprop -id "$window" _NET_FRAME_EXTENTS | sed 's/.*= //; s/,//g')
  ((title + foot <= 22)) || fail "the frame of $name is higher than the room between rows"
  i=$((i + 1))
done
