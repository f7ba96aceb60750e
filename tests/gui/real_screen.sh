#!/usr/bin/env bash
# Sourced, before all else but wine, by what uses the programs on a real X server with a window manager, and looks at
# them from outside only: SCRIPT PROGRAM UNIT SAMPLE ... Each behaviour is a function; it has a shell, a home and
# simulated units of its own, and the folder $station.
set -euo pipefail

if [ "${BURNWICK_SCREEN-}" != own ]; then
    # Nothing of the user's own desktop is seen, or touched.
    exec env -i BURNWICK_SCREEN=own PATH="$PATH" TMPDIR="${TMPDIR-/tmp}" LC_ALL=C.UTF-8 TZ=UTC \
        ${ASAN_OPTIONS+ASAN_OPTIONS="$ASAN_OPTIONS"} \
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

# expect WHAT PATTERN COMMAND...: what the command prints comes to be this, or to match it as a pattern. It is in $found
# then.
expect() {
    local what=$1 pattern=$2 limit=$((SECONDS + patience))
    shift 2
    while true; do
        found=$("$@" 2>/dev/null) || true
        # shellcheck disable=SC2053
        [[ $found != $pattern && $found != "$pattern" ]] || return 0
        [ "$SECONDS" -lt "$limit" ] || complain "  $what" "    expected: $pattern" "    found:    $found"
        sleep 0.02
    done
}

# comes PATTERN COMMAND...: within three seconds what it prints matches the pattern.
comes() {
    local limit=$((SECONDS + 3))
    # shellcheck disable=SC2053
    until [[ $("${@:2}" 2>/dev/null) == $1 ]]; do
        [ "$SECONDS" -lt "$limit" ] || return 1
        sleep 0.02
    done
}

# again PATTERN LOOK DEED...: does it until LOOK shows that it has had its effect. A key that comes while a window is
# being activated may be lost on a busy machine.
again() {
    local pattern=$1 look=$2 tries
    for ((tries = 0; tries < 10; tries++)); do
        "${@:3}"
        # shellcheck disable=SC2086
        ! comes "$pattern" $look || return 0
    done
    complain "  tried in vain: ${*:3}"
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

# It hears and says nothing until it is let go on.
hold_unit() {
    kill -STOP "$unit"
}

release_unit() {
    kill -CONT "$unit"
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

# windows_of PROCESS NAME: those of any process, when it is "-".
windows_of() {
    local of=(--pid "$1")
    [ "$1" != - ] || of=()
    xdotool search --onlyvisible --all "${of[@]}" --name "$2"
}

# program_path PATH: the program's name for a file.
program_path() {
    printf '%s' "$1"
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

# expect_elsewhere CAPTION: what the window tells a user who works in another one.
expect_elsewhere() {
    look_elsewhere
    expect "the caption for a user elsewhere" "$1" caption_of "$window"
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

# Every section and key, each once, however many copies have written them.
setting_names() {
    tr -d '\r' <"$BURNWICK_HOME/Burnwick.ini" | awk -F= '/^\[/ { section = $0 } /=/ { print section, $1 }' | sort
}

# close_by KEY...: it closes the window $found.
close_by() {
    activate "$found"
    again no "answer is_shown $found" press_in "$found" "$@"
}

is_shown() {
    xwininfo -id "$1" | grep IsViewable
}

# One that has just closed does not pass the key on to another.
press_in() {
    [ "$(xdotool getactivewindow)" != "$1" ] || xdotool key "${@:2}"
}

# == Behaviours on more than one system

its_caption_tells_a_user_elsewhere_how_far_the_run_has_come() {
    start_slow_unit
    hold_unit
    start_program "$(program_path "$station/image.bin")"
    expect_elsewhere 'Burnwick - [0-9]* seconds'
    release_unit
    expect "the percentage" 'Burnwick - [1-9]*%' caption_of "$window"
    activate "$window"
    expect "the caption for a user who is back" 'Burnwick - Programming image.bin...' caption_of "$window"
    expect_elsewhere 'Burnwick - [1-9]*%'
    end_program
}

# agree_to_verification PROCESS
agree_to_verification() {
    expect "the question for a verification" '[0-9]*' windows_of "$1" '^Verification$'
    close_by Return
}

no_verification_file() {
    ! compgen -G "$BURNWICK_HOME/Verify*.tmp"
}

a_second_copy_programs_and_verifies_another_unit_at_the_same_time() {
    local first first_window image image2
    image=$(program_path "$station/image.bin") image2=$(program_path "$station/image2.bin")
    start_unit line2 --size 65536 --pace
    start_slow_unit
    # Another image: its last bytes differ.
    { head -c 65500 "$station/image.bin" && printf '%036d' 2; } >"$station/image2.bin"

    start_program "$image"
    first=$program first_window=$window
    expect_sending
    sed -i -e 's/^COM=1/COM=2/' -e '/^Verify=/d' -e 's/^\[Options\].*/&\nVerify=1\r/' "$BURNWICK_HOME/Burnwick.ini"
    start_program "$image2"
    expect "the caption of the second" 'Burnwick - Programming image2.bin...' caption_of "$window"
    # The user is in the window of the second.
    expect "the caption of the first" 'Burnwick - *%' caption_of "$first_window"
    agree_to_verification "$first"
    agree_to_verification "$program"

    expect_programmed "$first_window"
    expect_programmed "$window"
    expect_success "the first unit holds its image" cmp "$station/image.bin" "$station/line.flash"
    expect_success "the second unit holds its image" cmp "$station/image2.bin" "$station/line2.flash"
    expect "both records" 'Status: Programming was completed successfully.
Status: Programming was completed successfully.' log_lines ^Status
    expect "both verdicts" 'Verification: Verifying was successfully.
Verification: Verifying was successfully.' log_lines ^Verification
    expect_success "no verification file is left" no_verification_file
    expect "both images in the log" "$image"$'\n'"$image2" log_lines '[.]bin$'
    expect "the latest file" "$image2" setting LastOpenFile 1
    expect "the one before" "$image" setting LastOpenFile 2
    leave_program
    program=$first window=$first_window
    leave_program
    expect "the mark of a programming" No setting Status Programming
    expect "settings" '*?' setting_names
    [ -z "$(uniq -d <<<"$found")" ] || complain "  settings that are there twice:" "$(uniq -d <<<"$found")"
    expect "a setting that was there before" 1 setting COMPort BaudRate
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
