#!/usr/bin/env bash
# setup.sh: installs, uses, upgrades and removes the packages for Windows in build/windows under wine, in a prefix that is
# thrown away. Prints what fails, and one line at the end when nothing did.
# shellcheck source=tests/windows/trial.sh
source "$(dirname "$0")/trial.sh"

present() {
    local path
    for path in "$@"; do
        [ -e "$path" ] || fail "This is missing: $path"
    done
}
absent() {
    local path
    for path in "$@"; do
        [ ! -e "$path" ] || fail "This should not be there: $path"
    done
}

# == Packages

packages=$root/build/windows
version=$("$native/burnwick-cli" --version)
number=$(grep -oE '[0-9]+\.[0-9]+' <<<"$version" | head -n 1)
same "The packages" "Burnwick-$number-portable.zip Burnwick-$number-setup.exe" "$(cd "$packages" && echo Burnwick-*.*)"
installer=$packages/Burnwick-$number-setup.exe
"$native/burnwick-sample" "$work/sample.bin"

# == A Windows

start_unit "$work/line" --flash "$work/memory"
start_unit "$work/slow" --pace
slow_unit=${started[-1]}
start_windows COM1 "$work/line" COM2 "$work/slow"

# variable NAME: what Windows has under it, as a path of this system.
variable() {
    winepath -u "$(wine cmd /c "echo %$1%" | tr -d '\r')"
}
default=$(variable LOCALAPPDATA)/Programs/Burnwick
menu_link="$(variable APPDATA)/Microsoft/Windows/Start Menu/Programs/Burnwick.lnk"
desktop_link=$HOME/Desktop/Burnwick.lnk
strange="$WINEPREFIX/drive_c/Программы 映像"
entry='HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\Burnwick'
classes='HKCU\Software\Classes'

# entry_value NAME [KEY]: what the registry holds, a number as dword:…; empty when there is none. "" is the key's default.
entry_value() {
    local name=@
    [ -z "$1" ] || name="\"$1\""
    rm -f "$work/key.reg"
    wine reg export "${2-$entry}" "$(winepath -w "$work/key.reg")" /y >/dev/null 2>&1 || return 0
    # The keys beneath it follow.
    iconv -f UTF-16 -t UTF-8 "$work/key.reg" | tr -d '\r' | sed '/^\[/{x;s/$/x/;/xx/q;x}' \
        | sed -n "s/^$name=//p" | sed -E 's/^"(.*)"$/\1/; s/\\(.)/\1/g'
}
key_exists() {
    wine reg query "$1" >/dev/null 2>&1
}
# setup WORD...: the installer without its window. Windows' own quotes round "/D=" are more than it can read, so that a
# folder with a blank comes as two words.
setup() {
    timeout 120 wine "$installer" /S "$@" >"$work/setup.out" 2>&1 </dev/null
}
# refused TEXT COMMAND...: ends with status 2 and says this.
refused() {
    local status=0
    "${@:2}" || status=$?
    if [ "$status" != 2 ] || ! grep -qF "$1" "$work/setup.out"; then
        fail "${*:2} ended with $status instead of 2, and says:" "$(cat "$work/setup.out")"
    fi
}
# uninstall FOLDER OPTION...: as Windows does. The uninstaller goes on in a copy of itself.
uninstall() {
    uninstall_as "$1/Uninstall.exe" "$@"
}
# uninstall_as NAME FOLDER OPTION...: by this name of the uninstaller in FOLDER.
uninstall_as() {
    quietly timeout 120 wine "$1" /S "${@:3}"
    await "The end of the uninstaller" test ! -e "$2/Uninstall.exe"
    # Another one waits for nobody, but is refused while this one is at work.
    await "The end of the uninstaller's copy" ended 'nsu[0-9A-F]*[.]tmp'
}
# runs TEXT: some program of this Windows has it in its command line.
runs() {
    local process
    for process in $(pgrep -f -- "$1"); do
        ! tr '\0' '\n' 2>/dev/null <"/proc/$process/environ" | grep -qxF "WINEPREFIX=$WINEPREFIX" || return 0
    done
    return 1
}
ended() {
    ! runs "$1"
}
# associate ROOT PROGRAM: "*.bin", as the program writes it.
associate() {
    quietly wine reg add "$1\\.bin" /ve /d Burnwick /f
    quietly wine reg add "$1\\Burnwick\\shell\\open\\command" /ve /d "$2 %1" /f
}
installed=(Burnwick.exe Burnwick.hlp LICENSE.txt README.txt Third-party.txt Uninstall.exe burnwick-cli.exe)
# files_in FOLDER: names in one line.
files_in() {
    (cd "$1" && find . -mindepth 1 -printf '%P\n' | sort | tr '\n' ' ')
}

# == Installed

quietly wine winecfg -v win7
refused 'Burnwick needs Windows 10 or later.' setup
quietly wine winecfg -v win10
setup || fail "The installation failed:" "$(cat "$work/setup.out")"
same "What is installed" "${installed[*]} " "$(files_in "$default")"
present "$menu_link"
absent "$desktop_link"
default_for_windows=$(winepath -w "$default")
same "DisplayName" Burnwick "$(entry_value DisplayName)"
same "DisplayVersion" "$(grep -oE '[0-9]+\.[0-9]+\.[0-9]+' <<<"$version")" "$(entry_value DisplayVersion)"
same "Publisher" "The Burnwick authors" "$(entry_value Publisher)"
same "DisplayIcon" "$default_for_windows\\Burnwick.exe" "$(entry_value DisplayIcon)"
same "InstallLocation" "$default_for_windows" "$(entry_value InstallLocation)"
same "UninstallString" "\"$default_for_windows\\Uninstall.exe\"" "$(entry_value UninstallString)"
same "QuietUninstallString" "\"$default_for_windows\\Uninstall.exe\" /S" "$(entry_value QuietUninstallString)"
same "NoModify" dword:00000001 "$(entry_value NoModify)"
same "NoRepair" dword:00000001 "$(entry_value NoRepair)"
kilobytes=$(du --apparent-size -sk "$default" | cut -f 1)
told=$(entry_value EstimatedSize)
told=$((16#${told#dword:}))
if [ "$told" -lt $((kilobytes - 200)) ] || [ "$told" -gt $((kilobytes + 200)) ]; then
    fail "EstimatedSize is $told KB; the folder has $kilobytes KB."
fi
for paper in README LICENSE Third-party; do
    [ "$(grep -c $'\r$' "$default/$paper.txt")" = "$(wc -l <"$default/$paper.txt")" ] || fail "$paper.txt has lines without CR."
done
grep -qF "Burnwick $number" "$default/README.txt" || fail "README.txt does not tell the version."

# == Used

# run_in FOLDER ARGUMENT...: the command line that is installed there.
run_in() {
    timeout 120 wine "$1/burnwick-cli.exe" "${@:2}" >"$work/run.out" 2>"$work/run.err" </dev/null \
        || fail "burnwick-cli.exe ${*:2} failed in $1:" "$(cat "$work/run.out" "$work/run.err")"
}
# use FOLDER: it works, and settings and log land in it.
use() {
    run_in "$1" --version
    same "The version in $1" "$version" "$(cat "$work/run.out")"
    run_in "$1" info "$work/sample.bin"
    grep -q 'VX-1600' "$work/run.out" || fail "info says:" "$(cat "$work/run.out")"
    run_in "$1" download "$work/sample.bin" --port COM1
    grep -q 'sample.bin' "$1/Burnwick.log" || fail "The log in $1 does not tell of the run."
    run_in "$1" ports
}
use "$default"
absent "$(variable LOCALAPPDATA)/Burnwick/Burnwick.log"

# == Upgraded

printf '[COMPort]\r\nCOM=1\r\nBaudRate=1\r\n[Options]\r\nLogOption=&Summary\r\nMine=1\r\nDesktop=Yes\r\n' >"$default/Burnwick.ini"
cp "$default/Burnwick.ini" "$default/Burnwick.log" "$work"
echo old >"$default/Burnwick.hlp"
echo mine >"$default/notes.txt"
setup || fail "The upgrade failed:" "$(cat "$work/setup.out")"
cmp "$work/Burnwick.ini" "$default/Burnwick.ini" >&2 || fail "An upgrade changes the settings."
cmp "$work/Burnwick.log" "$default/Burnwick.log" >&2 || fail "An upgrade changes the log."
cmp "$bin/Burnwick.hlp" "$default/Burnwick.hlp" >&2 || fail "An upgrade leaves an old file."
absent "$default"/*.new

# == Refused while a unit is being programmed

echo old >"$default/Burnwick.hlp"
wine "$default/burnwick-cli.exe" download "$work/sample.bin" --port COM2 >"$work/long.out" 2>&1 </dev/null &
run=$!
await "A slow run" grep -qF 'Sending data to the unit...' "$work/long.out"
in_use="burnwick-cli.exe is in use: Burnwick is running."
refused "$in_use" setup
same "A file that is not in use" old "$(cat "$default/Burnwick.hlp")"
absent "$default"/*.new
# With this word the uninstaller stays where it is, so that its status is seen.
stay() {
    timeout 120 wine "$1/Uninstall.exe" /S "_?=$(winepath -w "$1")" >"$work/setup.out" 2>&1 </dev/null
}
refused "$in_use" stay "$default"
present "$default/Burnwick.exe" "$default/Burnwick.hlp" "$menu_link"
{ kill -KILL "$slow_unit" && wait "$slow_unit" "$run"; } 2>/dev/null || true

# The window, started from the menu. It takes over the association of a copy that is not there any more, and makes the
# shortcut that the settings tell of.
command='HKCR\Burnwick\shell\open\command'
associated() {
    [ "$(entry_value '' "$command")" = "$default_for_windows\Burnwick.exe %1" ]
}
associate HKCR 'C:\gone\Burnwick.exe'
quietly wine start /unix "$menu_link"
await "The window" runs Burnwick.exe
await "The window's settings" grep -q '^Programming=No' "$default/Burnwick.ini"
await "The window's association" associated
await "The window's shortcut" test -e "$desktop_link"
refused 'Burnwick.exe is in use: Burnwick is running.' setup
close_window() {
    quietly wine taskkill /f /im Burnwick.exe
    await "The end of the window" ended Burnwick.exe
}
close_window
# An image that is opened is programmed.
mkdir "$work/образы 映像"
image="$work/образы 映像/größe  -platform €.bin"
"$native/burnwick-sample" "$image" --type 64k
quietly wine start /unix "$image"
await "The unit with the image that was opened" cmp -n 65536 "$image" "$work/memory"
await "The end of the run" grep -q '^Programming=No' "$default/Burnwick.ini"
close_window
setup || fail "The upgrade after the runs failed:" "$(cat "$work/setup.out")"

# == Removed, and what is the user's stays

associate "$classes" "$default_for_windows\\Burnwick.exe"
quietly wine reg add "$classes\\.bin" /v 'Content Type' /d application/octet-stream /f
cp "$default/Burnwick.ini" "$work/Burnwick.ini"
cp "$default/Burnwick.log" "$work/Burnwick.log"
uninstall "$default"
for file in "${installed[@]}"; do
    absent "$default/$file"
done
present "$default/notes.txt"
cmp "$work/Burnwick.ini" "$default/Burnwick.ini" >&2 || fail "The settings are not kept."
cmp "$work/Burnwick.log" "$default/Burnwick.log" >&2 || fail "The log is not kept."
absent "$menu_link" "$desktop_link"
for key in "$entry" "$classes\\Burnwick" 'HKCR\Burnwick' 'HKLM\Software\Classes\.bin'; do
    ! key_exists "$key" || fail "This key is left: $key"
done
same "The program for *.bin" '' "$(entry_value '' "$classes\\.bin")"
same "What another program has told of *.bin" application/octet-stream "$(entry_value 'Content Type' "$classes\\.bin")"

# == In a folder with a name of its own, beside another installation

setup || fail "The installation failed:" "$(cat "$work/setup.out")"
associate "$classes" "$default_for_windows\\Burnwick.exe"
quietly wine reg add "$classes\\Burnwick" /v TypeBefore /d Other.Image /f
quietly wine reg add "$classes\\Other.Image" /ve /d 'Another image' /f
quietly wine reg add "$classes\\Burnwick\\shell\\theirs" /ve /d 'Another verb' /f
cp "$menu_link" "$desktop_link"
setup '/D=C:\Программы' '映像' || fail "The installation in $strange failed:" "$(cat "$work/setup.out")"
same "What is installed" "${installed[*]} " "$(files_in "$strange")"
same "InstallLocation" 'C:\Программы 映像' "$(entry_value InstallLocation)"
use "$strange"
theirs=(Burnwick-notes.log Burnwick2026112.log Burnwick20261120_12x4.log Verify-mine.tmp 'Мои образы.bin')
ours=(
    Burnwick.ini{,.new,.lock,.queue} Burnwick.log{,.lock} Burnwick1.log Burnwick20261120.log Burnwick20261120_1942.log
    Verify.tmp{,.lock} Verify12.tmp{,.lock}
)
for file in "${theirs[@]}" "${ours[@]}"; do
    echo "$file" >>"$strange/$file"
done
# By another drive than it was installed by: what the links and the registry say is not what it sees.
uninstall_as "Z:${strange//\//\\}\\Uninstall.exe" "$strange" /REMOVEDATA
same "What is left" "$(printf '%s\n' "${theirs[@]}" | sort | tr '\n' ' ')" "$(files_in "$strange")"
! key_exists "$entry" || fail "This key is left: $entry"
absent "$menu_link"
# These are the other installation's.
present "$desktop_link" "$default/Burnwick.exe" "$default/Burnwick.ini"
same "The program for *.bin" Burnwick "$(entry_value '' "$classes\\.bin")"
rm "$default/notes.txt"
uninstall "$default" /REMOVEDATA
absent "$default" "$desktop_link" "$(variable LOCALAPPDATA)/Burnwick"
same "The program for *.bin" Other.Image "$(entry_value '' "$classes\\.bin")"
same "What another program has put below" 'Another verb' "$(entry_value '' "$classes\\Burnwick\\shell\\theirs")"
for key in "$classes\\Burnwick\\shell\\open" "$classes\\Burnwick\\DefaultIcon"; do
    ! key_exists "$key" || fail "This key is left: $key"
done

# == Folders that are refused

mkdir "$WINEPREFIX/drive_c/foreign"
echo theirs >"$WINEPREFIX/drive_c/foreign/Uninstall.exe"
refused "has a file Uninstall.exe that is not Burnwick's" setup '/D=C:\foreign'
same "Another program's file" theirs "$(cat "$WINEPREFIX/drive_c/foreign/Uninstall.exe")"
refused 'Burnwick cannot be installed in C:\foreign\Uninstall.exe\Burnwick.' setup '/D=C:\foreign\Uninstall.exe\Burnwick'
# Nobody makes a folder there.
refused 'cannot be written' setup '/D=Z:\proc\Burnwick'
! key_exists "$entry" || fail "A refused installation leaves $entry."

# == A disk that gets full

# With room for one version and a half.
if small_disk "$((kilobytes * 3 / 2))k" 'an upgrade on a disk that gets full'; then
    full="/D=Z:${work//\//\\}\\disk\\Burnwick"
    setup "$full" || fail "The installation on a small disk failed:" "$(cat "$work/setup.out")"
    echo old >"$work/disk/Burnwick/README.txt"
    cp -r "$work/disk/Burnwick" "$work/before"
    ! setup "$full" || fail "An upgrade on a full disk says that all went well."
    diff -r "$work/before" "$work/disk/Burnwick" >&2 || fail "An upgrade on a full disk leaves something else."
    uninstall "$work/disk/Burnwick"
    umount "$work/disk"
    rmdir "$work/disk"
fi

# == The archive

# unpack FOLDER
unpack() {
    (cd "$1" && python3 -m zipfile -e "$packages/Burnwick-$number-portable.zip" .)
}
# use_window FOLDER SETTINGS: the window of the program that is there comes, and keeps its settings in that folder.
use_window() {
    quietly wine start /unix "$1/Burnwick.exe"
    await "The settings of the window in $1" grep -q '^Programming=No' "$2/Burnwick.ini"
    close_window
}
mkdir "$work/Архив"
unpack "$work/Архив"
portable=$work/Архив/Burnwick-$number
same "What is in the archive" "$(printf '%s\n' "${installed[@]}" | grep -v Uninstall | sort | tr '\n' ' ')" "$(files_in "$portable")"
use "$portable"
use_window "$portable" "$portable"

# == The archive on a disk that cannot be written

if small_disk "$((kilobytes * 2))k" 'the programs on a disk that cannot be written'; then
    unpack "$work/disk"
    mount -o remount,ro "$work/disk"
    data="$(variable LOCALAPPDATA)/Burnwick"
    run_in "$work/disk/Burnwick-$number" download --verify "$work/sample.bin" --port COM1
    grep -q 'sample.bin' "$data/Burnwick.log" || fail "The log in $data does not tell of the run."
    absent "$data/Verify.tmp"
    use_window "$work/disk/Burnwick-$number" "$data"
fi

echo "The installer and the archive for Windows were installed, used and removed under wine."
