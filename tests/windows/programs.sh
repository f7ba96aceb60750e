#!/usr/bin/env bash
# programs.sh [PROGRAM...]: runs the test programs for Windows under wine, all of them or those that are named, in a
# prefix that is thrown away. Prints one line of each with the tests that were skipped, and what failed: so does one that
# was skipped unexpectedly. GTEST_TOTAL_SHARDS and GTEST_SHARD_INDEX choose a part of their tests.
# shellcheck source=tests/windows/trial.sh
source "$(dirname "$0")/trial.sh"

# Two units, one of them as slow as a real line, and a cable between two ports for the tests of a line.
start_unit "$work/line" --flash "$work/memory"
start_unit "$work/slow" --pace
start_with_line "$work/near" "$native/null_modem" "$work/near" "$work/far"
start_windows COM1 "$work/line" COM2 "$work/slow" COM7 "$work/near" COM12 "$work/far"
export BURNWICK_LINE=COM7,COM12 BURNWICK_UNIT_PORT=COM1 BURNWICK_DRIVE=C:
BURNWICK_UNIT_FLASH=$(windows_path "$work/memory")
export BURNWICK_UNIT_FLASH
# What is no device is denied in the words that a driver has for a port that is taken.
ln -s "$work" "$WINEPREFIX/dosdevices/com9"
export BURNWICK_DENIED=COM9
# A file keeps others out as a port does while somebody has it.
: >"$work/held"
ln -s "$work/held" "$WINEPREFIX/dosdevices/com10"
export BURNWICK_HELD=COM10

# What cannot be tried here. Any other test that skips itself has lost what it needs.
may_skip=(ComDeviceTest.ASecondOpenIsRefusedAsBusy SystemRegistryTest.ShowsTheUsersClassesAmongAll)
[ "$EUID" -ne 0 ] || may_skip+=(CopyToFolderOnWindows.AReadOnlyFileIsNotReplaced)

# Whoever may mount shows the tests a program on a disk that cannot be written.
if small_disk 50m 'settings and log of a program on a disk that cannot be written'; then
    cp "$bin/windows_child.exe" "$work/disk"
    mount -o remount,ro "$work/disk"
    BURNWICK_READ_ONLY_FOLDER=$(windows_path "$work/disk")
    export BURNWICK_READ_ONLY_FOLDER
else
    may_skip+=(InstalledSettingsTest.AreTheUsersOwnBesideAProgramThatLiesWhereNobodyMayWrite
        InstalledSettingsTest.AreNotKeptInAFolderThatNobodyMayWrite
        ProgramFolderTest.IsTheUsersDataFolderWhereTheProgramsOwnCannotBeWritten)
fi

# skipped: the names of the tests that the log in this folder tells of.
skipped() {
    tr -d '\r' <log | sed -n 's/^\[  SKIPPED \] \([^ ]*\.[^ ]*\).*/\1/p' | sort -u
}
# skipped_unexpectedly: those of them that were to run.
skipped_unexpectedly() {
    skipped | grep -vxF -f <(printf '%s\n' "${may_skip[@]}")
}

folder=$work language=()
# run_tests NAME [OPTION...]: in a folder of its own. A filter that lets nothing through has gone out of date.
run_tests() {
    local name=$1 begun=$SECONDS
    mkdir "$folder/$name"
    cd "$folder/$name"
    if ! timeout 900 env "${language[@]}" wine "$bin/$name.exe" "${@:2}" >log 2>&1 </dev/null \
        || ! grep -q '^\[  PASSED  \] [1-9]' log; then
        printf '== %s\n' "$name"
        # Those that went well, and wine's own words, are not to hide the others.
        grep -vE '^(\[ RUN      \]|\[       OK \]|\[-----|wine: |.?$)' log
        return 1
    fi
    tr -d '\r' <log | awk -v name="$name" -v seconds="$((SECONDS - begun))" '
        /^\[  PASSED  \]/ { passed = $4 }
        END { printf "%-28s %5d s  passed %d\n", name, seconds, passed }'
    skipped | sed 's/^/    skipped /'
    if skipped_unexpectedly >unexpected; then
        sed 's/^/It should have run: /' unexpected
        return 1
    fi
}

# Programs with windows share one desktop and one clipboard: one at a time.
programs=("$@")
[ $# -gt 0 ] || mapfile -t programs < <(cd "$bin" && printf '%s\n' *_tests.exe | sed 's/\.exe$//')
bad=0
for program in "${programs[@]}"; do
    (run_tests "$program") || bad=1
done
[ "$bad" -eq 0 ] || fail "Tests failed under wine."
[ $# -eq 0 ] || exit 0

# In a language whose programs write other 8-bit characters.
folder=$work/russian language=("LOCPATH=$work/locales" LC_ALL=ru_RU.UTF-8)
mkdir "$work/locales" "$folder"
localedef -i ru_RU -f UTF-8 "$work/locales/ru_RU.UTF-8"
same "The code page in Russia" 1251 "$(env "${language[@]}" wine "$bin/windows_child.exe" code-page | tr -d '\r')"
in_russian() {
    (run_tests "$1" --gtest_filter="$2") || fail "Tests failed under wine in Russian."
}
may_skip+=(LogText.ReadsALineThatIsNotUtf8AsAnOlderLogsCodePage LogText.TakesNoBrokenCharacterForUtf8)
in_russian windows_platform_tests 'EightBit*:*Settings*:*Command*:*Assoc*'
in_russian log_tests 'LogText*'

echo "${#programs[@]} test programs ran under wine."
