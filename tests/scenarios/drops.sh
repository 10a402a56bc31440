#!/usr/bin/env bash
# Unusual drops: kinds that do not go together, files that cannot be read, no files, unusual names, held keys.
set -euo pipefail
# shellcheck source=tools/scenario-steps.sh
. "$(dirname "$0")/../../tools/scenario-steps.sh"

keep_list() { keep "$1" Overview 20 14 590 408; }
list_is() { x shows Overview 20 $((bar + 14)) "$private/$1.png"; }
list_changes() { x differs Overview 20 $((bar + 14)) "$private/$1.png"; }

# answer: waits for a message and closes it with Return.
answer() { # without `idle`: the program accepts no files while the message is open
  x wait Vornalite >"$private/number"
  x activate Vornalite
  x key Return
  x gone Vornalite
}

# delete_all: removes all rows.
delete_all() {
  x activate Overview
  press Control+a
  x click Overview 80 $((bar + 444))
  idle
}

start "$1" "$private/saved"
keep_list empty
garnet=("$samples"/garnet_A/garnet_A_{Al,Ca,Fe}.tif)

step "no file at all: refused"
if "$VORNALITE_XDRIVER" drop Overview 300 300 >"$private/answer"; then fail "taken"; fi
idle
list_is empty

step "two kinds of files in one drop: a message, nothing added"
touch "$private/maps.xray"
drop "$private/maps.xray" "${garnet[@]}" &
answer
wait "$!"
list_is empty
drop "${garnet[@]}"
keep_list three
delete_all

step "keys held"
for key in Shift Control Shift+Control Alt; do
  drop --mods "$key" "${garnet[@]}"
  list_is three
  delete_all
  list_is empty
done

step "names with blanks, accents and signs"
odd="$private/Größe 50% #1 + 2; 'ä' ?"
mkdir "$odd"
for name in Al Ca; do cp "$samples/garnet_A/garnet_A_$name.tif" "$odd/Dünn schliff #3 100% $name & µm.tif"; done
drop "$odd"/*
list_changes empty
load 0
expect 10 0 "$samples/garnet_A/garnet_A_Al.tif"
map_shows "$private/expected.png"
push PB_SaveImage
file_comes "$private/saved/Dünn_schliff_#3_100%_&_µm_(Al).png"
