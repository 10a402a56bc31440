# shellcheck shell=bash
# Shared by the commands, which source it after changing to the repository's folder.

say() { echo "Vornalite: $*"; }

# Reads the output of ninja, or of apt-get with its status lines, and shows the progress: on a terminal in one line that
# is rewritten, elsewhere in a line for every 20 %. Copies all that it reads to FILE.
show_progress() { # WHAT FILE
  local what=$1 line part='' of percent shown=0
  [[ ! -t 1 ]] || printf 'Vornalite: %s' "$what"
  while IFS= read -r line; do
    printf '%s\n' "$line" >&3
    if [[ $line =~ ^\[([0-9]+)/([0-9]+)\] ]]; then
      of=${BASH_REMATCH[2]} percent=$((100 * BASH_REMATCH[1] / BASH_REMATCH[2]))
    elif [[ $line =~ ^(dl|pm)status:[^[:space:]]*:([0-9]+)\.[0-9]+: ]]; then
      of=${BASH_REMATCH[1]} percent=${BASH_REMATCH[2]}
      [[ $of == dl ]] && what="$1 (download)" || what=$1
    else
      continue
    fi
    [[ $of == "$part" ]] || part=$of shown=0
    if [[ -t 1 ]]; then
      printf '\r\e[KVornalite: %s, %d %%' "$what" "$percent"
    elif ((percent / 20 > shown / 20)); then
      say "$what, $percent %"
      shown=$percent
    fi
  done 3>"$2"
  [[ ! -t 1 ]] || echo
}

# quietly WHAT COMMAND...: runs a command and shows its progress; if it fails, shows the end of its output.
quietly() {
  local what=$1 log
  shift
  mkdir -p build
  log=$(mktemp build/log.XXXXXX)
  [[ -t 1 ]] || say "$what"
  if "$@" 2>&1 </dev/null | show_progress "$what" "$log"; then
    rm -f "$log"
  else
    grep -E 'error|Error|FAILED' "$log" | head -n 20 >&2 || true
    tail -n 40 "$log" >&2
    rm -f "$log"
    say "failed: $*" >&2
    return 1
  fi
}

# Configures a preset; from scratch if the build folder was made under another path, as in a copied tree.
configure() {
  local cache=build/$1/CMakeCache.txt
  if [[ -f $cache ]] && ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$(pwd -P)" "$cache"; then
    quietly "configuring" cmake --preset "$1" --fresh
  else
    quietly "configuring" cmake --preset "$1"
  fi
}
