#!/usr/bin/env bash
# Checks that every message which the sources can show stands in docs/manual/04-messages.md, word for word. Prints the
# missing ones, each behind its file.
#
# What counts as a message: each string literal of src/, without comments, cut at its line breaks, that has two words
# or ends with a full stop. What the code inserts stands between two literals, so the page may hold any example there;
# runs of blanks count as one. Left out are the files and the texts of the two lists below: add what is no message.
set -euo pipefail
cd "$(dirname "$0")/.."
page=docs/manual/04-messages.md

# Files whose texts are never shown as messages: formats of files and of the desktop, fields of images and records,
# and what --help prints (tests/manpage.sh looks after that).
is_elsewhere() {
    case $1 in
    src/platform/serial/linux/TtyErrors.cpp) return 1 ;;
    src/settings/DesktopEntry.cpp | src/settings/EntryShell.cpp | src/settings/MimeDefaults.cpp) return 0 ;;
    src/platform/*/linux/* | src/platform/*/qt/* | src/image/TextFields.cpp | src/log/ActivityLog.cpp | src/cli/*Verb.h) return 0 ;;
    *) return 1 ;;
    esac
}

# Texts that are no messages, one a line.
no_messages=$(
    cat <<'END'
Programs, reads and checks the flash memory of a video unit over a serial line
A unit's flash memory is being programmed or read
Burnwick writes images into units over a serial line
Burnwick Help
Burnwick (OEM) Help
&Flash with Burnwick
Date stamp
Image file
, type code ends in
, boot code
, 57600 bit/s at most
, up to 115200 bit/s
, tells its own length
, the unit is asked what it is
ReceiveMessage: SecTimeout =
ReceiveMessage: Block/RxMessage =
ReceiveMessage: RxFlashRequest =
ReceiveMessage: Block/Address =
SendMessage: VDR_FLASH_REQUEST
The port number cannot be changed while the port is open
The line cannot be set to "
The port is already open
The port is not open
Error: The comparison was ended
Select File 1
Select File 2
Binary File (*.Bin)
Select All
%.1f KB/s, %ld:%02ld left
END
)

# literals FILE: its messages, one a line, blanks around them taken off.
literals() {
    sed -E 's#^ *//.*##; s#  // .*##; /^ *\#/d' "$1" \
        | sed -zE 's#\<arguments\.Add[^;]*;##g' \
        | sed -E "s#'\\\\?\"'##g" \
        | grep -oE '"(\\.|[^"\\])*"' \
        | sed -E 's/^"//; s/"$//; s/\\"/"/g; s/\\[ntr]/\n/g' \
        | sed -E 's/[[:blank:]]+/ /g; s/^ //; s/ $//' \
        | grep -E '[[:alpha:]][[:punct:]]* [[:alpha:]]|[[:alpha:]]{3}\.+$' || true
}

shown=$(sed 's/<br>//g' "$page" | tr -s '[:space:]' ' ')
if [ -z "$shown" ]; then
    echo "$page is empty." >&2
    exit 1
fi
checked=0
missing=0
while read -r file; do
    is_elsewhere "$file" && continue
    while IFS= read -r text; do
        grep -qxF -e "$text" <<<"$no_messages" && continue
        checked=$((checked + 1))
        # Quoted, so that nothing in it is a pattern.
        if [[ $shown != *"$text"* ]]; then
            echo "$file: $text" >&2
            missing=$((missing + 1))
        fi
    done < <(literals "$file")
done < <(find src -name '*.cpp' -o -name '*.h' | LC_ALL=C sort)

if [ "$checked" -lt 100 ]; then
    echo "Only $checked messages were found in src: is the rule still right?" >&2
    exit 1
fi
if [ "$missing" -gt 0 ]; then
    echo "$missing messages are missing in $page: tell what they mean, and what to do." >&2
    exit 1
fi
echo "$checked messages of the sources stand in the manual."
