# shellcheck shell=bash
# What ./run and ./test share; they source it after changing into the repository's folder.

say() { echo "Vornalite: $*"; }

# Runs a command without its output; if it fails, shows the end of that output.
quietly() {
  local log
  mkdir -p build
  log=$(mktemp build/log.XXXXXX)
  if "$@" >"$log" 2>&1 </dev/null; then
    rm -f "$log"
  else
    grep -E 'error|Error|FAILED' "$log" | head -n 20 >&2 || true
    tail -n 40 "$log" >&2
    rm -f "$log"
    say "failed: $*" >&2
    return 1
  fi
}

# Configures a preset; from nothing if its folder came from elsewhere, as in a copied tree.
configure() {
  local cache=build/$1/CMakeCache.txt
  if [[ -f $cache ]] && ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$(pwd -P)" "$cache"; then
    quietly cmake --preset "$1" --fresh
  else
    quietly cmake --preset "$1"
  fi
}
