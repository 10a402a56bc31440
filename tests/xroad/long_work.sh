#!/usr/bin/env bash
# While the program loads or smooths twelve large maps, each of them is seen, and the program counts as alive.
set -euo pipefail
# shellcheck source=tools/road-steps.sh
. "$(dirname "$0")/../../tools/road-steps.sh"

size=2048
mkdir "$private/big"
PYTHONPATH=$samples/../tools PYTHONDONTWRITEBYTECODE=1 python3 - "$private/big" "$size" <<'END'
import sys
from image_files import write_tiff
folder, size = sys.argv[1], int(sys.argv[2])
for number in range(12):
    pattern = bytes((17 * i + 20 * number) % 241 for i in range(4096))
    write_tiff(f"{folder}/map_{chr(65 + number)}.tif", size, size, 8, pattern * (size * size // len(pattern)))
END

start "$1" "$private/saved"
drop "$private"/big/*

step "loading shows the maps as they come"
x click Overview 31 $((bar + 43))
main=$(x wait '/Main \(.*|[0-9]+')
frames=$(x frames "$main" 60 $((bar + 14)) 64 64 '/[0-9]+(  [0-9]+)+' 60)
((frames >= 4)) || fail "$frames pictures seen"

step "smoothing answers the window manager"
menu "$main" i # half size, so that the buttons below the map are on the screen
strip=$((298 + size / 2 - 256))
keep buttons "$main" 0 "$strip" 970 116
buttons_are_back() {
  "$VORNALITE_XDRIVER" shows "$main" 0 $((bar + strip)) "$private/buttons.png" 0 2>"$private/difference"
}
open_menu "$main" s
x key Up Return
answers=0
until x ping "$main" 5 && buttons_are_back; do answers=$((answers + 1)); done
((answers >= 2)) || fail "$answers answers"
