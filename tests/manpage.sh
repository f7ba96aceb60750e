#!/usr/bin/env bash
# manpage.sh PROGRAM: compares the man page and the completion with what the program's own --help says, both ways:
# verbs, each verb's options and their values. Also the exit statuses with those of the source, and the page's form.
set -euo pipefail
if [ $# -ne 1 ] || [ ! -x "$1" ]; then
    echo "Usage: tests/manpage.sh PROGRAM" >&2
    exit 64
fi
program=$1
root=$(cd "$(dirname "$0")/.." && pwd)
page=$root/packaging/burnwick-cli.1
# shellcheck source=/dev/null
. "$root/packaging/burnwick-cli.bash"

failed=0
# same WHAT EXPECTED GOT: two lists of words, in any order.
same() {
    local missing more
    missing=$(comm -23 <(sorted "$2") <(sorted "$3") | paste -sd ' ')
    more=$(comm -13 <(sorted "$2") <(sorted "$3") | paste -sd ' ')
    if [ -n "$missing$more" ]; then
        echo "$1: ${missing:+missing: $missing }${more:+not in the program: $more}" >&2
        failed=1
    fi
}
sorted() {
    tr -s '[:space:]' '\n' <<<"$1" | sed '/^$/d' | LC_ALL=C sort -u
}

# What completion offers behind these words.
offers() {
    local COMPREPLY=() COMP_WORDS=(burnwick-cli "$@")
    local COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
    _burnwick_cli burnwick-cli "${*: -1}" "${COMP_WORDS[COMP_CWORD - 1]}" || true
    echo "${COMPREPLY[*]-}"
}
options_of() {
    grep -oE -- '--[a-z][a-z-]*' <<<"$1" || true
}
# The lines of a help text that begin with an option.
option_lines() {
    grep -E '^ +(-[A-Za-z], ?)?--' <<<"$1"
}

if ! mandoc -T lint -W warning "$page"; then
    echo "mandoc finds fault with the man page." >&2
    failed=1
fi
text=$(mandoc -T ascii -O width=1000 "$page" | sed 's/.\x08//g')
section() {
    awk -v name="$1" '/^[A-Z]/ { inside = ($0 == name); next } inside' <<<"$text"
}
synopsis=$(section SYNOPSIS)

help=$("$program" --help)
verbs=$(awk '/^[A-Z]/ { inside = /^Subcommands:/; next } inside && /^  [a-z]/ { print $1 }' <<<"$help")
if [ -z "$verbs" ]; then
    echo "The program's --help names no verbs." >&2
    exit 1
fi
same "Verbs of the man page" "$verbs" "$(awk '$2 ~ /^[a-z]/ { print $2 }' <<<"$synopsis")"
same "Verbs of the completion" "$verbs" "$(offers '')"
own=$(options_of "$(option_lines "$help")")
same "Options without a verb in the man page" "$own" "$(options_of "$(awk '$2 !~ /^[a-z]/' <<<"$synopsis")")"
same "Options without a verb in the completion" "$own" "$(offers --)"

all=$own
for verb in $verbs; do
    lines=$(option_lines "$("$program" "$verb" --help)")
    options=$(options_of "$(sed -E 's/(--[a-z-]+).*/\1/' <<<"$lines")")
    all+=" $options"
    # "[VERB] --help" stands in a line of its own.
    shown=$(awk -v verb="$verb" '$2 == verb' <<<"$synopsis")
    same "Options of $verb in the man page" "$options" "$(options_of "$shown") --help"
    same "Options of $verb in the completion" "$options" "$(offers "$verb" --)"
    # "--baud SPEED:{9600,57600,115200}"
    while read -r option values; do
        same "Values of $verb $option in the completion" "${values//,/ }" "$(offers "$verb" "$option" '')"
        for value in ${values//,/ }; do
            if ! grep -qw -- "$value" <<<"$text"; then
                echo "$option $value is not in the man page." >&2
                failed=1
            fi
        done
    done < <(sed -nE 's/.*(--[a-z-]+) [^{]*\{([^}]*)\}.*/\1 \2/p' <<<"$lines")
done
explained=$(section DESCRIPTION | sed -nE 's/^ +(--[a-z-]+)( [A-Z]+)?( .*)?$/\1/p')
same "Options that the man page explains" "$all" "$explained"

statuses=$(sed -nE 's/^ +[A-Za-z]+ = ([0-9]+),.*/\1/p' "$root/src/cli/ExitStatus.h")
same "Exit statuses of the man page" "$statuses" "$(section 'EXIT STATUS' | sed -nE 's/^ {1,6}([0-9]+)( .*)?$/\1/p')"

[ "$failed" -eq 0 ] || exit 1
echo "$(wc -w <<<"$verbs") verbs, $(sorted "$all" | wc -l) options and $(wc -w <<<"$statuses") exit statuses:" \
    "the man page and the completion tell the same as the program."
