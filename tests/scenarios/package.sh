#!/usr/bin/env bash
# package.sh BINARY BUILD: makes the Debian package of the build folder, checks it by lintian, unpacks it into a root of
# its own, and starts the program from there.
set -euo pipefail
# shellcheck source=tools/scenario-steps.sh
. "$(dirname "$0")/../../tools/scenario-steps.sh"

step "the package declares what it needs at run time"
(cd "$2" && cpack -G DEB -B "$private/package" >"$private/cpack" 2>&1) || { cat "$private/cpack" >&2; fail "cpack"; }
package=$(echo "$private"/package/*.deb)
lintian --no-cfg --allow-root --fail-on error,warning "$package"
needs=$(dpkg-deb --field "$package" Depends)
for library in libqt6widgets6 libqt6gui6 libtiff6 libpng16-16 hicolor-icon-theme; do
  [[ $needs == *"$library"* ]] || fail "$library is not among: $needs"
done

step "the program of the package starts and ends"
dpkg-deb --extract "$package" "$private/root"
for file in applications/vornalite.desktop metainfo icons/hicolor/scalable/apps/vornalite.svg man/man1/vornalite.1.gz \
  doc/vornalite/{README.md,docs/guide.md,docs/pictures/main.png,samples}; do
  [[ -e $private/root/usr/share/$file ]] || fail "$file is not in the package"
done
start "$private/root/usr/bin/vornalite" "$private/saved"
x activate Overview
x key Control+q
ended 0
