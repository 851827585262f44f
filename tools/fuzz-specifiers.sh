#!/usr/bin/env bash
# Fuzzes the JSON reading of the property type specifiers for SECONDS (default 300): builds the
# libFuzzer harness with clang in its own folder (FUZZ_BUILD, default build-fuzz), seeds the
# corpus with the JSON of each kind and stops at the first crash or at an input that takes
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
cmake --build "$dir" --target fuzz_type_specifiers -j "${JOBS:-2}"
corpus="$dir/specifier-corpus"
mkdir -p "$corpus"
printf '{"type":"Enum","values":[1,{"ref":2,"desc":"two"}],"allow_custom_value":false}' >"$corpus/integers.json"
printf '{"type":"Enum","values":[0.1,{"ref":1e308}],"allow_custom_value":true}' >"$corpus/reals.json"
printf '{"type":"Enum","values":["NEW",{"ref":"OLD","desc":"\\u00e4lt"}],"allow_custom_value":false}' >"$corpus/texts.json"
printf '{"type":"Formula","values":"Width * Height"}' >"$corpus/formula.json"
printf '{"type":"ParentRef","values":"FireRating"}' >"$corpus/parent.json"
printf '{"type":"ValueDefinition","values":"NetArea"}' >"$corpus/value.json"
printf '{"type":"Extended","values":"<TypePropertyListValue/>"}' >"$corpus/extended.json"
"$dir/bin/fuzz_type_specifiers" -max_total_time="$seconds" -timeout=10 -max_len=4096 -print_final_stats=1 "$corpus"
