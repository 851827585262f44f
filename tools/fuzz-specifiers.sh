#!/usr/bin/env bash
# Fuzzes the JSON reading of the property type specifiers for SECONDS (default 300): builds the
# libFuzzer harness (see fuzz-build.sh), seeds the
# corpus with the JSON of each kind and stops at the first crash or at an input that takes
# longer than 10 s.
source "$(dirname "$0")/fuzz-build.sh"
build_fuzzer fuzz_type_specifiers
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
