#!/usr/bin/env bash
# window.sh PROGRAM UNIT SAMPLE [BEHAVIOUR...]
# Uses the window's program for Windows as its user does: under wine, on a real X server with a window manager, and looks
# at it from outside only. Simulated units are on its ports. Runs every behaviour, or those that are named; prints those
# that failed, and ends with 0 when there is none. Pictures go into the folder "pictures" beside the program's own.
# The behaviours are called by their names.
# shellcheck disable=SC2317
# shellcheck source=tests/gui/real_screen.sh
source "$(dirname "$(dirname "$(realpath "$0")")")/real_screen.sh"
# shellcheck source=tests/support/wine.sh
source "$(dirname "$(realpath "$0")")/../../support/wine.sh"
# shellcheck disable=SC2034
only_failures=yes
# shellcheck disable=SC2034
patience=60
pictures=$(dirname "$(dirname "$burnwick")")/pictures

# == The program under wine

start_copy() {
    BURNWICK_HOME=$(windows_path "$BURNWICK_HOME") wine "$burnwick" "$@" >>"$station/program.log" 2>&1 </dev/null &
    copy=$!
}

# windows_of PROCESS NAME: Windows' processes have numbers of their own.
windows_of() {
    xdotool search --onlyvisible --name "$2"
}

first_settings() {
    ln -sfn "$station/line" "$work/com1"
    ln -sfn "$station/line2" "$work/com2"
    printf '%s\r\n' '[COMPort]' COM=1 BaudRate=1 '[Options]' "Verify=${verify-0}"
}

# Small enough for a machine that is busy with other things.
start_small_unit() {
    "$burnwick_sample" "$station/image.bin" --type 64k
    start_unit line --size 65536
}

# == What the user does, and sees

# Fails when a program does not agree.
end_session() {
    wine wineboot --end-session
}

caption_of() {
    xdotool getwindowname "$1"
}

log_lines() {
    tr -d '\r' <"$BURNWICK_HOME/Burnwick.log" | grep "$1"
}

activate() {
    xdotool windowactivate "$1"
    expect "the active window" "$1" xdotool getactivewindow
}

# await NAME: a window of this name is the active one. It is $found then.
await() {
    expect "a window $1" '[0-9]*' windows_of - "$1"
    expect "the active window" "$found" xdotool getactivewindow
}

# picture NAME [WINDOW]: of the window as it is on the screen, its frame included.
picture() {
    sleep 0.3
    import -frame -window "${2-$window}" "$pictures/$1.png"
}

expect_programmed() {
    expect "the caption at the end" 'Burnwick - Programming was completed successfully' caption_of "$window"
}

leave_program() {
    activate "$window"
    xdotool key alt+q
    expect_end "$program" 0
    expect "the mark of a programming" No setting Status Programming
}

# == The behaviours

it_programs_and_verifies_the_image_that_it_is_started_with() {
    local image
    start_small_unit
    sed -i 's/^Verify=.*/Verify=1\r/' "$BURNWICK_HOME/Burnwick.ini"
    mkdir "$station/образы 映像  zwei"
    mv "$station/image.bin" "$station/образы 映像  zwei/größe €.bin"
    start_program "$(windows_path "$station/образы 映像  zwei/größe €.bin")"
    await '^Verification$'
    picture verification "$found"
    xdotool key Return
    expect "the record's verdict" 'Verification: Verifying was successfully.' log_lines ^Verification
    expect_programmed
    picture programmed
    expect "the record's status" 'Status: Programming was completed successfully.' log_lines ^Status
    # In a pattern a backslash is itself only when there are two.
    image=$(windows_path "$station/образы 映像  zwei/größe €.bin")
    expect "the record's image" "${image//\\/\\\\}" log_lines '^Z:'
    expect_success "the unit holds the image" cmp "$station/образы 映像  zwei/größe €.bin" "$station/line.flash"
    leave_program
}

it_reads_a_unit_out() {
    "$burnwick_sample" "$station/line.flash" --type 64k
    truncate -s 131072 "$station/line.flash"
    start_unit line --size 131072
    start_program
    xdotool key alt+u
    await '^Select Chip Size$'
    picture chip "$found"
    xdotool key alt+1 Return
    await '^Save As Burnwick File$'
    picture save "$found"
    xdotool type "$(windows_path "$station/read.bin")"
    xdotool key Return
    expect "the caption at the end" 'Burnwick - Uploading was completed successfully' caption_of "$window"
    expect_success "what was read is what the unit holds" cmp "$station/read.bin" "$station/line.flash"
    picture uploaded
    leave_program
}

it_cannot_be_closed_while_blocks_are_sent() {
    start_slow_unit
    start_program "$(windows_path "$station/image.bin")"
    expect "the mark of a programming" Yes setting Status Programming
    xdotool key alt+F4
    picture sending
    expect_programmed
    expect_success "the unit holds the image" cmp "$station/image.bin" "$station/line.flash"
    xdotool key alt+F4
    expect_end "$program" 0
}

it_refuses_the_end_of_the_session_while_blocks_are_sent() {
    local status=0
    start_slow_unit
    start_program "$(windows_path "$station/image.bin")"
    expect "the mark of a programming" Yes setting Status Programming
    end_session || status=$?
    [ "$status" = 1 ] || complain "  the end of the session was not refused" "    status: $status"
    expect_programmed
    expect_success "the unit holds the image" cmp "$station/image.bin" "$station/line.flash"
    # Whether it goes or is killed is the system's own matter, and nothing to tell.
    disown "$program"
    expect_success "the session can end" end_session
    expect_success "the program has ended" has_ended "$program"
    expect "the mark of a programming" No setting Status Programming
}

a_second_copy_brings_the_first_to_the_front() {
    start_program
    xev -name Elsewhere >/dev/null 2>&1 &
    expect "another window" '[0-9]*' xdotool search --onlyvisible --name '^Elsewhere$'
    activate "$found"
    start_copy
    expect_end "$copy" 0
    expect "the active window" "$window" xdotool getactivewindow
    leave_program
}

it_copies_the_image_into_another_folder() {
    start_small_unit
    mkdir "$station/an other folder"
    start_program "$(windows_path "$station/image.bin")"
    expect_programmed
    xdotool key alt+f t
    # Wine has a title of its own for folders.
    await '^(Copy image.bin to...|Select Folder)$'
    picture folder "$found"
    xdotool type "$(windows_path "$station/an other folder")"
    xdotool key Return
    expect_success "the copy" cmp "$station/image.bin" "$station/an other folder/image.bin"
    leave_program
}

its_dialogs_can_be_opened_and_closed() {
    local menu item name title
    start_program
    picture idle
    while read -r menu item name title; do
        xdotool key "alt+$menu"
        import -window root "$pictures/menu-$menu.png"
        xdotool key "$item"
        await "$title"
        picture "$name" "$found"
        xdotool key Escape
        # Wine gives its own dialogs' place to nobody.
        expect "no window $title" '' windows_of - "$title"
        activate "$window"
    done <<'END'
f d open ^Open Burnwick File$
f m compare ^File Compare$
t p port ^COM Port Settings$
t l log ^Activity Log$
t o options ^Options$
h a about ^About Burnwick$
h h help ^Burnwick Help$
END
    leave_program
}

behaviours=(
    it_programs_and_verifies_the_image_that_it_is_started_with
    it_reads_a_unit_out
    it_cannot_be_closed_while_blocks_are_sent
    it_refuses_the_end_of_the_session_while_blocks_are_sent
    a_second_copy_brings_the_first_to_the_front
    it_copies_the_image_into_another_folder
    its_dialogs_can_be_opened_and_closed
)

mkdir -p "$pictures"
start_screen
trap 'end_all; end_wine; rm -rf "$work"' EXIT
prepare_wine "$work/prefix"
# Where these links lead is each behaviour's own matter.
tell_wine 'HKLM\Software\Wine\Ports' COM1 "$work/com1"
tell_wine 'HKLM\Software\Wine\Ports' COM2 "$work/com2"
start_wine
run_behaviours "${@:-${behaviours[@]}}"
