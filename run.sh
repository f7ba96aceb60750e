#!/usr/bin/env bash
# Shows the program at work without any hardware, with a simulated unit on a pseudo-terminal.
# ./run.sh: describes a sample image, programs it, verifies that, reads the unit back, compares, and shows the log's
# record. Ends with 0 only when all of it succeeded.
# ./run.sh --window: opens the window, with the unit on COM1 and a sample image to choose.
# Installs the packages that the mode needs.
set -euo pipefail
cd "$(dirname "$0")"

case $#:${1-} in
0:) mode=commands ;;
1:--window) mode=window ;;
*)
    echo "Usage: ./run.sh [--window]" >&2
    exit 64
    ;;
esac
if [ "$mode" = window ] && [ -z "${DISPLAY-}${WAYLAND_DISPLAY-}" ]; then
    echo "There is no display for the window: neither DISPLAY nor WAYLAND_DISPLAY is set." >&2
    echo "Start it from a desktop session, or see the command line at work with ./run.sh." >&2
    exit 1
fi

if [ "$mode" = window ]; then
    packaging/install-packages.sh cli gui
else
    packaging/install-packages.sh cli
fi

bin=$PWD/build/release/bin
build_log=$(mktemp)
work=$(mktemp -d)
unit=
window=
finish() {
    local process
    # The window first: it tells the unit when a run is cut off.
    for process in $window $unit; do
        kill "$process" 2>/dev/null || true
        wait "$process" 2>/dev/null || true
    done
    rm -rf "$work" "$build_log"
}
trap finish EXIT
trap 'exit 130' INT TERM HUP
# Neither settings nor anything else of the user's is touched.
export BURNWICK_HOME=$work/home

# build TARGET...: the window, and Qt with it, only in the mode that shows it.
build() {
    local window=OFF
    [ "$mode" = commands ] || window=ON
    echo "Building (the first time takes a minute) ..."
    if ! { cmake --preset release "-DBURNWICK_WINDOW=$window" \
        && cmake --build --preset release --target burnwick-unit burnwick-sample "$@"; } \
        >"$build_log" 2>&1; then
        cat "$build_log" >&2
        echo "The build failed." >&2
        exit 1
    fi
}

make_sample() {
    echo "Making a sample image of 512 KiB ..."
    "$bin/burnwick-sample" "$1"
}

# start_unit OPTION...: on the line $work/line.
start_unit() {
    echo "Starting a simulated unit on a pseudo-terminal ..."
    "$bin/burnwick-unit" --link "$work/line" --flash "$work/flash.bin" "$@" >"$work/unit.log" &
    unit=$!
    for _ in $(seq 100); do
        [ ! -e "$work/line" ] || return 0
        sleep 0.1
    done
    echo "The simulated unit did not start." >&2
    exit 1
}

show_window() {
    local images=$work/images status=0
    build Burnwick
    mkdir "$images" "$BURNWICK_HOME"
    make_sample "$images/sample.bin"
    start_unit --pace
    # COM1 at 115200 bit/s; the file dialog begins where the image is.
    cat >"$BURNWICK_HOME/Burnwick.ini" <<END
[Ports]
COM1=$work/line

[COMPort]
COM=1
BaudRate=1

[Path]
LastPath=$images
END
    cat <<END

The window opens, with a simulated unit on COM1. Click Download, choose sample.bin, and watch it being programmed:
that takes 48 seconds, as on a real line. Quit, or Ctrl+C here, ends it all.
END
    # No desktop: one that has a launcher keeps it.
    mkdir "$work/config"
    echo "XDG_DESKTOP_DIR=\"\$HOME\"" >"$work/config/user-dirs.dirs"
    XDG_DATA_HOME=$work/data XDG_CONFIG_HOME=$work/config "$bin/Burnwick" &
    window=$!
    wait "$window" || status=$?
    window=
    return "$status"
}

show_commands() {
    build burnwick-cli
    make_sample "$work/sample.bin"
    start_unit
    echo
    echo "== burnwick-cli info sample.bin"
    "$bin/burnwick-cli" info "$work/sample.bin"
    echo
    echo "== burnwick-cli download sample.bin --verify"
    "$bin/burnwick-cli" download "$work/sample.bin" --port "$work/line" --baud 115200 --verify
    echo
    echo "== burnwick-cli upload readback.bin --chip 4Mbit"
    "$bin/burnwick-cli" upload "$work/readback.bin" --port "$work/line" --baud 115200 --chip 4Mbit
    echo
    echo "== burnwick-cli compare sample.bin readback.bin"
    "$bin/burnwick-cli" compare "$work/sample.bin" "$work/readback.bin"
    echo
    echo "== What the log has kept of both runs (Burnwick.log)"
    tr -d '\r' <"$BURNWICK_HOME/Burnwick.log"
    if ! cmp "$work/sample.bin" "$work/readback.bin"; then
        echo "What was read back is not what was programmed." >&2
        exit 1
    fi
    echo
    echo "A sample image of 524288 bytes was programmed into the simulated unit over a serial line at 115200 bit/s,"
    echo "verified, read back once more, and compared byte for byte: all of it is right."
}

"show_$mode"
