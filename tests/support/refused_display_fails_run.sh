#!/bin/sh
# A test whose suite cannot open its display must fail the ctest run, never count as skipped.
# Runs the ctest tests matching $2 in the build folder $1 against a display that is not there.
build=$1
tests=$2
log=$(mktemp)
trap 'rm -f "$log"' EXIT
if DISPLAY=:59999 ctest --test-dir "$build" -R "$tests" --output-on-failure >"$log" 2>&1; then
    cat "$log"
    echo "ctest passed a run whose display was refused"
    exit 1
fi
if ! grep -q "(Failed)" "$log" || grep -q "(Skipped)\|(Not Run)" "$log"; then
    cat "$log"
    echo "the refused display did not show as a failed test"
    exit 1
fi
