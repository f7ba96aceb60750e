# shellcheck shell=bash disable=SC2034
# Sourced by what tries the programs for Windows: a folder $work that goes away at the end, with a user's home and a wine
# prefix in it, simulated units, and words for what failed. $bin has the programs, $native this system's own.
set -euo pipefail
# shellcheck source=tests/support/wine.sh
source "$(dirname "${BASH_SOURCE[0]}")/../support/wine.sh"
export LC_ALL=C.UTF-8
root=$(realpath "$(dirname "${BASH_SOURCE[0]}")/../..")
bin=$root/build/windows/bin
native=$root/build/cli/bin
# On a disk, whatever TMPDIR says: memory has not room for several Windows on every machine.
work=$(TMPDIR=/tmp mktemp -d)
log=$work/said
# shellcheck source=tests/support/steps.sh
source "$root/tests/support/steps.sh"
# Windows that nobody sees need no display, and no one's desktop gets links that are made here: wine has links into the
# home of whoever runs it.
unset DISPLAY WAYLAND_DISPLAY BURNWICK_HOME XDG_CONFIG_HOME XDG_DATA_HOME XDG_DESKTOP_DIR
export HOME=$work/user
mkdir "$HOME" "$HOME/Desktop"
started=()
# Seconds until something that should come is given up.
patience=60

leave() {
    [ ${#started[@]} -eq 0 ] || kill "${started[@]}" 2>/dev/null || true
    end_wine
    umount -l "$work/disk" 2>/dev/null || true
    rm -rf "$work" || true
}
trap leave EXIT
trap 'exit 130' INT TERM HUP

fail() {
    printf '%s\n' "$@" >&2
    exit 1
}
# await WHAT COMMAND...: until it succeeds.
await() {
    local what=$1 limit=$((SECONDS + patience))
    shift
    until "$@" >/dev/null 2>&1; do
        [ "$SECONDS" -lt "$limit" ] || fail "$what: waited for in vain."
        sleep 0.1
    done
}
# same WHAT EXPECTED FOUND
same() {
    [ "$2" = "$3" ] || fail "$1:" "expected: $2" "found:    $3"
}

# start_with_line LINK COMMAND...: starts it in the background, and waits for its line.
start_with_line() {
    local link=$1
    "${@:2}" >"$link.log" 2>&1 &
    started+=($!)
    await "The line of ${*:2}" test -e "$link"
}
# start_unit LINK OPTION...: a simulated unit behind that link.
start_unit() {
    start_with_line "$1" "$native/burnwick-unit" --link "$1" "${@:2}"
}

# small_disk SIZE WHAT: a disk at $work/disk. Not everyone may mount one, and then this is not tried: that is told.
small_disk() {
    mkdir "$work/disk"
    mount -t tmpfs -o "size=$1" none "$work/disk" 2>/dev/null || {
        echo "Not tried, as only root may mount a disk: $2"
        return 1
    }
}

# start_windows [PORT LINK]...: a wine without windows on a screen, and with these ports.
start_windows() {
    prepare_wine "$work/prefix"
    tell_wine 'HKCU\Software\Wine\Drivers' Graphics null
    while [ $# -gt 0 ]; do
        tell_wine 'HKLM\Software\Wine\Ports' "$1" "$2"
        shift 2
    done
    start_wine
}
