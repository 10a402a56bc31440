#!/usr/bin/env bash
# While the program loads large maps, it shows each as it is done; while it smooths them, it replies to pings of the
# window manager.
set -euo pipefail
# shellcheck source=tools/scenario-steps.sh
. "$(dirname "$0")/../../tools/scenario-steps.sh"

# The program smooths as many maps at once as there are processors and updates the screen after each such batch. On one
# processor, six batches take long enough to be observed on any machine.
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

step "the program replies to pings while it smooths"
idle
keep_map raw 64 64
open_menu "$main" s
x key Up Return
x ping "$main"
# The program is busy before and after the reply, so it was busy when it replied.
replies=0
while busy; do
  x ping "$main"
  ! busy || replies=$((replies + 1))
done
((replies > 0)) || fail "no reply while it smooths"
idle
press Control+0
x shows "$main" 60 $((bar + 14)) "$private/raw.png"
