#!/usr/bin/env bash
# The layers are law: who may include whom, and where the system may be met. Prints each breach.
set -euo pipefail
cd "$(dirname "$0")/.."

breaches=0
# breach WHAT PATTERN PATH...: no line of these files may match.
breach() {
    local what=$1 pattern=$2
    shift 2
    if grep -rnE --include='*.h' --include='*.cpp' "$pattern" "$@"; then
        echo "^ $what" >&2
        breaches=1
    fi
}
# Forms and controls live beside the core that they show, and are no part of it.
forms=(--exclude='frm*' --exclude='PercentBar.*' --exclude='LogBox.*')

core=(src/engine src/image src/log src/settings src/ports src/job)
system='#include <(sys/|linux/|unistd|fcntl|poll|termios|signal\.h|windows)'

breach "nothing above the platform layer knows a system" "$system" \
    "${core[@]}" src/forms src/cli src/tools src/app
breach "core knows no Qt" '#include (<Q|"ui_)' "${forms[@]}" "${core[@]}"
breach "core knows no form" '#include "(forms/|.*/(frm|PercentBar\.h))' "${forms[@]}" "${core[@]}" src/cli
breach "the command line knows no Qt" '#include (<Q|"tools/)' src/cli
breach "the shared platform code knows no system and no Qt" '#include <(sys/|linux/|unistd|fcntl|poll|termios|signal\.h|windows|Q[A-Z])' \
    src/platform/*/*.h src/platform/*/*.cpp
breach "system switches live in CMake and the platform folder" '#if.*(_WIN32|__linux__|__unix__)' \
    "${core[@]}" src/forms src/cli src/tools src/app simulator
breach "engine stands on platform only" '#include "(settings|ports|job|cli|app|log|image|tools)/' src/engine
breach "image needs nobody but the path of a text" \
    '#include "(engine|settings|ports|job|cli|app|log|tools|platform/([^f]|files/[^U]))' src/image
breach "log stands on platform only" '#include "(engine|settings|ports|job|cli|app|image|tools)/' src/log
breach "settings stands on platform only" '#include "(engine|ports|job|cli|app|log|image|tools)/' src/settings
breach "ports stands on platform only" '#include "(engine|settings|job|cli|app|log|image|tools)/' src/ports
breach "what forms share stands on platform only" '#include "(engine|settings|ports|job|cli|app|log|image|tools)/' src/forms
breach "job stands below cli and app" '#include "(cli|app|tools)/' src/job
breach "tools stands below cli and app" '#include "(cli|app)/' src/tools
breach "platform stands on nothing" '#include "(forms|engine|settings|ports|job|cli|app|log|image|tools)/' src/platform
breach "only the platform's own folder includes a system's" '#include "platform/[a-z]+/(linux|windows|qt)/' \
    "${core[@]}" src/forms src/cli src/tools src/app src/platform/*/*.h src/platform/*/*.cpp
breach "a source includes headers only" '#include ".*\.cpp"' src simulator tests bench
breach "the simulated unit shares nothing with the rest" \
    '#include "(engine|settings|ports|job|cli|app|log|image|tools|platform)/' simulator
breach "the program does not know the simulated unit" '#include "simulator/' src
exit "$breaches"
