#!/usr/bin/env bash
# Installs what is missing, builds, starts the sandbox service and the client pointed at it.
# The client runs as a copy in build/demo with an oem.inf beside it that points every address at
# the service, as a rebranded installation reaches its own server. The demo keeps its settings
# in a store of its own under build/demo, so it never touches the user's real settings.
set -euo pipefail
cd "$(dirname "$0")"
source scripts/common.sh

install_missing_packages
configure_and_build build

demo="$PWD/build/demo"
mkdir -p "$demo/config/Tarnholt"
cp build/src/quellbote "$demo/quellbote"

build/service/quellbote-service --port 0 --journal "$demo/journal.jsonl" > "$demo/service.log" &
service_pid=$!
trap 'kill $service_pid 2>/dev/null || true' EXIT
for _ in $(seq 1 50); do
    grep -q "^listening on" "$demo/service.log" 2>/dev/null && break
    sleep 0.1
done
base=$(sed -n 's/^listening on //p' "$demo/service.log" | head -n 1)
[ -n "$base" ] || { echo "quellbote-service did not start" >&2; exit 1; }
echo "quellbote-service at $base (journal: $demo/journal.jsonl)"

write_oem_inf "$base" "$demo/oem.inf"

# The demo account, stored once, as the first-start wizard would store it. "./run.sh --new-user"
# starts instead with an empty store of its own, so that the wizard comes up.
store="$demo/config/Tarnholt/SMS.conf"
if [ "${1:-}" = "--new-user" ]; then
    demo_config="$demo/new-user-config"
    rm -rf "$demo_config"
    mkdir -p "$demo_config/Tarnholt"
    store="$demo_config/Tarnholt/SMS.conf"
    touch "$store"
fi
if [ ! -s "$store" ] && [ "${1:-}" != "--new-user" ]; then
    printf '[General]\neMail=demo@quellbote.test\nPassword=demo\nfirstStartHasRun=true\n' > "$store"
    chmod 600 "$store"
fi

export XDG_CONFIG_HOME="${demo_config:-$demo/config}"
# The demo's password stays in the demo's store, out of the user's keyring.
export QUELLBOTE_NO_KEYRING=1
[ "$(id -u)" -eq 0 ] && export QTWEBENGINE_DISABLE_SANDBOX=1
"$demo/quellbote"
