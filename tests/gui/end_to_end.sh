#!/usr/bin/env bash
# end_to_end.sh PROGRAM UNIT SAMPLE CLIPBOARD [BEHAVIOUR...]
# Uses the window as its user does, on a real X server with a window manager, and looks at it from outside only.
# Simulated units are on its ports. Runs every behaviour, or those that are named; prints one line a behaviour, and
# ends with 0 when all were as expected.
# The behaviours are called by their names.
# shellcheck disable=SC2317
# shellcheck source=tests/gui/real_screen.sh
source "$(dirname "$0")/real_screen.sh"

clipboard_text=$(realpath "$1")
shift

# == What the user does

# Its run, if there is one, is cancelled.
end_program() {
    kill -TERM "$program"
    expect_end "$program" 0
    expect "the mark of a programming" No setting Status Programming
}

# == What can be seen from outside

# Very large ones are not shown.
icons_of() {
    property "$1" _NET_WM_ICON | grep -o 'Icon (.*)'
}

# What the window lets a window manager offer: 0x10 is Maximize, 0x20 is Close.
offers_of() {
    local hints
    hints=$(property "$1" _MOTIF_WM_HINTS)
    hints=${hints#*, }
    hints=${hints%%,*}
    case $((hints & 0x30)) in
    $((0x30))) echo "maximize and close" ;;
    $((0x20))) echo close ;;
    $((0x10))) echo maximize ;;
    0) echo neither ;;
    esac
}

# Its smallest size, and its largest.
size_limits_of() {
    xprop -id "$1" WM_NORMAL_HINTS | sed -n 's/^.*specified \(minimum\|maximum\) size: //p' | xargs
}

# Whether it calls the user to itself.
calls_of() {
    local state
    state=$(property "$1" _NET_WM_STATE)
    case $state in
    *_NET_WM_STATE_DEMANDS_ATTENTION*) echo calls ;;
    *) echo silent ;;
    esac
}

# What the window's display shows.
display_text() {
    local width height
    activate "$window"
    read -r width height < <(xwininfo -id "$window" | awk '/Width:/ { w = $2 } /Height:/ { print w, $2 }')
    xdotool mousemove --window "$window" $((width / 2)) $((height / 2)) click 1 key ctrl+a ctrl+c
    "$clipboard_text"
}

# == The behaviours

it_programs_the_image_that_it_is_started_with() {
    start_fast_unit
    start_program "$station/image.bin"
    expect_programmed
    expect_success "the unit holds the image" cmp "$station/image.bin" "$station/line.flash"
    leave_program
}

it_is_on_the_screen_while_it_waits_for_the_unit() {
    start_fast_unit
    hold_unit
    start_program "$station/image.bin"
    expect "the window" '*IsViewable*' xwininfo -id "$window"
    expect "the caption" 'Burnwick' caption_of "$window"
    expect "what it says" '*Waiting for response from the unit on COM1...*' display_text
    release_unit
    expect_programmed
    leave_program
}

its_caption_follows_the_run() {
    start_slow_unit
    hold_unit
    start_program "$station/image.bin"
    # Not that of a window which is not the active one yet.
    expect "the caption" Burnwick caption_of "$window"
    xprop -spy -id "$window" -notype _NET_WM_NAME >"$station/captions" &
    expect_success "the first caption" grep -x '_NET_WM_NAME = "Burnwick"' "$station/captions"
    release_unit
    expect "all captions" '_NET_WM_NAME = "Burnwick"
_NET_WM_NAME = "Burnwick - Programming image.bin..."
_NET_WM_NAME = "Burnwick - Programming was completed successfully"' uniq "$station/captions"
    leave_program
}

it_has_its_icon_in_many_sizes() {
    local size
    start_program
    for size in 16 22 24 32 48 64 128; do
        expect "an icon of $size pixels" "*Icon ($size x $size)*" icons_of "$window"
    done
    leave_program
}

its_size_is_fixed() {
    start_program
    expect "smallest and largest size" '* by * * by *' size_limits_of "$window"
    expect "smallest and largest size" "${found% * by *} ${found% * by *}" size_limits_of "$window"
    expect "its own offer" close offers_of "$window"
    expect "what the window manager offers" '*_NET_WM_ACTION_MOVE*' property "$window" _NET_WM_ALLOWED_ACTIONS
    case $found in
    *MAXIMIZE* | *RESIZE*) complain "  The window manager offers: $found" ;;
    esac
    leave_program
}

# The window manager passes Alt+F4 on whatever the window offers: it is the window that must not heed it.
it_cannot_be_closed_while_blocks_are_sent() {
    start_slow_unit
    start_program "$station/image.bin"
    expect_sending
    # Started with an image, it takes Maximize off its menu after that run only.
    expect "its offer while blocks are sent" '@(neither|maximize)' offers_of "$window"
    xdotool key alt+F4
    expect_programmed
    expect_success "the unit holds the image" cmp "$station/image.bin" "$station/line.flash"
    expect "its offer afterwards" close offers_of "$window"
    xdotool key alt+F4
    expect_end "$program" 0
    expect "the mark of a programming" No setting Status Programming
}

a_run_that_ends_in_the_background_calls_the_user() {
    start_fast_unit
    hold_unit
    dbus-monitor --session "interface='org.freedesktop.Notifications'" >"$station/bus.log" 2>&1 &
    expect_success "a listener on the bus" test -s "$station/bus.log"
    start_program "$station/image.bin"
    look_elsewhere
    release_unit
    expect_programmed
    expect "the window in the background" calls calls_of "$window"
    expect_success "a notification" grep -q 'string "Programming was completed successfully."' "$station/bus.log"
    activate "$window"
    expect "the window that is looked at" silent calls_of "$window"
    leave_program
}

a_run_is_kept_in_log_and_settings() {
    start_fast_unit
    start_program "$station/image.bin"
    expect_programmed
    expect "the record's status" 'Status: Programming was completed successfully.' log_lines ^Status
    expect "the record's image" "$station/image.bin" log_lines '^/'
    expect "the mark of a programming" No setting Status Programming
    expect "the folder for the next one" "$station" setting Path LastPath
    expect "the latest file" "$station/image.bin" setting LastOpenFile 1
    leave_program
}

a_second_copy_brings_the_first_to_the_front() {
    start_program
    look_elsewhere
    start_copy
    expect_end "$copy" 0
    expect "the active window" "$window" xdotool getactivewindow
    leave_program
}

it_can_be_used_with_the_keyboard_alone() {
    start_fast_unit
    start_program
    xdotool key alt+d
    expect "a file dialog" '[0-9]*' windows_of "$program" '^Open Burnwick File$'
    expect "the active window" "$found" xdotool getactivewindow
    xdotool type "$station/image.bin"
    xdotool key Return
    expect_programmed
    expect_success "the unit holds the image" cmp "$station/image.bin" "$station/line.flash"
    xdotool key alt+q
    expect_end "$program" 0
    expect "the mark of a programming" No setting Status Programming
}

an_idle_window_can_be_closed() {
    start_program
    xdotool key alt+F4
    expect_end "$program" 0
    expect "the mark of a programming" No setting Status Programming
}

told_to_end_it_cancels_the_wait_for_a_unit() {
    start_fast_unit
    hold_unit
    start_program "$station/image.bin"
    expect "what it says" '*Waiting for response from the unit on COM1...*' display_text
    kill -TERM "$program"
    release_unit
    expect_end "$program" 0
    expect "the mark of a programming" No setting Status Programming
}

told_to_end_it_cancels_the_sending_of_blocks() {
    start_slow_unit
    start_program "$station/image.bin"
    expect_sending
    end_program
    expect "the record's status" 'Status: Programming was canceled.' log_lines ^Status
}

told_to_end_it_does_not_wait_for_an_open_dialog() {
    start_program
    xdotool key alt+d
    expect "a file dialog" '[0-9]*' windows_of "$program" '^Open Burnwick File$'
    end_program
}

it_refuses_a_folder_and_stays_usable() {
    start_fast_unit
    start_program "$station"
    refuses_and_stays_usable
}

it_refuses_a_file_that_has_vanished_and_stays_usable() {
    start_fast_unit
    start_program "$station/gone.bin"
    refuses_and_stays_usable
}

refuses_and_stays_usable() {
    expect "what it says" 'Invalid file format.*' display_text
    xdotool key alt+d
    expect "a file dialog" '[0-9]*' windows_of "$program" '^Open Burnwick File$'
    expect "the active window" "$found" xdotool getactivewindow
    xdotool type "$station/image.bin"
    xdotool key Return
    expect_programmed
    leave_program
}

behaviours=(
    it_programs_the_image_that_it_is_started_with
    it_is_on_the_screen_while_it_waits_for_the_unit
    its_caption_follows_the_run
    it_has_its_icon_in_many_sizes
    its_size_is_fixed
    it_cannot_be_closed_while_blocks_are_sent
    its_caption_tells_a_user_elsewhere_how_far_the_run_has_come
    a_run_that_ends_in_the_background_calls_the_user
    a_run_is_kept_in_log_and_settings
    a_second_copy_brings_the_first_to_the_front
    a_second_copy_programs_and_verifies_another_unit_at_the_same_time
    it_can_be_used_with_the_keyboard_alone
    an_idle_window_can_be_closed
    told_to_end_it_cancels_the_wait_for_a_unit
    told_to_end_it_cancels_the_sending_of_blocks
    told_to_end_it_does_not_wait_for_an_open_dialog
    it_refuses_a_folder_and_stays_usable
    it_refuses_a_file_that_has_vanished_and_stays_usable
)

start_screen
run_behaviours "${@:-${behaviours[@]}}"
