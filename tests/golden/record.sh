#!/usr/bin/env bash
# record.sh BIN: writes anew what the programs say for every outcome of a run, as the test programs in BIN see it. Read
# the difference before you commit it.
set -euo pipefail
cd "$(dirname "$0")"
bin=$1
rm -rf cli window
export BURNWICK_RECORD=1
"$bin/cli_tests" --gtest_brief=1 --gtest_filter='CliOutcome.*:WindowOutcome.*'
"$bin/frmMain_tests" --gtest_brief=1 --gtest_filter='CliOutcome.*:WindowOutcome.*'
