#!/usr/bin/env bash
# accessibility.sh PROGRAM UNIT SAMPLE [BEHAVIOUR...]
# Uses the window as a screen reader does, through its accessibility tree alone, on a real X server. Runs every behaviour
# of accessibility.py, or those that are named; prints those that failed, and ends with 0 when there is none. The
# behaviours are called by their names.
# shellcheck disable=SC2119,SC2317
# shellcheck source=tests/gui/real_screen.sh
source "$(dirname "$0")/real_screen.sh"

here=$(dirname "$(realpath "$0")")
only_failures=yes

# as_a_screen_reader BEHAVIOUR ARGUMENT...
as_a_screen_reader() {
    "$here/accessibility.py" "$@" >"$station/faults" 2>&1 || complain "$(cat "$station/faults")"
}

leave_program() {
    as_a_screen_reader the_program_is_left
    expect_end "$program" 0
}

# A behaviour that needs no more than a window, a unit on its port, and a log.
on_a_window() {
    start_fast_unit
    printf '%s\r\n' "$station/image.bin" 'Status: Programming was canceled.' '' >"$BURNWICK_HOME/Burnwick.log"
    start_program
    as_a_screen_reader "$1"
    leave_program
}

# == The behaviours

the_window_tells_what_its_controls_are() {
    on_a_window "${FUNCNAME[0]}"
}

each_menu_tells_what_its_commands_are() {
    on_a_window "${FUNCNAME[0]}"
}

each_dialog_tells_what_its_controls_are() {
    on_a_window "${FUNCNAME[0]}"
}

the_about_box_of_an_oem_tells_what_its_controls_are() {
    mkdir "$station/OEM"
    mv "$BURNWICK_HOME/Burnwick.ini" "$station/OEM"
    BURNWICK_HOME=$station/OEM
    on_a_window "${FUNCNAME[0]}"
}

the_tab_key_reaches_each_control() {
    on_a_window "${FUNCNAME[0]}"
}

options_are_ticked() {
    on_a_window "${FUNCNAME[0]}"
    expect "the option to verify" 1 setting Options Verify
    expect "the option of the log" "&Summary" setting Options LogOption
}

# On a slow line: a window that is behind shows the latest progress, and leaves out what came before it.
a_unit_is_programmed() {
    start_slow_unit
    start_program
    as_a_screen_reader a_unit_is_programmed "$station/image.bin"
    expect_success "the unit holds the image" cmp "$station/image.bin" "$station/line.flash"
    leave_program
}

images_are_compared() {
    start_program
    "$burnwick_sample" "$station/image.bin"
    { head --bytes=-36 "$station/image.bin" && printf '%036d' 2; } >"$station/image2.bin"
    as_a_screen_reader images_are_compared "$station/image.bin" "$station/image2.bin"
    leave_program
}

the_web_site_is_opened() {
    mkdir "$station/bin"
    printf '%s\n' '#!/bin/sh' "printf '%s\n' \"\$#\" \"\$@\" >'$station/opened'" >"$station/bin/xdg-open"
    chmod +x "$station/bin/xdg-open"
    PATH=$station/bin:$PATH start_program
    as_a_screen_reader the_web_site_is_opened
    expect "what is opened" $'1\nhttps://www.burnwick.example/' cat "$station/opened"
    leave_program
}

behaviours=(
    the_window_tells_what_its_controls_are
    each_menu_tells_what_its_commands_are
    each_dialog_tells_what_its_controls_are
    the_about_box_of_an_oem_tells_what_its_controls_are
    the_tab_key_reaches_each_control
    options_are_ticked
    a_unit_is_programmed
    images_are_compared
    the_web_site_is_opened
)

start_screen
# It starts the bus of the trees, and takes it along when it is told to end, but not when it is killed.
/usr/libexec/at-spi-bus-launcher --launch-immediately >"$work/launcher.log" 2>&1 &
launcher=$!
trap '{ kill -TERM "$launcher" && wait "$launcher"; } 2>/dev/null || true; end_all; rm -rf "$work"' EXIT
expect "the bus of the trees" '*unix:*' gdbus call --session --dest org.a11y.Bus --object-path /org/a11y/bus \
    --method org.a11y.Bus.GetAddress
export QT_ACCESSIBILITY=1 QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1
run_behaviours "${@:-${behaviours[@]}}"
