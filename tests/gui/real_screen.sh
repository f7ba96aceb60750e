#!/usr/bin/env bash
# Sourced, before all else but wine, by what uses the programs on a real X server with a window manager, and looks at them from
# outside only: SCRIPT PROGRAM UNIT SAMPLE ... Each behaviour is a function; it has a shell, a home and simulated units of
# its own, and the folder $station.
set -euo pipefail

if [ "${BURNWICK_SCREEN-}" != own ]; then
    # Nothing of the user's own desktop is seen, or touched.
    exec env -i BURNWICK_SCREEN=own PATH="$PATH" TMPDIR="${TMPDIR-/tmp}" LC_ALL=C.UTF-8 TZ=UTC \
        ${SECOND_COPY_LIMIT+SECOND_COPY_LIMIT="$SECOND_COPY_LIMIT"} ${ASAN_OPTIONS+ASAN_OPTIONS="$ASAN_OPTIONS"} \
        bash "$0" "$@"
fi

burnwick=$(realpath "$1") burnwick_unit=$(realpath "$2") burnwick_sample=$(realpath "$3")
shift 3
# Seconds until something that should come is given up.
patience=20

LSAN_OPTIONS=suppressions=$(dirname "$(realpath "$0")")/lsan.supp:print_suppressions=0
# What is checked is checked under X.
QT_QPA_PLATFORM=xcb
# The computer that runs the tests may go to sleep.
DBUS_SYSTEM_BUS_ADDRESS=unix:path=/nowhere
export LSAN_OPTIONS QT_QPA_PLATFORM DBUS_SYSTEM_BUS_ADDRESS

# == What is expected, and what is found

# Behind a behaviour that failed: what is on the screen, and what the program has said.
complain() {
    local pictures picture
    pictures=$(dirname "$(dirname "$burnwick")")/pictures
    picture=$(basename "$0" .sh)_failure.png
    mkdir -p "$pictures"
    import -window root "$pictures/$picture" || true
    printf '%s\n' "$@" "  on the screen: $pictures/$picture"
    if [ -s "$station/program.log" ]; then
        echo "  the program said:"
        head -n 200 "$station/program.log"
    fi
    exit 1
}

# expect WHAT PATTERN COMMAND...: what the command prints comes to match the pattern. It is in $found then.
expect() {
    local what=$1 pattern=$2 limit=$((SECONDS + patience))
    shift 2
    while true; do
        found=$("$@" 2>/dev/null) || true
        # shellcheck disable=SC2053
        [[ $found != $pattern ]] || return 0
        [ "$SECONDS" -lt "$limit" ] || complain "  $what" "    expected: $pattern" "    found:    $found"
        sleep 0.02
    done
}

# expect_success WHAT COMMAND...
expect_success() {
    local what=$1
    shift
    expect "$what" yes answer "$@"
}

answer() {
    if "$@" >/dev/null; then echo yes; else echo no; fi
}

has_ended() {
    ! kill -0 "$1"
}

# expect_end PROCESS STATUS
expect_end() {
    local status=0
    expect_success "process $1 has ended" has_ended "$1"
    wait "$1" || status=$?
    [ "$status" = "$2" ] || complain "  exit status" "    expected: $2" "    found:    $status"
}

# == Units, and the program

# start_unit NAME OPTION...: a unit at the line $station/NAME, with the memory $station/NAME.flash; its process is
# $unit.
# shellcheck disable=SC2034
start_unit() {
    local name=$1
    shift
    "$burnwick_unit" --link "$station/$name" --flash "$station/$name.flash" "$@" >"$station/$name.log" 2>&1 &
    unit=$!
    expect_success "a unit at $name" test -e "$station/$name"
}

# An unpaced unit is programmed in a second or two.
start_fast_unit() {
    "$burnwick_sample" "$station/image.bin"
    start_unit line --size 524288
}

# A paced one takes twelve for this image, and nothing but its pace makes that time.
start_slow_unit() {
    "$burnwick_sample" "$station/image.bin" --type 64k
    start_unit line --size 65536 --pace
}

# start_program ARGUMENT...: its process is $program, its window $window.
start_program() {
    start_copy "$@"
    program=$copy
    expect "a window of the program" '[0-9]*' windows_of "$program" '^Burnwick'
    window=$found
    expect "the active window" "$window" xdotool getactivewindow
}

start_copy() {
    "$burnwick" "$@" >>"$station/program.log" 2>&1 </dev/null &
    copy=$!
}

# windows_of PROCESS NAME
windows_of() {
    xdotool search --onlyvisible --all --pid "$1" --name "$2"
}

# setting SECTION KEY
setting() {
    tr -d '\r' <"$BURNWICK_HOME/Burnwick.ini" | awk -v section="[$1]" -v key="$2=" '
        /^\[/ { inside = $0 == section }
        inside && index($0, key) == 1 { print substr($0, length(key) + 1) }'
}

# == What the user does, and what can be seen from outside

expect_programmed() {
    expect "the caption at the end" 'Burnwick - Programming was completed successfully' caption_of "${1-$window}"
}

expect_sending() {
    expect "the mark of a programming" Yes setting Status Programming
}

# By its own command; what it keeps in memory then is told by those builds that look for it.
leave_program() {
    activate "$window"
    xdotool key alt+q
    expect_end "$program" 0
}

# look_elsewhere: the user works in another window.
look_elsewhere() {
    if [ -z "$elsewhere" ]; then
        xev -name Elsewhere >/dev/null 2>&1 &
        expect "another window" '[0-9]*' xdotool search --onlyvisible --name '^Elsewhere$'
        elsewhere=$found
    fi
    activate "$elsewhere"
}

activate() {
    xdotool windowactivate "$1"
    expect "the active window" "$1" xdotool getactivewindow
}

# property WINDOW NAME
property() {
    xprop -id "$1" -notype "$2"
}

caption_of() {
    property "$1" _NET_WM_NAME | sed 's/^[^"]*"//; s/"$//'
}

log_lines() {
    tr -d '\r' <"$BURNWICK_HOME/Burnwick.log" | grep "$1"
}

# == Screen, bus, and one behaviour after the other

# Ends all that this shell has started. A behaviour ends what it has started by itself.
end_all() {
    if [ -n "$running" ]; then
        kill -TERM "$running" 2>/dev/null || true
        wait "$running" || true
    fi
    # shellcheck disable=SC2046
    kill -KILL $(jobs -p) 2>/dev/null || true
    wait 2>/dev/null || true
}

# Each behaviour has a shell and a home of its own.
run_behaviour() {
    running=
    trap end_all EXIT
    trap 'exit 130' INT TERM HUP
    mkdir -p "$station"/{home,config,data}
    mkdir -m 700 "$station/run"
    export HOME=$station/home BURNWICK_HOME=$station/home XDG_CONFIG_HOME=$station/config
    export XDG_DATA_HOME=$station/data XDG_RUNTIME_DIR=$station/run
    first_settings >"$BURNWICK_HOME/Burnwick.ini"
    "$1"
}

first_settings() {
    printf '%s\n' '[Ports]' "COM1=$station/line" "COM2=$station/line2" '' '[COMPort]' COM=1 BaudRate=1
}

# start_bus NAME: one that starts nothing by itself. Its address is in $found then.
start_bus() {
    cat >"$work/$1.conf" <<END
<busconfig>
  <type>session</type>
  <listen>unix:dir=$work</listen>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
END
    dbus-daemon --config-file="$work/$1.conf" --nofork --print-address=3 3>"$work/$1.address" >"$work/$1.log" 2>&1 &
    expect "the bus $1" 'unix:*' cat "$work/$1.address"
}

# Everything started from here on is on this screen, and on this bus.
start_screen() {
    mkdir -p "$work"/{home,config,data}
    mkdir -m 700 "$work/run"
    export HOME=$work/home XDG_CONFIG_HOME=$work/config XDG_DATA_HOME=$work/data XDG_RUNTIME_DIR=$work/run

    Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp -noreset 3>"$work/display" >"$work/screen.log" 2>&1 &
    expect "a screen" '[0-9]*' cat "$work/display"
    export DISPLAY=:$found
    openbox >"$work/openbox.log" 2>&1 &
    expect "a window manager" '*window id*' xprop -root _NET_SUPPORTING_WM_CHECK
    start_bus session
    export DBUS_SESSION_BUS_ADDRESS=$found
}

# run_behaviours NAME...: prints one line a behaviour, or, with $only_failures, one for each that failed; ends with 0
# when there is none.
run_behaviours() {
    local behaviour begun took status failed=0 number=0
    for behaviour in "$@"; do
        number=$((number + 1))
        station=$work/$number
        begun=${EPOCHREALTIME/./}
        status=0
        mkdir "$station"
        run_behaviour "$behaviour" &
        running=$!
        wait "$running" || status=$?
        running=
        took=$(((${EPOCHREALTIME/./} - begun) / 1000))
        if [ "$status" -eq 0 ]; then
            [ -n "${only_failures-}" ] || printf 'ok      %5d ms  %s\n' "$took" "$behaviour"
        else
            printf 'FAILED  %5d ms  %s\n' "$took" "$behaviour"
            failed=1
        fi
    done
    return "$failed"
}

running=
elsewhere=
work=$(mktemp -d)
station=$work
trap 'end_all; rm -rf "$work"' EXIT
trap 'exit 130' INT TERM HUP
