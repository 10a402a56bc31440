#!/usr/bin/env bash
# bare-root.sh FOLDER [COMMAND...]: checks that the commands (by default ./run and ./test) of a fresh clone of this
# repository work on a bare Debian 12. Makes two minimal roots by debootstrap, one for root and one for a user with
# sudo, and runs all commands in each, first with a network, then again without. Needs root, debootstrap and git; on two
# cores it takes about an hour. FOLDER receives the roots and the logs, and caches packages and compiled objects for the
# next run (remove FOLDER/ccache for a cold build).
set -euo pipefail
usage="usage: bare-root.sh FOLDER [COMMAND...]"
[[ $# -gt 0 ]] || { echo "$usage" >&2; exit 2; }
repository=$(readlink -f "$(dirname "$(readlink -f "$0")")/..")
mkdir -p "$1"/{archives/partial,ccache}
folder=$(readlink -f "$1")
shift
commands=("$@")
[[ $# -gt 0 ]] || commands=(./run ./test)

say() { echo "$(date +%T) $*"; }

# enter ROOT USER NETWORK COMMAND: runs a shell command in a root; its processes and mounts end with it.
enter() {
  local isolation=(--mount --pid --fork --kill-child --ipc)
  [[ $3 == yes ]] || isolation+=(--net)
  # shellcheck disable=SC2016
  unshare "${isolation[@]}" bash -euc '
    mount -t proc proc "$1/proc"
    mount --rbind /dev "$1/dev"
    mount --bind "$0/archives" "$1/var/cache/apt/archives"
    mount --bind "$0/ccache" "$1/var/cache/ccache"
    exec chroot "$1" setpriv --reuid "$2" --regid "$2" --init-groups --reset-env \
      env CCACHE_DIR=/var/cache/ccache CCACHE_UMASK=000 CCACHE_NOHASHDIR=1 bash -c "$3"
  ' "$folder" "$1" "$2" "$4" </dev/null
}

make_root() {
  local root=$1 user=$2
  rm -rf --one-file-system "$root"
  unshare --mount debootstrap --variant=minbase --cache-dir="$folder/archives" bookworm "$root" >"$root.debootstrap.log"
  mkdir -p "$root/var/cache/ccache"
  echo "127.0.0.1 localhost $(hostname)" >"$root/etc/hosts"
  local clone=/root/vornalite
  if [[ $user != root ]]; then
    enter "$root" root yes "apt-get update && apt-get install -y --no-install-recommends sudo" >"$root.sudo.log" 2>&1
    chroot "$root" useradd --create-home "$user"
    echo "$user ALL=(ALL) NOPASSWD: ALL" >"$root/etc/sudoers.d/$user"
    clone=/home/$user/vornalite
  fi
  git clone --quiet --no-hardlinks "$repository" "$root$clone"
  chroot "$root" chown -R "$user:$user" "$clone"
}

cp --no-clobber /var/cache/apt/archives/*.deb "$folder/archives" 2>/dev/null || true
failed=0
for user in root tester; do
  root=$folder/$user
  say "making the root for $user"
  make_root "$root" "$user"
  for network in yes no; do
    for command in "${commands[@]}"; do
      log=$folder/$user-network-$network-$(tr -c '[:alnum:]\n' _ <<<"$command").log
      status=0
      enter "$root" "$user" "$network" "cd ~/vornalite && CCACHE_BASEDIR=\$PWD $command" >"$log" 2>&1 || status=$?
      say "$user, network $network, $command: status $status ($log)"
      [[ $status == 0 ]] || { failed=1; tail -n 20 "$log"; }
    done
  done
done
exit "$failed"
