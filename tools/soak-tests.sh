#!/usr/bin/env bash
# Soak test of the test run itself: ROUNDS rounds (default 10) of two full ctest runs side by
# side, as two `make test` sharing the machine. By default both runs share one Xvfb; with
# --two-servers each gets its own. Prints one line per round, keeps the logs of failed runs in
# LOGS (default $BUILD/soak-logs) and exits non-zero unless every run of every round passed.
#
#   tools/soak-tests.sh [ROUNDS] [--two-servers]     (BUILD=build, JOBS=nproc)
set -uo pipefail
cd "$(dirname "$0")/.."
rounds=10
servers=one
for arg in "$@"; do
    case $arg in
        --two-servers) servers=two ;;
        ''|*[!0-9]*) echo "usage: $0 [ROUNDS] [--two-servers]" >&2; exit 2 ;;
        *) rounds=$arg ;;
    esac
done
build=$(realpath "${BUILD:-build}")
jobs=${JOBS:-$(nproc)}
logs=${LOGS:-$build/soak-logs}
xvfb_args="-screen 0 1600x1000x24 -noreset"
mkdir -p "$logs"

# One ctest run as a shell command: its output goes to $1, its exit code to $1.rc.
suite() {
    printf '(cd %q && ctest -j %q --output-on-failure >%q 2>&1; echo $? >%q.rc)' "$build" "$jobs" "$1" "$1"
}

passed_rounds=0
failed_runs=0
for round in $(seq "$rounds"); do
    a=$logs/round$round-a.log
    b=$logs/round$round-b.log
    start=$(date +%s)
    if [ "$servers" = one ]; then
        xvfb-run -a -s "$xvfb_args" bash -c "$(suite "$a") & $(suite "$b") & wait"
    else
        xvfb-run -a -s "$xvfb_args" bash -c "$(suite "$a")" &
        xvfb-run -a -s "$xvfb_args" bash -c "$(suite "$b")" &
        wait
    fi
    verdict=passed
    for log in "$a" "$b"; do
        if [ "$(cat "$log.rc" 2>/dev/null)" = 0 ]; then
            rm -f "$log" "$log.rc"
        else
            verdict=FAILED
            failed_runs=$((failed_runs + 1))
            grep -E '^\s+[0-9]+ - ' "$log" | sed "s|^|    round $round $(basename "$log" .log): |"
        fi
    done
    [ "$verdict" = passed ] && passed_rounds=$((passed_rounds + 1))
    echo "round $round of $rounds: $verdict ($(( $(date +%s) - start )) s)"
done
echo "$passed_rounds of $rounds rounds passed; $failed_runs failed runs (logs in $logs)"
[ "$failed_runs" -eq 0 ]
