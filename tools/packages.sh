#!/usr/bin/env bash
# The Debian packages that Vornalite needs, in one place. `packages.sh build` installs what building needs and is
# missing, `packages.sh build test` also what the tests and a run without a display need.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. tools/steps.sh

# shellcheck disable=SC2034  # the sets are read by name below
build=(g++ cmake ninja-build pkg-config ccache qt6-base-dev libtiff-dev libpng-dev libdeflate-dev libhwy-dev)
# shellcheck disable=SC2034
test=(libgtest-dev libbenchmark-dev python3 xvfb openbox xauth dbus at-spi2-core fonts-dejavu-core x11-utils
      libx11-dev libxtst-dev desktop-file-utils appstream dpkg-dev file lintian shellcheck clang-format clang-tidy)

command -v dpkg-query >/dev/null || exit 0 # not Debian: CMake names what is missing

wanted=()
for set in "$@"; do
  declare -n packages="$set"
  wanted+=("${packages[@]}")
done
missing=()
installed=" $(dpkg-query -W -f '${db:Status-Status}:${Package} ' "${wanted[@]}" 2>/dev/null || true)"
for package in "${wanted[@]}"; do
  [[ $installed == *" installed:$package "* ]] || missing+=("$package")
done
[[ ${#missing[@]} -gt 0 ]] || exit 0

as_root=()
if [[ $(id -u) -ne 0 ]]; then
  if ! command -v sudo >/dev/null || ! sudo true; then
    say "this user may not install packages; as root, run: apt-get install ${missing[*]}" >&2
    exit 1
  fi
  as_root=(sudo)
fi
# apt closes the descriptor of its status lines in the programs that it starts, so that cannot be standard output. sudo
# closes other descriptors, so this one is opened inside it.
# shellcheck disable=SC2016
apt() {
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    sh -c 'exec apt-get -qq -o Dpkg::Use-Pty=0 -o APT::Status-Fd=3 "$@" 3>&1' apt-get "$@"
}

say "missing packages: ${missing[*]}"
quietly "updating the list of packages" apt update
quietly "installing packages" apt install -y --no-install-recommends "${missing[@]}"
