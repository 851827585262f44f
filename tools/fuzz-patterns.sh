#!/usr/bin/env bash
# Fuzzes the .pat reader together with the pattern tracer for SECONDS (default 300): builds the
# libFuzzer harness with clang in its own folder (FUZZ_BUILD, default build-fuzz), seeds the
# corpus with the host's pattern file and stops at the first crash or at an input that takes
# longer than 10 s. Warnings are not errors there: the gate is the main build with gcc.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-300}
dir=${FUZZ_BUILD:-build-fuzz}
launcher=()
if command -v ccache >/dev/null; then
    launcher=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi
cmake -S . -B "$dir" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ \
    -DVL_BUILD_FUZZERS=ON -DVL_BUILD_BENCH=OFF -DVL_WERROR=OFF "${launcher[@]}" >/dev/null
cmake --build "$dir" --target fuzz_pattern_tracer -j "${JOBS:-2}"
corpus="$dir/pattern-corpus"
mkdir -p "$corpus"
cp res/patterns/vantlib.pat "$corpus/host.pat"
printf '*GAPS\n45, 0,0, 0,10, -1e-9\n' >"$corpus/gaps.pat"
printf '*TINY\n0, 0,0, 0,1, 1e-12,-1e-12\n' >"$corpus/tiny.pat"
"$dir/bin/fuzz_pattern_tracer" -max_total_time="$seconds" -timeout=10 -max_len=4096 -print_final_stats=1 "$corpus"
