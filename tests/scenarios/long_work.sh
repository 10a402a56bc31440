#!/usr/bin/env bash
# While the program loads and smooths large maps, each map is shown as it is done, and the window manager's question
# whether the program is alive is answered.
set -euo pipefail
# shellcheck source=tools/scenario-steps.sh
. "$(dirname "$0")/../../tools/scenario-steps.sh"

# The program smooths as many maps at once as there are processors, and looks after the screen after each such batch.
# One processor for all and six batches make for enough of both, however fast the machine is.
size=2048
count=$((6 * $(nproc --all)))
mkdir "$private/big"
PYTHONPATH=$samples/../tools PYTHONDONTWRITEBYTECODE=1 python3 - "$private/big" "$size" "$count" <<'END_OF_PROGRAM'
import sys
from image_files import write_tiff
folder, size, count = sys.argv[1], int(sys.argv[2]), int(sys.argv[3])
for number in range(count):
    pattern = bytes((17 * i + 20 * number) % 241 for i in range(4096))
    name = chr(65 + number // 26) + chr(97 + number % 26)
    write_tiff(f"{folder}/map_{name}.tif", size, size, 8, pattern * (size * size // len(pattern)))
END_OF_PROGRAM

start "$1" "$private/saved"
taskset --all-tasks --pid --cpu-list "$(taskset --pid --cpu-list $$ | sed 's/.*: \([0-9]*\).*/\1/')" "$program" >"$private/answer"
drop "$samples"/garnet_A/*
drop "$private"/big/*
load 0

step "loading shows the maps as they come"
x activate Overview
exec 4< <(x frames "$main" 60 $((bar + 14)) 64 64 5 60)
watch=$!
read -r _ <&4
check 1
wait "$watch"

step "smoothing answers the window manager"
open_menu "$main" s
x key Up Return
# The program works before and after an answer, so it also worked when it gave that.
answers=0
while busy; do
  x ping "$main"
  ! busy || answers=$((answers + 1))
done
((answers > 0)) || fail "no answer during work"
