# Completion of burnwick-cli for bash. It needs no helpers, and is not disturbed by any that are loaded.
# shellcheck shell=bash

# Offers files, by names that compgen filters; readline then quotes what needs it.
_burnwick_cli_files() {
    mapfile -t COMPREPLY < <(compgen "$@")
    compopt -o filenames 2>/dev/null
}

# _burnwick_cli_ports WORD: offers COM numbers, in either case, and devices; files for a path that is none of those.
_burnwick_cli_ports() {
    local port prefix
    while read -r port; do
        [[ $port != "${1//\\/}"* && $port != "${1^^}"* ]] || COMPREPLY+=("$port")
    done < <(
        printf '%s\n' COM{1..16}
        for prefix in /dev/ttyS /dev/ttyUSB /dev/ttyACM /dev/serial/by-id/; do
            compgen -f -- "$prefix"
        done
    )
    [[ ${#COMPREPLY[@]} -gt 0 || $1 != */* ]] || _burnwick_cli_files -f -- "$1"
}

# Called by bash with the command, the word to complete and the word before it.
_burnwick_cli() {
    local IFS=$' \t\n'
    local cur=${2-} verb='' option='' arguments=0 index word
    COMPREPLY=()

    # Bash makes words of their own of "=" and ">". Behind the loop `option` is what waits for its value.
    for ((index = 1; index < COMP_CWORD; index++)); do
        word=${COMP_WORDS[index]}
        if [[ $word == '=' ]]; then
            continue
        elif [[ -n $option ]]; then
            option=
        elif [[ $word == @(--port|--baud|--chip|+([<>&])) ]]; then
            option=$word
        elif [[ $word == -* ]]; then
            continue
        elif [[ -z $verb ]]; then
            verb=$word
        else
            arguments=$((arguments + 1))
        fi
    done

    case $option in
    --port)
        _burnwick_cli_ports "$cur"
        return
        ;;
    --baud)
        mapfile -t COMPREPLY < <(compgen -W '9600 57600 115200' -- "$cur")
        return
        ;;
    --chip)
        mapfile -t COMPREPLY < <(compgen -W '1Mbit 2Mbit 4Mbit 8Mbit' -- "$cur")
        return
        ;;
    ?*)
        _burnwick_cli_files -f -- "$cur"
        return
        ;;
    esac

    # What the verb takes: options, so many files, and the files that are left out.
    local run='--port --baud --quiet --json --help' options='' files=0 except=''
    case $verb in
    '') options='--help --version' ;;
    download) options="--verify $run" files=1 except='!*.[Bb][Ii][Nn]' ;;
    upload) options="--chip --force $run" files=1 ;;
    verify) options=$run files=1 except='!*.[Bb][Ii][Nn]' ;;
    info) options='--json --help' files=$((arguments + 1)) except='!*.[Bb][Ii][Nn]' ;;
    compare) options='--quiet --json --help' files=2 ;;
    ports) options='--json --help' ;;
    esac

    if [[ -z $verb && $cur != -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W 'download upload verify info compare ports' -- "$cur")
    elif [[ $cur != -* && $arguments -lt $files ]]; then
        _burnwick_cli_files -f -o plusdirs -X "$except" -- "$cur"
    else
        local others=" ${COMP_WORDS[*]:0:COMP_CWORD} ${COMP_WORDS[*]:COMP_CWORD + 1} "
        for word in $options; do
            [[ $word != "$cur"* || $others == *" $word "* ]] || COMPREPLY+=("$word")
        done
    fi
}

complete -F _burnwick_cli burnwick-cli
