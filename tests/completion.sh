#!/usr/bin/env bash
# Asks the completion of burnwick-cli for its answers, in a bash without helpers and in one that has loaded those of
# the bash-completion package. Prints one line a result.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
helpers=/usr/share/bash-completion/bash_completion

if [ "${1-}" != --inside ]; then
    status=0
    for kind in plain helped; do
        env -i PATH="$PATH" LC_ALL=C.UTF-8 bash --noprofile --norc "$0" --inside "$kind" || status=1
    done
    exit "$status"
fi

kind=$2
if [ "$kind" = helped ]; then
    # It is not written for these options.
    set +eu
    # shellcheck source=/dev/null
    . "$helpers" || exit 1
    set -eu
fi
# shellcheck source=/dev/null
. "$root/packaging/burnwick-cli.bash"

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
mkdir 'old images'
touch firmware.bin 'firm ware.bin' BACKUP.BIN notes.txt 'old images/new one.bin'

# Outside of a real completion there are no options to set: what would be set is noted.
# shellcheck disable=SC2317
compopt() {
    said="$*"
}

failed=0
# Splits a call into words as readline does, "=" apart, and prints what is offered for its last word, sorted, with
# a bar between. "files" in front means that readline is to treat the offers as file names.
offers() {
    local said='' COMPREPLY=() COMP_WORDS=("$@")
    local COMP_CWORD=$((${#COMP_WORDS[@]} - 1)) cur=${*: -1}
    [ "$cur" != = ] || cur=
    case $(complete -p burnwick-cli) in
    *' -F _burnwick_cli burnwick-cli') ;;
    *) echo "not registered" ;;
    esac
    _burnwick_cli burnwick-cli "$cur" "${COMP_WORDS[COMP_CWORD - 1]}" || true
    [ ${#COMPREPLY[@]} -gt 0 ] || return 0
    [ "$said" != '-o filenames' ] || printf 'files: '
    printf '%s\n' "${COMPREPLY[@]}" | LC_ALL=C sort | paste -sd '|'
}

# check NAME EXPECTED WORD...: EXPECTED is a pattern.
check() {
    local name=$1 expected=$2 got
    shift 2
    got=$(offers burnwick-cli "$@")
    # shellcheck disable=SC2053
    if [[ $got == $expected ]]; then
        echo "ok      $kind: $name"
    else
        printf 'FAILED  %s: %s\n  expected: %s\n  offered:  %s\n' "$kind" "$name" "$expected" "$got"
        failed=1
    fi
}

images='BACKUP.BIN|firm ware.bin|firmware.bin|old images'
check 'every verb' 'compare|download|info|ports|upload|verify' ''
check 'a verb begun' 'download' dow
check 'no such verb' '' flash ''
check 'options without a verb' '--help|--version' --
check 'images and folders' "files: $images" download ''
check 'images to verify' "files: $images" verify ''
check 'a name with a blank' 'files: firm ware.bin|firmware.bin' download fir
check 'in a folder with a blank' 'files: old images/new one.bin' download 'old images/'
check 'one image only' '' download firmware.bin fir
check 'options behind the image' '--baud|--help|--json|--port|--quiet|--verify' download firmware.bin ''
check 'options in front of it' '--verify' download --v
check 'an image behind options' "files: $images" download --port COM5 --verify ''
check 'no option twice' '' download firmware.bin --verify --v
check 'any file to upload into' 'files: notes.txt' upload no
check 'options of upload' '--baud|--chip|--force|--help|--json|--port|--quiet' upload backup.bin --
check 'chips' '1Mbit|2Mbit|4Mbit|8Mbit' upload backup.bin --chip ''
check 'speeds' '115200|57600|9600' verify firmware.bin --baud ''
check 'a speed behind "="' '115200' verify firmware.bin --baud = 1
check 'speeds behind "="' '115200|57600|9600' verify firmware.bin --baud =
check 'an option behind "="' '--quiet' verify firmware.bin --baud = 9600 --q
check 'ports' '*COM1|COM10|COM11|*|COM16|COM2|*|COM8|COM9' download --port ''
check 'a port in small letters' 'COM16' download --port com16
check 'a line of its own' 'files: ./notes.txt' download --port ./n
check 'image upon image' "files: $images" info firmware.bin BACKUP.BIN ''
check 'options of info' '--help|--json' info --
check 'the second file' 'files: notes.txt' compare firmware.bin no
check 'no third file' '--help|--json|--quiet' compare firmware.bin BACKUP.BIN ''
check 'nothing but options' '--help|--json' ports ''
check 'a redirection' 'files: notes.txt' ports '>' no
devices=$(compgen -G '/dev/ttyS*' | LC_ALL=C sort | paste -sd '|' || true)
check 'devices' "$devices" download --port /dev/ttyS

# Quoting is readline's work: these are typed into a terminal, with a tab at the end, and what the program would be
# called with is looked at.
cat >rcfile <<END
HISTFILE=
PS1=
bind 'set enable-bracketed-paste off'
if [ "$kind" = helped ]; then . "$helpers"; fi
. "$root/packaging/burnwick-cli.bash"
burnwick-cli() { printf '<%s>' "\$@" >called; }
END
typed() {
    local name=$1 expected=$2 line=$3 got
    rm -f called
    printf '%s\t\nexit\n' "$line" \
        | HOME=$work TERM=dumb INPUTRC=/dev/null timeout 60 script -qec 'bash --rcfile rcfile -i' /dev/null \
            >typed.log 2>&1 || true
    got=$(cat called 2>/dev/null || true)
    if [ "$got" = "$expected" ]; then
        echo "ok      $kind: $name"
    else
        printf 'FAILED  %s: %s\n  expected: %s\n  called:   %s\n' "$kind" "$name" "$expected" "$got"
        cat typed.log
        failed=1
    fi
}
typed 'typed: a verb' '<download>' 'burnwick-cli dow'
typed 'typed: a name with a blank' '<download><firm ware.bin>' 'burnwick-cli download firm\ w'
typed 'typed: a name in quotes' '<download><firm ware.bin>' 'burnwick-cli download "firm w'
typed 'typed: a folder with a blank' '<verify><old images/new one.bin>' 'burnwick-cli verify old\ images/n'
typed 'typed: a speed behind "="' '<verify><x.bin><--baud=115200>' 'burnwick-cli verify x.bin --baud=1'
exit "$failed"
