#!/bin/bash
# Runs a 32-bit Windows program:
#
#   tools/wine.sh PROGRAM [ARGUMENT...]   the program's output and exit code become this script's
#   tools/wine.sh --prepare               gets Wine and a display ready, runs nothing
#   tools/wine.sh --home                  prints the folder that programs may write to
#   tools/wine.sh --display               prints the display in use, once prepared
#   tools/wine.sh --stop                  ends the Wine server and the display that this script started
#
# A system Wine that can run 32-bit programs is used when there is one. Otherwise a small i386 Debian with Wine is made
# once, below ~/.cache/jobrunner, and kept; the source tree appears in it under its own path. Everything that Wine
# writes is kept in one folder for each source tree, outside of it.
set -euo pipefail

tree=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)
cache=${XDG_CACHE_HOME:-$HOME/.cache}/jobrunner
root=$cache/i386
home=${JOBRUNNER_WINE_HOME:-$cache/wine-$(cksum <<<"$tree" | cut -d' ' -f1)}
as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)

export WINEPREFIX=$home/prefix WINEDEBUG=${WINEDEBUG:--all}

say() { echo "Wine: $*" >&2; }
fail() { say "$*"; exit 1; }

# --- The i386 root -----------------------------------------------------------------------------------------------

debian_mirror() {
    local codename=$1
    apt-get indextargets --format '$(SITE) $(RELEASE) $(COMPONENT)' 'Identifier: Packages' |
        awk -v release="$codename" '$2 == release && $3 == "main" && !found { print $1; found = 1 }'
}

# in_root ROOT USER:GROUP FOLDER... -- COMMAND...
in_root() {
    "${as_root[@]}" unshare --mount "$tree/tools/in_i386_root.sh" "$@"
}

remove_root() {
    # What is mounted inside would be removed with it.
    if grep -q " $1/" /proc/self/mountinfo; then fail "something is mounted in $1: unmount it first."; fi
    "${as_root[@]}" rm -rf "$1"
}

make_root() {
    local codename mirror part=$root.part log=$cache/i386.log
    codename=$(. /etc/os-release && echo "${VERSION_CODENAME:-}")
    mirror=$(debian_mirror "$codename")
    [ -n "$mirror" ] || fail "no Debian mirror for '$codename' among this machine's apt sources."
    command -v debootstrap >/dev/null || fail "debootstrap is missing: run tools/install_packages.sh."

    say "making an i386 root in $root (once, about 1.4 GB)"
    mkdir -p "$cache"
    remove_root "$part"
    "${as_root[@]}" debootstrap --arch=i386 --variant=minbase "$codename" "$part" "$mirror" >"$log" 2>&1 ||
        fail "debootstrap failed, see $log"
    "${as_root[@]}" cp /etc/resolv.conf "$part/etc/resolv.conf"
    { apt-config dump | grep -i proxy || true; } | "${as_root[@]}" tee "$part/etc/apt/apt.conf.d/90proxy" >/dev/null
    if [ -e /etc/ssl/certs/ca-certificates.crt ]; then
        "${as_root[@]}" install -D /etc/ssl/certs/ca-certificates.crt "$part/etc/ssl/certs/ca-certificates.crt"
    fi
    in_root "$part" 0:0 -- sh -c 'apt-get update &&
        DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends wine wine32' \
        </dev/null >>"$log" 2>&1 || fail "installing Wine failed, see $log"
    "${as_root[@]}" touch "$part/.ready"
    remove_root "$root"
    "${as_root[@]}" mv "$part" "$root"
    say "the i386 root is ready"
}

# --- One command line for both kinds ------------------------------------------------------------------------------

in_wine() {
    if [ "$(cat "$home/kind")" = system ]; then
        "$@"
        return
    fi
    in_root "$root" "$(id -u):$(id -g)" "$tree" "$home" /tmp/.X11-unix -- \
        env HOME="$home" WINEARCH=win32 WINEPREFIX="$WINEPREFIX" WINEDEBUG="$WINEDEBUG" WINEPATH="${WINEPATH:-}" \
        WINEDLLOVERRIDES="${WINEDLLOVERRIDES:-}" DISPLAY="${DISPLAY:-}" XAUTHORITY="${XAUTHORITY:-}" \
        JOBRUNNER_PROGRAM="${JOBRUNNER_PROGRAM:-}" JOBRUNNER_SCREENSHOTS="${JOBRUNNER_SCREENSHOTS:-}" \
        JOBRUNNER_CONCURRENCY_SECONDS="${JOBRUNNER_CONCURRENCY_SECONDS:-}" JOBRUNNER_SOAK_SEED="${JOBRUNNER_SOAK_SEED:-}" \
        GTEST_TOTAL_SHARDS="${GTEST_TOTAL_SHARDS:-1}" GTEST_SHARD_INDEX="${GTEST_SHARD_INDEX:-0}" \
        PATH=/usr/bin:/bin "$@"
}

system_wine_runs_32_bit() {
    command -v wine >/dev/null && command -v i686-w64-mingw32-g++-posix >/dev/null || return 1
    local probe=$home/probe.exe code=0
    echo 'int main() { return 7; }' | i686-w64-mingw32-g++-posix -static -x c++ -o "$probe" -
    wine "$probe" >/dev/null 2>&1 || code=$?
    rm -rf "$probe" "$WINEPREFIX"
    [ $code -eq 7 ]
}

choose_kind() {
    [ -e "$home/kind" ] && return
    if system_wine_runs_32_bit; then echo system >"$home/kind"; else echo root >"$home/kind"; fi
    say "using $([ "$(cat "$home/kind")" = system ] && echo "the system's Wine" || echo "Wine in $root")"
}

# --- Display --------------------------------------------------------------------------------------------------------

display_answers() {
    local number=${1#*:}
    [[ $1 == :* ]] && grep -q "/tmp/.X11-unix/X${number%%.*}\$" /proc/net/unix
}

prepare_display() {
    if [ -n "${DISPLAY:-}" ] && display_answers "$DISPLAY"; then
        if [ -r "${XAUTHORITY:-$HOME/.Xauthority}" ]; then
            cp "${XAUTHORITY:-$HOME/.Xauthority}" "$home/.Xauthority"
            export XAUTHORITY=$home/.Xauthority
        fi
        return
    fi
    if [ -s "$home/display" ] && display_answers ":$(cat "$home/display")"; then
        export DISPLAY=:$(cat "$home/display")
        return
    fi
    command -v Xvfb >/dev/null || fail "Xvfb is missing: run tools/install_packages.sh."
    : >"$home/display"
    setsid Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp 3>"$home/display" >/dev/null 2>&1 9>&- &
    echo $! >"$home/xvfb.pid"
    for _ in $(seq 100); do
        [ -s "$home/display" ] && break
        sleep 0.1
    done
    [ -s "$home/display" ] || fail "Xvfb did not start"
    export DISPLAY=:$(cat "$home/display")
    say "virtual display $DISPLAY"
}

# --- Prefix ---------------------------------------------------------------------------------------------------------

# Windows get their captions, and close at once, in a virtual desktop only.
make_prefix() {
    say "making a fresh prefix in $WINEPREFIX"
    WINEDLLOVERRIDES="mscoree=;mshtml=" in_wine wine wineboot --init
    in_wine wine reg add 'HKCU\Software\Wine\Explorer' /v Desktop /d Default /f
    in_wine wine reg add 'HKCU\Software\Wine\Explorer\Desktops' /v Default /d 1024x768 /f
    # A crash ends the program at once instead of waiting in a window.
    in_wine wine reg add 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\AeDebug' /v Debugger /d false /f
    in_wine wineserver -w
    touch "$home/prefix.ready"
}

prepare() {
    mkdir -p "$home"
    exec 9>"$home/lock"
    flock 9
    choose_kind
    if [ "$(cat "$home/kind")" = root ] && [ ! -e "$root/.ready" ]; then make_root; fi
    prepare_display
    # Files, not pipes: the prefix's own background processes keep what they inherit.
    if [ ! -e "$home/prefix.ready" ]; then make_prefix </dev/null >"$home/prefix.log" 9>&-; fi
    in_wine wineserver -p </dev/null >/dev/null 2>&1 9>&- || true
    exec 9>&-
}

stop() {
    [ -e "$home/kind" ] || return 0
    in_wine wineserver -k >/dev/null 2>&1 || true
    if [ -s "$home/xvfb.pid" ]; then
        local process
        process=$(cat "$home/xvfb.pid")
        if [ "$(cat "/proc/$process/comm" 2>/dev/null)" = Xvfb ]; then kill "$process"; fi
    fi
    rm -f "$home/xvfb.pid" "$home/display"
    say "stopped"
}

run_program() {
    local output code=0
    output=$(mktemp "$home/output.XXXXXX")
    in_wine wine "$@" </dev/null >"$output" 2>&1 &
    local program=$!
    tail -n +1 -s 0.05 -f --pid=$program "$output"
    wait $program || code=$?
    rm -f "$output"
    return $code
}

case ${1:-} in
    "") fail "no program is named" ;;
    --home) mkdir -p "$home"; echo "$home" ;;
    --prepare) prepare; say "ready" ;;
    --display) cat "$home/display" ;;
    --stop) stop ;;
    *) prepare; run_program "$@" ;;
esac
