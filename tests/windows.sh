#!/usr/bin/env bash
# Builds the programs for Windows, and runs them and their tests under wine, in a prefix that is thrown away.
# Prints what fails, and one line at the end when nothing did.
set -euo pipefail
cd "$(dirname "$0")/.."
export CCACHE_NOHASHDIR=1 LC_ALL=C.UTF-8
root=$PWD
bin=$PWD/build/windows/bin
native=$PWD/build/cli/bin
work=$(mktemp -d)
# shellcheck source=tests/support/wine.sh
source tests/support/wine.sh
unset DISPLAY
started=()

leave() {
    [ ${#started[@]} -eq 0 ] || kill "${started[@]}" 2>/dev/null || true
    end_wine
    umount -l "$work/disk" 2>/dev/null || true
    rm -rf "$work" || true
}
trap leave EXIT

fail() {
    printf '%s\n' "$@" >&2
    exit 1
}

# quietly COMMAND...: prints what it said only when it failed.
quietly() {
    "$@" >"$work/said" 2>&1 || {
        cat "$work/said" >&2
        fail "This failed: $*"
    }
}

# == Build

quietly cmake --preset cli
quietly cmake --build --preset cli --target burnwick-cli burnwick-sample burnwick-unit null_modem
packaging/windows/qt.sh build/windows-qt
quietly cmake --preset windows
quietly cmake --build --preset windows
quietly tests/windows_tidy.sh
mkdir -p build/windows/pictures

# needs_windows_alone PROGRAM: Windows' own libraries, and no other. What they are called there never changes.
needs_windows_alone() {
    local foreign
    foreign=$(x86_64-w64-mingw32-objdump -p "$bin/$1" | sed -n 's/^\tDLL Name: //p' | grep -viE "^($windows_own)\.(dll|drv)$" \
        || true)
    [ -z "$foreign" ] || fail "$1 needs what Windows does not have: $foreign"
}
windows_own='advapi32|api-ms-win-core-(synch|winrt|winrt-string)-l[0-9]-[0-9]-[0-9]|authz|comctl32|comdlg32|d3d9|d3d11|dnsapi|dwmapi|dwrite|dxgi|gdi32|imm32|iphlpapi|kernel32|mpr'
windows_own+='|msvcrt|netapi32|ole32|oleaut32|setupapi|shcore|shell32|shlwapi|user32|userenv|uxtheme|version|winhttp|winmm|winspool|ws2_32|wtsapi32'
needs_windows_alone burnwick-cli.exe
needs_windows_alone Burnwick.exe

# start_with_line LINK COMMAND...: starts it in the background, and waits for its line.
start_with_line() {
    local link=$1 i
    shift
    "$@" >"$link.log" 2>&1 &
    started+=($!)
    for ((i = 0; i < 100; i++)); do
        [ ! -e "$link" ] || return 0
        sleep 0.1
    done
    fail "No line: $*" "$(cat "$link.log")"
}

# == Tests

# Two units, one of them as slow as a real line, and a cable between two ports for the tests of a line.
start_with_line "$work/line" "$native/burnwick-unit" --link "$work/line" --flash "$work/memory"
start_with_line "$work/slow" "$native/burnwick-unit" --link "$work/slow" --pace
slow_unit=${started[-1]}
start_with_line "$work/near" "$native/null_modem" "$work/near" "$work/far"

# The prefix has links into the home of whoever runs this: links that the tests make are to lie on no one's desktop.
export HOME=$work/user
unset XDG_CONFIG_HOME XDG_DATA_HOME XDG_DESKTOP_DIR
mkdir "$HOME" "$HOME/Desktop"
prepare_wine "$work/prefix"
# Windows that nobody sees need no display.
tell_wine 'HKCU\Software\Wine\Drivers' Graphics null
tell_wine 'HKLM\Software\Wine\Ports' COM1 "$work/line"
tell_wine 'HKLM\Software\Wine\Ports' COM2 "$work/slow"
tell_wine 'HKLM\Software\Wine\Ports' COM7 "$work/near"
tell_wine 'HKLM\Software\Wine\Ports' COM12 "$work/far"
start_wine
export BURNWICK_LINE=COM7,COM12 BURNWICK_UNIT_PORT=COM1
BURNWICK_UNIT_FLASH=$(windows_path "$work/memory")
export BURNWICK_UNIT_FLASH
# What is no device is denied in the words that a driver has for a port that is taken.
ln -s "$work" "$WINEPREFIX/dosdevices/com9"
export BURNWICK_DENIED=COM9

# Whoever may mount shows the tests a program on a disk that cannot be written.
if mkdir "$work/disk" && mount -t tmpfs -o size=50m none "$work/disk" 2>/dev/null; then
    cp "$bin/windows_child.exe" "$work/disk"
    mount -o remount,ro "$work/disk"
    BURNWICK_READ_ONLY_FOLDER=$(windows_path "$work/disk")
    export BURNWICK_READ_ONLY_FOLDER
fi

# run_tests PROGRAM: in a folder of its own.
run_tests() {
    local name
    name=$(basename "$1" .exe)
    mkdir "$work/$name"
    cd "$work/$name"
    if ! timeout 900 wine "$1" --gtest_brief=1 >log 2>&1 </dev/null; then
        printf '== %s\n' "$name" | cat - log >&2
        return 1
    fi
}
# in_turn PROGRAM...: all of them, whatever one of them says.
in_turn() {
    local program bad=0
    for program in "$@"; do
        (run_tests "$program") || bad=1
    done
    return "$bad"
}
# Programs with windows share one desktop and one clipboard: one of them at a time, the others beside them.
programs=("$bin"/*_tests.exe) on_desktop=() others=()
for program in "${programs[@]}"; do
    case $(basename "$program") in
    frm* | PercentBar* | *gui_tests.exe | windows_platform*) on_desktop+=("$program") ;;
    *) others+=("$program") ;;
    esac
done
in_turn "${others[@]}" &
rest=$! bad=0
in_turn "${on_desktop[@]}" || bad=1
wait "$rest" || bad=1
[ "$bad" -eq 0 ] || fail "Tests failed under wine."

# In a language whose programs write other 8-bit characters.
mkdir "$work/locales"
localedef -i ru_RU -f UTF-8 "$work/locales/ru_RU.UTF-8"
in_russian() {
    LOCPATH=$work/locales LC_ALL=ru_RU.UTF-8 timeout 300 wine "$bin/$1.exe" --gtest_brief=1 --gtest_filter="$2" </dev/null
}
[ "$(LOCPATH=$work/locales LC_ALL=ru_RU.UTF-8 wine "$bin/windows_child.exe" code-page | tr -d '\r')" = 1251 ] \
    || fail "wine does not know the language."
quietly in_russian windows_platform_tests 'EightBit*:*Settings*:*Command*:*Assoc*'
quietly in_russian log_tests 'LogText*'

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
alike info missing.bin
alike download sample.bin --port COM17
alike frobnicate
"$native/burnwick-cli" info -- *.bin >native.out
cli info '*.bin' >windows.out || fail "burnwick-cli.exe finds no files of *.bin."
diff native.out windows.out >&2 || fail "burnwick-cli.exe info *.bin says something else."

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
for ((i = 0; i < 300; i++)); do
    ! grep -qF 'Sending data to the unit...' run.out || break
    sleep 0.1
done
grep -qF 'Sending data to the unit...' run.out || fail "The run at a slow line does not begin:" "$(cat run.out run.err)"
kill -KILL "$slow_unit"
status=0
wait "$run" || status=$?
[ "$status" = 2 ] || fail "A run whose line is gone ended with $status:" "$(cat run.out run.err)"

# == The window, on a screen

"$root/tests/gui/windows/window.sh" "$bin/Burnwick.exe" "$native/burnwick-unit" "$native/burnwick-sample" \
    || fail "The window fails its user."

# == Installing and removing

cd "$root"
quietly tests/windows_setup.sh

echo "${#programs[@]} test programs, the command line and the window ran under wine."
