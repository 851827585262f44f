#!/usr/bin/env bash
# Fuzzes the .pat reader together with the pattern tracer for SECONDS (default 300): builds the
# libFuzzer harness (see fuzz-build.sh), seeds the
# corpus with the host's pattern file and stops at the first crash or at an input that takes
# longer than 10 s.
source "$(dirname "$0")/fuzz-build.sh"
build_fuzzer fuzz_pattern_tracer
corpus="$dir/pattern-corpus"
mkdir -p "$corpus"
cp res/patterns/vantlib.pat "$corpus/host.pat"
printf '*GAPS\n45, 0,0, 0,10, -1e-9\n' >"$corpus/gaps.pat"
printf '*TINY\n0, 0,0, 0,1, 1e-12,-1e-12\n' >"$corpus/tiny.pat"
"$dir/bin/fuzz_pattern_tracer" -max_total_time="$seconds" -timeout=10 -max_len=4096 -print_final_stats=1 "$corpus"
