#!/usr/bin/env bash
# command_line.sh: compares burnwick-cli.exe under wine with this system's own, and has it program, read and verify
# simulated units. Prints what fails, and one line at the end when nothing did.
# shellcheck source=tests/windows/trial.sh
source "$(dirname "$0")/trial.sh"

start_unit "$work/line"
start_unit "$work/slow" --pace
slow_unit=${started[-1]}
start_windows COM1 "$work/line" COM2 "$work/slow"
ln -s "$work" "$WINEPREFIX/dosdevices/com9"

# == The command line, beside this system's own

cd "$work"
export BURNWICK_HOME=$work/home
cli() {
    timeout 300 wine "$bin/burnwick-cli.exe" "$@" </dev/null
}

# alike ARGUMENT...: both programs print the same, and end with the same status.
alike() {
    local status=0 other=0
    "$native/burnwick-cli" "$@" >native.out 2>native.err </dev/null || status=$?
    cli "$@" >windows.out 2>windows.err || other=$?
    [ "$status" = "$other" ] || fail "burnwick-cli.exe $* ended with $other instead of $status." "$(cat windows.err)"
    if ! diff native.out windows.out >&2 || ! diff native.err windows.err >&2; then
        fail "burnwick-cli.exe $* says something else."
    fi
}

"$native/burnwick-sample" sample.bin
mkdir 'образы 映像'
cp sample.bin 'образы 映像/größe €.bin'
cp sample.bin changed.bin
printf 'x' | dd of=changed.bin bs=1 seek=300000 conv=notrunc status=none
alike --version
alike --help
alike info sample.bin
alike info --json 'образы 映像/größe €.bin'
alike compare sample.bin 'образы 映像/größe €.bin'
alike compare sample.bin changed.bin
alike compare --json sample.bin changed.bin
# Longer than the 260 characters that were once the most.
deep=$(printf 'a folder of thirty characters %d/' {1..9})
mkdir -p "$deep"
cp sample.bin "$deep"
alike info "${deep}sample.bin"
alike compare sample.bin "${deep}sample.bin"
alike info missing.bin
alike download sample.bin --port COM17
alike frobnicate
"$native/burnwick-cli" info -- *.bin >native.out
cli info '*.bin' >windows.out || fail "burnwick-cli.exe finds no files of *.bin."
diff native.out windows.out >&2 || fail "burnwick-cli.exe info *.bin says something else."

# == The ports

# The computer that runs this may have more of them.
mkdir -p home
printf '[Ports]\r\nCOM6=COM2\r\n' >home/Burnwick.ini
cli ports --json >ports.json
python3 - >ports.txt <<'END'
import json
for port in json.load(open("ports.json")):
    if port["port"] in ("COM1", "COM2", "COM6") or int(port["port"][3:]) > 16:
        print(port["port"], port["device"], port["usable"])
END
same "The ports" $'COM1 \\\\.\\COM1 True\nCOM2 \\\\.\\COM2 True\nCOM6 COM2 True' "$(cat ports.txt)"

# == A unit

# expect_run ARGUMENT...: a run that succeeds.
expect_run() {
    cli "$@" >run.out 2>run.err || fail "burnwick-cli.exe $* failed:" "$(cat run.out run.err)"
}

for baud in 57600 115200; do
    expect_run download sample.bin --port COM1 --baud "$baud" --verify
    grep -qxF 'Verifying was successfully.' run.out || fail "The verification says:" "$(cat run.out)"
done
expect_run upload 'образы 映像/back.bin' --port COM1 --chip 4Mbit
cmp sample.bin 'образы 映像/back.bin' >&2 || fail "What was read back is not the image."
grep -q sample.bin home/Burnwick.log || fail "The log does not tell of the run."

# refused TEXT ARGUMENT...: a run that does not come about.
refused() {
    local status=0
    cli "${@:2}" >run.out 2>run.err || status=$?
    if [ "$status" != 5 ] || ! grep -qF "$1" run.err; then
        fail "burnwick-cli.exe ${*:2} ended with $status instead of 5:" "$(cat run.out run.err)"
    fi
}
refused 'COM9 is in use by another program (' download sample.bin --port COM9
refused 'COM5: no such device: is the adapter plugged in?' download sample.bin --port COM5
refused 'COM77: no such device: is the adapter plugged in?' download sample.bin --port '\\.\COM77'
refused 'is not a serial port' download sample.bin --port ./sample.bin

# The adapter is pulled out of a run that would have taken most of a minute.
cli download sample.bin --port COM2 >run.out 2>run.err &
run=$!
await "A slow run" grep -qF 'Sending data to the unit...' run.out
{ kill -KILL "$slow_unit" && wait "$slow_unit"; } 2>/dev/null || true
status=0
wait "$run" || status=$?
[ "$status" = 2 ] || fail "A run whose line is gone ended with $status:" "$(cat run.out run.err)"

echo "The command line for Windows ran under wine."
