#!/usr/bin/env bash
# window.sh PROGRAM UNIT SAMPLE [BEHAVIOUR...]
# Uses the window's program for Windows as its user does: under wine, on a real X server with a window manager, and
# looks at it from outside only. Simulated units are on its ports. Runs every behaviour, or those that are named; prints
# those that failed, and ends with 0 when there is none. Pictures go into the folder "pictures" beside the program's
# own, where the installer is, too.
# The behaviours are called by their names.
# shellcheck disable=SC2119,SC2317
# shellcheck source=tests/support/wine.sh
source "$(dirname "$(realpath "$0")")/../../support/wine.sh"
# shellcheck source=tests/gui/real_screen.sh
source "$(dirname "$(dirname "$(realpath "$0")")")/real_screen.sh"
# shellcheck disable=SC2034
only_failures=yes
# shellcheck disable=SC2034
patience=60
built=$(dirname "$(dirname "$burnwick")")
pictures=$built/pictures

# == The program under wine

start_copy() {
    BURNWICK_HOME=$(windows_path "$BURNWICK_HOME") wine "$burnwick" "$@" >>"$station/program.log" 2>&1 </dev/null &
    copy=$!
}

program_path() {
    windows_path "$1"
}

# Nobody can tell a program for Windows to end in a run.
end_program() {
    { kill -KILL "$program" && wait "$program"; } 2>/dev/null || true
}

first_settings() {
    ln -sfn "$station/line" "$work/com1"
    ln -sfn "$station/line2" "$work/com2"
    printf '%s\r\n' '[COMPort]' COM=1 BaudRate=1 '[Options]' Verify=0
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

# As often as it takes: wine lets nobody in while a dialog is closing.
activate() {
    expect "the active window" "$1" activated "$1"
}

activated() {
    xdotool windowactivate "$1"
    xdotool getactivewindow
}

# A wine that is busy does not always notice that the keyboard has gone.
expect_elsewhere() {
    again "$1" "caption_of $window" come_and_go
}

come_and_go() {
    activate "$window"
    look_elsewhere
}

# await NAME: a window of this name is the active one. It is $found then.
await() {
    expect "a window $1" '[0-9]*' windows_of - "$1"
    expect "the active window" "$found" xdotool getactivewindow
}

# open_by NAME KEY...: a window of this name is the active one. It is $found then.
open_by() {
    again '[0-9]*' "windows_of - ${1// /.}" xdotool key "${@:2}"
    await "$1"
}

# press KEY...: on the window $found, each until it is seen to have had an effect.
press() {
    local key before
    for key in "$@"; do
        before=$(look_of "$found")
        again "!($before)" "look_of $found" press_in "$found" "$key"
    done
}

# look_of WINDOW [PART]: two that are alike are the same.
look_of() {
    import -window "$1" png:- | convert - -gravity southwest ${2+-crop "$2"} -format '%#' info:
}

# download_by_hand NAME: an image of this station.
download_by_hand() {
    open_by '^Open Burnwick File$' alt+d
    xdotool type "$(windows_path "$station/$1")"
    xdotool key Return
    expect_programmed
}

# picture NAME [WINDOW]: of the window as it is on the screen, its frame included, when it has come to rest.
picture() {
    local tries before now=none
    for ((tries = 0; tries < 10; tries++)); do
        before=$now
        import -frame -window "${2-$window}" "$pictures/$1.png"
        now=$(identify -format '%#' "$pictures/$1.png")
        [ "$now" != "$before" ] || return 0
    done
}

# listen: the screen's bell is heard from now on.
listen() {
    echo 'Bell() printEvent' >"$station/bell.conf"
    stdbuf -oL xkbevd -cfg "$station/bell.conf" >"$station/bell.log" 2>&1 &
    expect_success "a listener to the bell" grep -q audible "$station/bell.log"
}

window_on_top() {
    printf '%d' "$(xprop -root _NET_CLIENT_LIST_STACKING | grep -o '0x[0-9a-f]*$')"
}

rings() {
    grep -c 'no name$' "$station/bell.log"
}

# == The behaviours

it_programs_and_verifies_the_image_that_it_is_started_with() {
    local image
    start_small_unit
    sed -i 's/^Verify=0/Verify=1/' "$BURNWICK_HOME/Burnwick.ini"
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
    start_unit line --size 65536
    start_program
    open_by '^Select Chip Size$' alt+u
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
    expect_sending
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
    expect_sending
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

it_tells_of_an_adapter_that_is_pulled_out_of_a_run() {
    start_slow_unit
    start_program "$(windows_path "$station/image.bin")"
    expect_elsewhere 'Burnwick - [1-9]*%'
    { kill -KILL "$unit" && wait "$unit"; } 2>/dev/null || true
    expect "the box" '[0-9]*' windows_of - '^Transmitting Error$'
    picture pulled_out "$found"
    activate "$found"
    xdotool key Return
    expect "the mark of a programming" No setting Status Programming
    expect "the record's status" 'Status: Transmitting error.' log_lines ^Status
    activate "$window"
    rm "$station/line"
    start_unit line --size 65536
    download_by_hand image.bin
    expect_success "the unit holds the image" cmp "$station/image.bin" "$station/line.flash"
    leave_program
}

a_run_that_ends_in_the_background_rings_and_is_told_of() {
    start_small_unit
    hold_unit
    listen
    start_program "$(windows_path "$station/image.bin")"
    expect_elsewhere 'Burnwick - [0-9]* seconds'
    expect "the bell before" 0 rings
    release_unit
    expect_programmed
    expect "the bell" '[1-9]*' rings
    # Wine shows icons beside the clock in a window of its own, for there is no taskbar.
    expect "the notification's icon" '[0-9]*' windows_of - '^Wine System Tray$'
    leave_program
}

# The window manager does not heed wine's wish for attention, but it can be heard.
listen_for_calls() {
    xev -root -event substructure >"$station/calls" 2>&1 &
}

calls() {
    grep -A1 "^ClientMessage .* window $(printf '0x%x' "$window")," "$station/calls" | grep -c '(_NET_WM_STATE)'
}

# For several times as long as it takes from one to the next.
no_more_calls() {
    ! comes "!($(calls))" calls
}

a_run_that_ends_in_the_background_calls_the_user_until_there_is_an_answer() {
    start_small_unit
    hold_unit
    start_program "$(windows_path "$station/image.bin")"
    expect_elsewhere 'Burnwick - [0-9]* seconds'
    listen_for_calls
    release_unit
    expect_programmed
    expect "calls" '@([3-9]|[1-9][0-9]*)' calls
    activate "$window"
    expect_success "an end of the calls" no_more_calls
    leave_program
}

second_copy() {
    start_copy
    expect_end "$copy" 0
}

a_second_copy_brings_the_first_to_the_front() {
    start_program
    look_elsewhere
    expect "the window on top" "$elsewhere" window_on_top
    # Wine asks for the keyboard with the time of its last message, and the screen has given it away since then.
    again "$window" window_on_top second_copy
    leave_program
}

a_second_copy_brings_a_minimized_one_back() {
    start_program
    xdotool windowminimize "$window"
    expect "no window on the screen" '' windows_of - '^Burnwick'
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
    # Wine has a title of its own for folders.
    open_by '^(Copy image.bin to...|Select Folder)$' alt+f t
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
        open_by "$title" "alt+$menu" "$item"
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

it_tells_of_a_port_that_is_taken_and_takes_another() {
    sed -i 's/^COM=1/COM=9/' "$BURNWICK_HOME/Burnwick.ini"
    start_small_unit
    cp "$station/line.flash" "$station/before.flash"
    start_copy "$(windows_path "$station/image.bin")"
    program=$copy
    await '^CommPort Error$'
    picture port_taken "$found"
    close_by Return
    expect_success "no run" test ! -e "$BURNWICK_HOME/Burnwick.log"
    expect_success "a unit that was left alone" cmp "$station/before.flash" "$station/line.flash"
    # The first one that can be had is selected.
    await '^COM Port Settings$'
    picture port_instead "$found"
    close_by Return
    expect "the port" 1 setting COMPort COM
    await '^Burnwick'
    window=$found
    download_by_hand image.bin
    expect_success "the unit holds the image" cmp "$station/image.bin" "$station/line.flash"
    leave_program
}

# The value of a registry's key, without a name.
value_of() {
    wine reg query "$1" /ve | tr -d '\r' | sed -n 's/^.*REG_SZ *//p'
}

no_key() {
    ! wine reg query "$1"
}

# change_integration PICTURE: the boxes for desktop and context menu, behind those for verification and log.
change_integration() {
    open_by '^Options$' alt+t o
    picture options "$found"
    press Tab Tab space Tab space
    picture "$1" "$found"
    close_by Return
}

its_options_associate_images_and_put_it_on_the_desktop() {
    local program_for_images='HKCR\Burnwick\shell\open\command'
    start_program
    change_integration options_ticked
    expect "the program for images" "$(windows_path "$burnwick") %1" value_of "$program_for_images"
    expect "the type of images" Burnwick value_of 'HKCR\.bin'
    expect_success "a link on the desktop" test -e "$work/home/Desktop/Burnwick.lnk"
    expect "the first option" Yes setting Options ContextMenu
    expect "the second option" Yes setting Options Desktop
    change_integration options_unticked
    expect "the first option" No setting Options ContextMenu
    expect "the second option" No setting Options Desktop
    expect_success "no program for images" no_key "$program_for_images"
    expect_success "no type of images" no_key 'HKCR\.bin'
    leave_program
}

it_takes_the_first_port_that_opens_when_none_is_set() {
    sed -i '/^COM=/d' "$BURNWICK_HOME/Burnwick.ini"
    "$burnwick_sample" "$station/image.bin" --type 64k
    start_unit line2 --size 65536
    start_program "$(windows_path "$station/image.bin")"
    expect_programmed
    expect "the port" 2 setting COMPort COM
    expect_success "the unit holds the image" cmp "$station/image.bin" "$station/line2.flash"
    leave_program
}

# choose_port KEY: the one beside the present one.
choose_port() {
    open_by '^COM Port Settings$' alt+t p
    picture port_chosen "$found"
    press "$1"
    close_by Return
    activate "$window"
    picture status
}

# The line above the bar.
status_line() {
    look_of "$window" 300x20+0+62
}

its_port_is_chosen_with_the_keyboard() {
    local before
    start_unit line
    start_unit line2
    start_program
    picture status
    before=$(status_line)
    choose_port Down
    expect "the port" 2 setting COMPort COM
    expect "another status" "!($before)" status_line
    choose_port Up
    expect "the port before" 1 setting COMPort COM
    expect "the status before" "$before" status_line
    leave_program
}

# copy_into WINDOW: from the program's window, in place of what was there.
copy_into() {
    activate "$window"
    xdotool key alt+f c
    activate "$1"
    xdotool key ctrl+a ctrl+v ctrl+s
}

its_description_is_on_the_clipboard_of_other_programs() {
    start_fast_unit
    start_program "$(windows_path "$station/image.bin")"
    expect_programmed
    : >"$station/pasted.txt"
    wine notepad "$(windows_path "$station/pasted.txt")" >>"$station/program.log" 2>&1 </dev/null &
    await '^pasted.txt'
    again 'image.bin    VX-1600    4.10    FF39    07/22/2004 15:05:09    English/French    512KB' \
        "cat $station/pasted.txt" copy_into "$found"
    leave_program
}

# start_page PATTERN COMMAND...: what it runs is $page_program, its window $page.
start_page() {
    wine "${@:2}" >>"$station/program.log" 2>&1 </dev/null &
    page_program=$!
    await "$1"
    page=$found
}

# Setup's last page has a blue picture at its left; and Return, pressed once too often, would be the program's.
is_last_page() {
    import -window "$page" "$station/page.png"
    [ "$(convert "$station/page.png" -format '%[fx:p{30,250}.b-p{30,250}.r>0.1]' info:)" = 1 ]
}

# The uninstaller's takes Return as soon as it can be closed, and nothing comes after it.
uninstaller_after_return() {
    [ "$(xdotool getactivewindow)" != "$page" ] || xdotool key Return
    windows_of - '^Uninstall Burnwick'
}

# Boxes have their program's title.
question() {
    windows_of - '^Uninstall Burnwick' | grep -vx "$page"
}

# uninstall_with KEY: the answer to what becomes of settings and log.
uninstall_with() {
    start_page '^Uninstall Burnwick' "$folder/Uninstall.exe"
    picture uninstall "$page"
    xdotool key Return
    expect "the question" '[0-9]*' question
    activate "$found"
    picture uninstall_question "$found"
    xdotool key "$1"
    expect_success "the program is gone" test ! -e "$folder/Burnwick.exe"
    picture uninstalled "$page"
    expect "no window of the uninstaller" '' uninstaller_after_return
}

it_is_installed_started_and_removed_with_a_few_clicks() {
    local folder page page_program installer
    installer=$(echo "$built/Burnwick-"*-setup.exe)
    folder=$(winepath -u "$(wine cmd /c 'echo %LOCALAPPDATA%' | tr -d '\r')")/Programs/Burnwick
    # The program is the one that is installed, with the settings that are there.
    unset BURNWICK_HOME
    mkdir -p "$folder"
    start_page '^Burnwick .*Setup' "$installer"
    picture setup "$page"
    xdotool key Return
    expect_success "setup's last page" is_last_page
    picture installed "$page"
    xdotool key Return
    await '^Burnwick$'
    window=$found
    expect_end "$page_program" 0
    xdotool key alt+q
    expect "no window of the program" '' windows_of - '^Burnwick'
    expect_success "settings" test -e "$folder/Burnwick.ini"
    uninstall_with alt+n
    expect_success "settings that are kept" test -e "$folder/Burnwick.ini"
    expect_success "the installation" wine "$installer" /S
    uninstall_with alt+y
    expect_success "nothing that is left" test ! -e "$folder"
}

behaviours=(
    it_programs_and_verifies_the_image_that_it_is_started_with
    it_reads_a_unit_out
    it_cannot_be_closed_while_blocks_are_sent
    it_refuses_the_end_of_the_session_while_blocks_are_sent
    it_tells_of_an_adapter_that_is_pulled_out_of_a_run
    a_run_that_ends_in_the_background_rings_and_is_told_of
    a_second_copy_brings_the_first_to_the_front
    a_second_copy_brings_a_minimized_one_back
    it_tells_of_a_port_that_is_taken_and_takes_another
    a_second_copy_programs_and_verifies_another_unit_at_the_same_time
    its_options_associate_images_and_put_it_on_the_desktop
    its_caption_tells_a_user_elsewhere_how_far_the_run_has_come
    a_run_that_ends_in_the_background_calls_the_user_until_there_is_an_answer
    it_takes_the_first_port_that_opens_when_none_is_set
    its_port_is_chosen_with_the_keyboard
    its_description_is_on_the_clipboard_of_other_programs
    it_copies_the_image_into_another_folder
    its_dialogs_can_be_opened_and_closed
    it_is_installed_started_and_removed_with_a_few_clicks
)

mkdir -p "$pictures"
start_screen
trap 'end_all; end_wine; rm -rf "$work"' EXIT
# Wine's desktop is the one that is there when it is prepared.
mkdir "$HOME/Desktop"
prepare_wine "$work/prefix"
# Where these links lead is each behaviour's own matter.
tell_wine 'HKLM\Software\Wine\Ports' COM1 "$work/com1"
tell_wine 'HKLM\Software\Wine\Ports' COM2 "$work/com2"
start_wine
# What is no device is denied in the words that a driver has for a port that is taken.
ln -s "$work" "$WINEPREFIX/dosdevices/com9"
run_behaviours "${@:-${behaviours[@]}}"
