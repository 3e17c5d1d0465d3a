#!/usr/bin/env bash
# Checks the installation files and that the Debian package builds from the tree test.sh built:
# the desktop file and the AppStream metainfo validate, and cpack makes a .deb that names its
# dependencies.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/common.sh

install_missing_packages desktop-file-utils appstream dpkg-dev man-db groff-base
desktop-file-validate packaging/de.tarnholt.Quellbote.desktop
appstreamcli validate --no-net packaging/de.tarnholt.Quellbote.metainfo.xml
rm -f build/quellbote_*.deb
(cd build && cpack -G DEB)
dpkg-deb --info build/quellbote_*.deb | grep -E "Package|Version|Depends"
dpkg-deb --contents build/quellbote_*.deb | grep "usr/share/applications/de.tarnholt.Quellbote.desktop" > /dev/null
# The web engine module sits where the program looks for it, relative to itself.
dpkg-deb --contents build/quellbote_*.deb | grep "usr/lib/quellbote/quellbote_webengine.so" > /dev/null
# The command for scripts, and its manual page, which must read as one.
dpkg-deb --contents build/quellbote_*.deb | grep "usr/bin/quellbote-send" > /dev/null
dpkg-deb --contents build/quellbote_*.deb | grep "usr/share/man/man1/quellbote-send.1" > /dev/null
LC_ALL=C.UTF-8 MANWIDTH=80 man --warnings -l src/command/quellbote-send.1 > /dev/null
echo "== package: $(basename build/quellbote_*.deb)"
