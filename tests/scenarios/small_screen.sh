#!/usr/bin/env bash
# A window that comes up larger than the screen ends, with its border, at the edge of the usable screen.
set -euo pipefail
# shellcheck source=tools/scenario-steps.sh
. "$(dirname "$0")/../../tools/scenario-steps.sh"

start "$1" "$private/saved"
drop "$samples"/garnet_A/*
load 0

read -r _ top _ height _ < <(xprop -root _NET_WORKAREA | sed 's/.*= //; s/,//g')
read -r _ _ _ foot < <(xprop -id "$main" _NET_FRAME_EXTENTS | sed 's/.*= //; s/,//g')
is=$(x geometry "$main")
read -r _ y _ shown <<<"$is"
((y + shown + foot == top + height)) || fail "Main is at $is; $height rows of the screen are usable"
