#!/usr/bin/env bash
# Installs what is missing, builds, and runs every test with ctest. Exits non-zero on a failure.
set -euo pipefail
cd "$(dirname "$0")"
source scripts/common.sh

install_missing_packages
configure_and_build build -DQUELLBOTE_WERROR=ON

export QT_QPA_PLATFORM=offscreen
# Chromium refuses its sandbox as root.
[ "$(id -u)" -eq 0 ] && export QTWEBENGINE_DISABLE_SANDBOX=1
export QTWEBENGINE_CHROMIUM_FLAGS="--disable-gpu --no-first-run --disable-background-networking"
ctest --test-dir build --output-on-failure -j2 "$@"
