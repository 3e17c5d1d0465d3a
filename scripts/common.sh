#!/usr/bin/env bash
# Shared by run.sh, test.sh and the robustness scripts: installs what a fresh Debian 12 machine
# lacks, then configures and builds into build/ with two jobs.
set -euo pipefail

# openssl makes the certificates of the HTTPS tests; ICU transliterates what the gateway can't take;
# QtKeychain keeps the password in the desktop's keyring. The keyring tests run gnome-keyring in a
# D-Bus session of their own (dbus-run-session) and look into it with secret-tool; QtKeychain
# reaches it through libsecret.
QUELLBOTE_PACKAGES=(build-essential cmake qt6-base-dev qt6-webengine-dev qt6-httpserver-dev
    qt6-websockets-dev qt6-svg-dev qt6-translations-l10n libgl-dev xvfb xauth openssl libicu-dev
    libqt6sql6-sqlite qtkeychain-qt6-dev libsecret-1-0 gnome-keyring dbus libsecret-tools)
# For the fuzz harnesses (scripts/robustness.sh, fuzz/run.sh): clang and its libFuzzer runtime.
QUELLBOTE_FUZZ_PACKAGES=(clang-14 libclang-rt-14-dev)

install_missing_packages() {
    local missing=()
    for p in "${QUELLBOTE_PACKAGES[@]}" "$@"; do
        dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    echo "Installing: ${missing[*]}"
    local sudo=""
    [ "$(id -u)" -ne 0 ] && sudo="sudo"
    $sudo apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y --no-install-recommends "${missing[@]}"
}

configure_and_build() {
    local build_dir="$1"; shift
    cmake -S . -B "$build_dir" -DCMAKE_BUILD_TYPE=RelWithDebInfo "$@"
    cmake --build "$build_dir" -j2
}

# A clang tree with the fuzz harnesses and nothing else; the compiler is fixed when the tree is
# first configured.
configure_fuzz_tree() {
    local build_dir="$1"; shift
    CC=clang-14 CXX=clang++-14 cmake -S . -B "$build_dir" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
        -DQUELLBOTE_FUZZ=ON -DBUILD_TESTING=OFF "$@"
}

# An oem.inf at $2 that points all 17 addresses of the program at the service at $1, as a
# rebranded installation points them at its own server.
write_oem_inf() {
    local base="$1" file="$2" entry
    {
        printf '[URLs]\r\n'
        for entry in Homepage=/ Helppage=/hilfe/ SendSMS=/smsv3/smsv3.php CronSMS=/cronjob/send_repeat.php \
            EditCronSMS=/terminversand/deleteSMS.php Phonebook=/telefonbuch/telefonbuch.php \
            WebGroup=/sms/gruppenv2/gruppenv2.php BuyCredits=/sms/buyCredits.php CheckUser=/sms/checkUser.php \
            CreateUser=/sms/createUser.php 'SmsCount=/sms/count.php?email=' CheckVersion=/update/version \
            CheckInfo=/update/infoVersion AGB=/sms_agb/sms_agb.htm WebGroupDir=/sms/gruppenv2/ News=/news.htm \
            Update=/update/quellbote.exe; do
            printf '%s=%s%s\r\n' "${entry%%=*}" "$base" "${entry#*=}"
        done
    } >"$file"
}
