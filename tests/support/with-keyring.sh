#!/bin/sh
# Runs a test in a D-Bus session of its own with a Secret Service: gnome-keyring, whose "login"
# keyring is created with the password in KEYRING_PASSWORD and unlocked. Home, data and runtime
# folders are temporary, so the test never sees the user's own keyring and leaves no file behind.
# Without gnome-keyring or D-Bus the test fails here, loudly: it never passes without a keyring.
#
#   with-keyring.sh TEST [ARGUMENTS...]
set -eu

if [ "${1:-}" != "--inside" ]; then
    for tool in dbus-run-session gnome-keyring-daemon secret-tool; do
        command -v "$tool" > /dev/null || { echo "with-keyring.sh: $tool is missing (packages dbus, gnome-keyring, libsecret-tools)" >&2; exit 1; }
    done
    tmp=$(mktemp -d)
    trap 'rm -rf "$tmp"' EXIT
    export HOME="$tmp/home" XDG_DATA_HOME="$tmp/home/.local/share" XDG_CONFIG_HOME="$tmp/home/.config" \
        XDG_CACHE_HOME="$tmp/home/.cache" XDG_RUNTIME_DIR="$tmp/run"
    mkdir -p "$HOME" "$XDG_RUNTIME_DIR"
    chmod 700 "$XDG_RUNTIME_DIR"
    status=0
    dbus-run-session -- sh "$0" --inside "$@" || status=$?
    exit "$status"
fi
shift

# A prompt (gcr-prompter) must fail at once rather than wait on a display for a user.
unset DISPLAY WAYLAND_DISPLAY
export KEYRING_PASSWORD="Schlüsselbund"
# The daemon prints the variables that name its sockets; the test needs none of them.
printf '%s' "$KEYRING_PASSWORD" | gnome-keyring-daemon --unlock --components=secrets --daemonize > /dev/null
# The daemon takes its name on the bus a moment after it returns.
tries=0
until dbus-send --session --print-reply --dest=org.freedesktop.DBus /org/freedesktop/DBus \
        org.freedesktop.DBus.NameHasOwner string:org.freedesktop.secrets 2> /dev/null | grep -q "boolean true"; do
    tries=$((tries + 1))
    [ "$tries" -le 100 ] || { echo "with-keyring.sh: gnome-keyring-daemon did not come up on the session bus" >&2; exit 1; }
    sleep 0.1
done
# The test's own keyring: the program may use it.
export QUELLBOTE_TEST_KEYRING=1
"$@"
