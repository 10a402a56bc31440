#!/usr/bin/env bash
# headless-scenario.sh BINARY FOLDER: drives the program with the samples through most of its features, on the current
# display. Leaves screenshots in FOLDER and the pictures that the program saved in FOLDER/saved. Prints each step; exits
# with 1 if a check fails. The guide's pictures are made by
#   env -u DISPLAY ./run && cp out/{main,overview,drawing,composite,desktop}.png docs/pictures/
set -euo pipefail
binary=$(readlink -f "$1")
mkdir -p "$2"
out=$(readlink -f "$2")
rm -rf "$out"/*.png "$out/saved"
# shellcheck source=tools/scenario-steps.sh
. "$(dirname "$(readlink -f "$0")")/scenario-steps.sh"

start "$binary" "$out/saved"
step "drop a cluster of eight maps"
keep empty Overview
drop "$samples"/garnet_A/*
x differs Overview 0 0 "$private/empty.png"

step "check its row"
load 0
x shot "$main" "$out/main-raw.png"

step "smooth twice"
keep_map raw
press Control+2
map_changes raw
keep_map smoothed

step "choose a colour table"
open_menu "$main" c
x shot root "$out/colors.png" 0 0 980 600
press Escape
menu "$main" c
map_changes smoothed
menu "$main" c Down Down Down Down Down Down Down Down Down Down
map_shows "$private/smoothed.png"

step "go through the species with the arrow keys"
press Down
map_changes smoothed
press Up
map_shows "$private/smoothed.png"

step "choose the circle cursor"
push BBcursorCircles
map move 150 100
map_changes smoothed
x shot "$main" "$out/main.png"
leave_map
map_shows "$private/smoothed.png"

step "drop three more clusters"
x activate Overview
for cluster in garnet_B tracer counts16; do drop "$samples/$cluster"/*; done
x shot Overview "$out/overview.png"
x place Overview 968 20
idle

step "show all species"
x activate "$main"
push PB_AllSpecies
species=(Al Ca Fe K Mg Mn Si Ti)
for name in "${species[@]}"; do
  x shot "$name (sm2)" "$private/$name.png"
done

step "the cursor marks all of them"
x activate "$main"
map move 150 100
for name in "${species[@]}"; do x differs "$name (sm2)" 0 0 "$private/$name.png"; done

step "click marks by press and drag"
leave_map
keep marks "$main" 150 443 256 94 # the column alone: "Cur" changes with the pointer
drag_over_map 66,150 90,150 114,150 138,150
x differs "$main" 150 $((bar + 443)) "$private/marks.png"
leave_map

step "draw a line and undo another"
keep_map undrawn
push PBdraw
drag_over_map 40,110 48,78 70,56 100,46 130,58 150,84 162,116 158,150 140,172 110,182 80,176 56,156 40,110
keep_map drawn
drag_over_map 20,220 130,225 240,230
map_changes drawn
x shot "$main" "$out/drawing.png"
press Control+z
leave_map
map_shows "$private/drawn.png"
push PBundraw
map_changes undrawn
for name in "${species[@]}"; do x differs "$name (sm2)" 0 0 "$private/$name.png"; done

step "mix three species in RGB, then in CMY"
push PB_RGB
composite=$(x wait "RGB Composite Image")
x place "$composite" 1296 130
idle
x shot "$composite" "$private/mix.png"
choose "$composite" 65 61 Down Down            # red: Fe
choose "$composite" 65 89 Down Down Down       # green: Mg
choose "$composite" 65 117 Up                  # blue: Ca
x click "$composite" 27 $((bar + 149))         # scale up
idle
x differs "$composite" 0 0 "$private/mix.png"
x shot "$composite" "$out/composite.png"
x shot root "$out/desktop-full.png"
x shot --half root "$out/desktop.png"
keep rgb "$composite" 20 195 256 256

choose "$composite" 65 24 Down
x wait "CMY Composite Image" >"$private/number"
x differs "$composite" 20 $((bar + 195)) "$private/rgb.png"
x shot "$composite" "$out/composite-cmy.png"

step "save a map and the composite, each twice"
x shot "$composite" "$private/cmy.png" 20 $((bar + 195)) 256 256
saved=$out/saved
for name in "garnet_A_(Fe+Mg+Ca)" "garnet_A_(Fe+Mg+Ca)_02"; do
  x click "$composite" 226 $((bar + 473))
  file_comes "$saved/$name.png"
done
for name in "garnet_A_(Al)" "garnet_A_(Al)_02"; do
  push PB_SaveImage
  file_comes "$saved/$name.png"
done
count=("$saved"/*)
[[ ${#count[@]} == 4 ]] || fail "${#count[@]} files saved"
# A saved picture is what is shown without the drawing.
push CB_ShowDrawing
map_shows "$saved/garnet_A_(Al).png"
map_shows "$saved/garnet_A_(Al)_02.png"
x shows "$composite" 20 $((bar + 195)) "$saved/garnet_A_(Fe+Mg+Ca).png"
push CB_ShowDrawing
map_shows "$private/drawn.png"

step "About"
menu "$main" w Up
x wait "About..." >"$private/number"
x shot "About..." "$out/about.png"
x close "About..."
x gone "About..."

step "close all species, quit"
push PB_SpeciesClose
for name in "${species[@]}"; do x gone "$name (sm2)"; done
x key Control+q
ended 0
