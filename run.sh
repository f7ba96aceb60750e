#!/usr/bin/env bash
# Shows the program at work without any hardware: describes a sample image, programs it into a simulated unit,
# verifies that, reads the unit back, compares, and shows the log's record. Ends with 0 only when all of it was right.
set -euo pipefail
cd "$(dirname "$0")"

case ${1-} in
'') ;;
--window)
    echo "The window is not there yet; ./run.sh shows the command line at work." >&2
    exit 64
    ;;
*)
    echo "Usage: ./run.sh" >&2
    exit 64
    ;;
esac

packaging/install-packages.sh

echo "Building (the first time takes a minute) ..."
build_log=$(mktemp)
work=$(mktemp -d)
unit=
finish() {
    if [ -n "$unit" ]; then
        kill "$unit" 2>/dev/null || true
        wait "$unit" 2>/dev/null || true
    fi
    rm -rf "$work" "$build_log"
}
trap finish EXIT
trap 'exit 130' INT TERM HUP
if ! { cmake --preset release && cmake --build --preset release --target burnwick-cli burnwick-unit burnwick-sample; } \
    >"$build_log" 2>&1; then
    cat "$build_log" >&2
    echo "The build failed." >&2
    exit 1
fi
bin=$PWD/build/release/bin
# Neither settings nor anything else of the user's is touched.
export BURNWICK_HOME=$work/home

echo "Making a sample image of 512 KiB ..."
"$bin/burnwick-sample" "$work/sample.bin"

echo "Starting a simulated unit on a pseudo-terminal ..."
"$bin/burnwick-unit" --link "$work/line" --flash "$work/flash.bin" >"$work/unit.log" &
unit=$!
for _ in $(seq 100); do
    [ -e "$work/line" ] && break
    sleep 0.1
done
if [ ! -e "$work/line" ]; then
    echo "The simulated unit did not start." >&2
    exit 1
fi

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
