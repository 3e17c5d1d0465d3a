#!/usr/bin/env bash
# Checks the installation files and that the Debian package builds from the tree test.sh built:
# the desktop file and the AppStream metainfo validate, and cpack makes a .deb that names its
# dependencies.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/common.sh

install_missing_packages desktop-file-utils appstream dpkg-dev
desktop-file-validate packaging/de.tarnholt.Quellbote.desktop
appstreamcli validate --no-net packaging/de.tarnholt.Quellbote.metainfo.xml
rm -f build/quellbote_*.deb
(cd build && cpack -G DEB)
dpkg-deb --info build/quellbote_*.deb | grep -E "Package|Version|Depends"
dpkg-deb --contents build/quellbote_*.deb | grep "usr/share/applications/de.tarnholt.Quellbote.desktop" > /dev/null
# The web engine module sits where the program looks for it, relative to itself.
dpkg-deb --contents build/quellbote_*.deb | grep "usr/lib/quellbote/quellbote_webengine.so" > /dev/null
echo "== package: $(basename build/quellbote_*.deb)"
