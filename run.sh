#!/usr/bin/env bash
# Installs what is missing, builds, and starts the client. The demo keeps its settings in a
# store of its own under build/, so it never touches the user's real settings.
set -euo pipefail
cd "$(dirname "$0")"
source scripts/common.sh

install_missing_packages
configure_and_build build

demo="$PWD/build/demo"
mkdir -p "$demo/config"
export XDG_CONFIG_HOME="$demo/config"
[ "$(id -u)" -eq 0 ] && export QTWEBENGINE_DISABLE_SANDBOX=1

exec build/src/quellbote
