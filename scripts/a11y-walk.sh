#!/usr/bin/env bash
# Runs the demo (sandbox service, client with the demo store) on a virtual display with the
# accessibility bus and the Orca screen reader, drives it from the keyboard, and shows what a
# blind user hears (Orca's SPEECH OUTPUT lines) and what the accessibility tree holds.
#
#   scripts/a11y-walk.sh [SCENARIO]          SCENARIO: a bash file, sourced once all runs
#   scripts/a11y-walk.sh -c 'COMMANDS'       the same, given inline
#
# Without a scenario it dumps the tree of the main window and tabs through it once.
# In a scenario these helpers are at hand:
#   key KEY...            xdotool key (Tab, shift+Tab, Return, alt+s, Down ...), then a pause
#   typetext TEXT         types TEXT into the focused control
#   mark / heard          heard prints the SPEECH OUTPUT lines since the last mark
#   tree ARGS             scripts/a11y-tree.py ARGS (dump, find, action, wait, focus, apps)
#   activate TITLE        raises and focuses the X window titled TITLE
#   step TEXT             a heading in the output
#   shot NAME             a screenshot of the display as $A11Y_OUT/NAME.xwd
# Environment:
#   A11Y_OUT=DIR          where logs go (build/a11y-out)
#   A11Y_CLIENT=PATH      the client to run (build/src/quellbote), with the web engine module
#                         beside it if there is one there
#   A11Y_WEBENGINE=1      sets QTWEBENGINE_ENABLE_LINUX_ACCESSIBILITY=1 for the client
#   A11Y_NEWS=1           lets the news window come up at start
#   A11Y_ORCA=0           runs without Orca (tree walks only)
#   A11Y_NO_BUILD=1       skips the build
#   A11Y_PAUSE=SECONDS    the pause after each key (0.8)
#   A11Y_STORE='k=v ...'  further values of the demo's store, one "key=value" a line
#   A11Y_FIRST_START=1    an empty account: the first-start wizard comes up
#   A11Y_SCREEN=WxHxD     the virtual screen (default 1280x1024x24)
#   A11Y_GTK_SETTINGS='k=v ...'  lines of the client's gtk-3.0/settings.ini, as GNOME writes it
#                         (gtk-font-name=Cantarell 14), for QT_QPA_PLATFORMTHEME=gtk3
set -euo pipefail
cd "$(dirname "$0")/.."
root="$PWD"

A11Y_PACKAGES=(python3-pyatspi at-spi2-core orca xdotool openbox xvfb xauth dbus-x11 locales x11-apps)

if [ "${1:-}" != "--inside" ]; then
    source scripts/common.sh
    install_missing_packages "${A11Y_PACKAGES[@]}"
    # Orca speaks German only in a German locale.
    if ! locale -a | grep -qi '^de_DE.utf-\?8$'; then
        sed -i 's/^# *de_DE.UTF-8 UTF-8/de_DE.UTF-8 UTF-8/' /etc/locale.gen
        locale-gen >/dev/null
    fi
    if [ "${A11Y_NO_BUILD:-0}" != 1 ]; then
        cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
        cmake --build build -j2 --target quellbote quellbote-service quellbote_webengine >/dev/null
    fi
    export A11Y_OUT="${A11Y_OUT:-$root/build/a11y-out}"
    rm -rf "$A11Y_OUT"
    mkdir -p "$A11Y_OUT"
    # A free display number: the first without a lock file.
    display=90
    while [ -e "/tmp/.X$display-lock" ]; do display=$((display + 1)); done
    Xvfb ":$display" -screen 0 "${A11Y_SCREEN:-1280x1024x24}" -nolisten tcp >"$A11Y_OUT/xvfb.log" 2>&1 &
    xvfb_pid=$!
    trap 'kill $xvfb_pid 2>/dev/null || true' EXIT
    for _ in $(seq 1 50); do [ -e "/tmp/.X11-unix/X$display" ] && break; sleep 0.1; done
    export DISPLAY=":$display"
    scenario=("$@")
    [ ${#scenario[@]} -eq 0 ] && scenario=(-c "default_walk")
    # A session bus of its own: the accessibility bus, Orca and the client find each other there.
    dbus-run-session -- "$0" --inside "${scenario[@]}"
    exit $?
fi
shift
source scripts/common.sh

out="$A11Y_OUT"
export LANG=de_DE.UTF-8 LANGUAGE=de LC_ALL=de_DE.UTF-8
pids=()
cleanup() {
    local i
    for ((i = ${#pids[@]} - 1; i >= 0; i--)); do kill "${pids[$i]}" 2>/dev/null || true; done
    sleep 1
    # Orca and a client inside a modal loop may not end on TERM.
    for ((i = ${#pids[@]} - 1; i >= 0; i--)); do kill -9 "${pids[$i]}" 2>/dev/null || true; done
}
trap cleanup EXIT

# The accessibility bus, and the switch that tells toolkits a screen reader wants them.
/usr/libexec/at-spi-bus-launcher --launch-immediately >"$out/at-spi.log" 2>&1 &
pids+=($!)
disown $!
for _ in $(seq 1 50); do
    dbus-send --session --print-reply --dest=org.a11y.Bus /org/a11y/bus org.a11y.Bus.GetAddress \
        >/dev/null 2>&1 && break
    sleep 0.1
done
dbus-send --session --print-reply --dest=org.a11y.Bus /org/a11y/bus org.freedesktop.DBus.Properties.Set \
    string:org.a11y.Status string:IsEnabled variant:boolean:true >/dev/null
dbus-send --session --print-reply --dest=org.a11y.Bus /org/a11y/bus org.freedesktop.DBus.Properties.Set \
    string:org.a11y.Status string:ScreenReaderEnabled variant:boolean:true >/dev/null

# A window manager, so that windows get activated and focused as on a desktop.
openbox >"$out/openbox.log" 2>&1 &
pids+=($!)
disown $!

# The demo, as run.sh sets it up, in a folder of its own.
demo="$root/build/a11y-demo"
rm -rf "$demo"
mkdir -p "$demo/config/Tarnholt"
client="${A11Y_CLIENT:-$root/build/src/quellbote}"
cp "$client" "$demo/quellbote"
# A web engine module beside the chosen client is loaded in place of the build tree's.
[ -e "$(dirname "$client")/quellbote_webengine.so" ] && cp "$(dirname "$client")/quellbote_webengine.so" "$demo/"
"$root/build/service/quellbote-service" --port 0 --journal "$demo/journal.jsonl" >"$demo/service.log" 2>&1 &
pids+=($!)
disown $!
for _ in $(seq 1 50); do grep -q "^listening on" "$demo/service.log" 2>/dev/null && break; sleep 0.1; done
base=$(sed -n 's/^listening on //p' "$demo/service.log" | head -n 1)
[ -n "$base" ] || { echo "quellbote-service did not start" >&2; exit 1; }
write_oem_inf "$base" "$demo/oem.inf"
{
    # A11Y_FIRST_START=1: the first-start wizard comes up instead of the main window.
    if [ "${A11Y_FIRST_START:-0}" = 1 ]; then
        printf '[General]\nfirstStartHasRun=false\n'
    else
        printf '[General]\neMail=demo@quellbote.test\nPassword=demo\nfirstStartHasRun=true\n'
    fi
    # The news come up only when asked for: they load the web engine at start.
    [ "${A11Y_NEWS:-0}" = 1 ] || [ "${A11Y_FIRST_START:-0}" = 1 ] || printf 'infoVersion=1\n'
    # Further values of the store a scenario needs, one "key=value" a line.
    [ -n "${A11Y_STORE:-}" ] && printf '%s\n' "$A11Y_STORE"
} >"$demo/config/Tarnholt/SMS.conf"
chmod 600 "$demo/config/Tarnholt/SMS.conf"

# Orca with its own settings folder, its debug log as the record of what it says. Without a
# speech server (speech-dispatcher is not installed) it still logs every utterance.
orca_log="$out/orca.log"
if [ "${A11Y_ORCA:-1}" = 1 ]; then
    mkdir -p "$out/orca-prefs"
    /usr/bin/python3 "$root/scripts/a11y-orca.py" --replace --user-prefs "$out/orca-prefs" \
        --debug-file "$orca_log" >"$out/orca.out" 2>&1 &
    pids+=($!)
disown $!
    for _ in $(seq 1 100); do grep -q "SPEECH OUTPUT" "$orca_log" 2>/dev/null && break; sleep 0.2; done
else
    : >"$orca_log"
fi

if [ -n "${A11Y_GTK_SETTINGS:-}" ]; then
    mkdir -p "$demo/config/gtk-3.0"
    printf '[Settings]\n%s\n' "$A11Y_GTK_SETTINGS" >"$demo/config/gtk-3.0/settings.ini"
fi
(
    export XDG_CONFIG_HOME="$demo/config"
    # The walk's session bus could start a keyring, whose first use asks on the screen for a
    # keyring password; the demo's password stays in its store.
    export QUELLBOTE_NO_KEYRING=1
    export QT_QPA_PLATFORM=xcb QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 QT_ACCESSIBILITY=1
    [ "$(id -u)" -eq 0 ] && export QTWEBENGINE_DISABLE_SANDBOX=1
    [ "${A11Y_WEBENGINE:-0}" = 1 ] && export QTWEBENGINE_ENABLE_LINUX_ACCESSIBILITY=1
    exec "$demo/quellbote" >"$out/client.log" 2>&1
) &
pids+=($!)
client_pid=$!
disown $!

# Helpers for the scenario.
mark_line=0
tree() { /usr/bin/python3 "$root/scripts/a11y-tree.py" "$@"; }
step() { printf '\n### %s\n' "$*"; }
key() {
    xdotool key --clearmodifiers --delay 150 "$@"
    sleep "${A11Y_PAUSE:-0.8}"
}
typetext() {
    xdotool type --delay 60 "$*"
    sleep "${A11Y_PAUSE:-0.8}"
}
mark() { mark_line=$(wc -l <"$orca_log"); }
heard() {
    sleep 0.3
    # Each utterance, also one that runs over several lines; Orca's echo of a key ("'Tab '")
    # becomes a marker, so that each utterance stands after the key that caused it.
    tail -n +"$((mark_line + 1))" "$orca_log" | awk '
        function flush() {
            if (!have) return
            sub(/\047 *\{\047established.*$/, "\047", text)
            if (length(text) <= 20 && text ~ /^\047[^ .\047]+( links| rechts)? \047$/) {
                gsub(/^\047| *\047$/, "", text)
                print "  [key " text "]"
            } else
                print "SPEECH OUTPUT: " text
            have = 0
        }
        function ends(line) { return line ~ /\047 *\{\047established/ || line ~ /\047 *$/ }
        /SPEECH OUTPUT: / { flush(); sub(/^.*SPEECH OUTPUT: /, ""); text = $0; have = 1; open = !ends($0); next }
        open { text = text " / " $0; open = !ends($0); next }
        { flush() }
        END { flush() }'
    mark
}
activate() {
    # The last window of that title that is shown: a window that came up later over an older
    # one of the same title (the news over the main window) is meant.
    local id
    id=$(timeout 10 xdotool search --sync --onlyvisible --name "^$1\$" | tail -n 1) || {
        echo "(no window titled '$1')"
        return 1
    }
    xdotool windowactivate --sync "$id" 2>/dev/null || xdotool windowfocus --sync "$id"
    sleep "${A11Y_PAUSE:-0.8}"
}
shot() { xwd -root -silent >"$out/$1.xwd"; }
default_walk() {
    step "Tree of the main window"
    tree dump --depth 3
    step "Tab through the main window"
    mark
    # The number field keeps the focus while it holds no number.
    key Tab Tab
    typetext 1712345
    for _ in $(seq 1 12); do key Tab; done
    heard
}

tree wait "=Quellbote" --timeout 60 >/dev/null || true
sleep 2
activate Quellbote || true
mark
# A step that fails is reported and the walk goes on.
set +e
if [ "${1:-}" = "-c" ]; then
    eval "$2"
else
    source "$1"
fi
kill -0 "$client_pid" 2>/dev/null || echo "(the client has ended; its output: $out/client.log)"
