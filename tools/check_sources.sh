#!/usr/bin/env bash
# check_sources.sh [--all]: checks the shell scripts by shellcheck, the layout of the C++ sources by clang-format, and
# the program's own sources by clang-tidy, which is slow: those that differ from what has been pushed, or all. Needs the
# configured preset `ci`.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. tools/steps.sh

mapfile -t scripts < <(find run test .ci tools tests -type f \( -name '*.sh' -o -name run -o -name test \) | sort)
say "checking ${#scripts[@]} scripts"
shellcheck --external-sources "${scripts[@]}"

program=(appcore catalogue composite mainwindow output platform stack tools)
mapfile -t sources < <(find "${program[@]}" bench fuzz tests -name '*.cpp' -o -name '*.h' | sort)
say "checking the layout of ${#sources[@]} sources"
clang-format --dry-run --Werror "${sources[@]}"

# The changed sources, and those that include a changed header directly.
changed() {
  local pushed file
  pushed=$(git merge-base HEAD '@{upstream}' 2>/dev/null) || return 0 # no repository, nothing to compare with
  git diff --name-only --diff-filter=d "$pushed" -- "${program[@]}" | while read -r file; do
    case $file in
      *.cpp) echo "$file" ;;
      *.h) grep -rlF --include='*.cpp' "\"$file\"" "${program[@]}" || true ;;
    esac
  done | sort -u
}
if [[ ${1:-} == --all ]]; then
  mapfile -t analysed < <(find "${program[@]}" -name '*.cpp' | sort)
else
  mapfile -t analysed < <(changed)
fi
# shellcheck disable=SC2016
analyse() {
  local i
  for i in "${!analysed[@]}"; do
    echo "[$((i + 1))/${#analysed[@]}] ${analysed[i]}"
  done | xargs --delimiter='\n' --max-args=1 --max-procs=2 \
    bash -c 'echo "$1" && clang-tidy --quiet -p build/ci "${1#* }"' analyse
}
[[ ${#analysed[@]} -eq 0 ]] || quietly "analysing ${#analysed[@]} sources" analyse
