#!/usr/bin/env bash
# Fuzzes the property-set definition reader and writer for SECONDS (default 300): builds the
# libFuzzer harness with clang in its own folder (FUZZ_BUILD, default build-fuzz), seeds the
# corpus with the official definition files and a dictionary of their element and type names,
# and stops at the first crash, at a set that does not read back as it was written or does not
# come back from the library's records as it was, or at an input that takes longer than 10 s. Warnings are not errors there: the gate is the main build.
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
cmake --build "$dir" --target fuzz_psd_reader -j "${JOBS:-2}"
corpus="$dir/psd-corpus"
mkdir -p "$corpus"
cp res/psd/IFC4_ADD2_TC1/*.xml "$corpus/"
printf '<?xml version="1.0" encoding="ISO-8859-1"?>\n<PropertySetDef><Name>P\xe9</Name></PropertySetDef>\n' \
    >"$corpus/latin1.xml"
# The dictionary: every element, attribute and data type name of the official files.
dict="$dir/psd.dict"
cat res/psd/IFC4_ADD2_TC1/*.xml | grep -o -E '</?[A-Za-z]+|[a-z:]+="|"Ifc[A-Za-z]+"|Q_[A-Z]+|PSET_[A-Z]+' |
    sort -u | sed 's/\\/\\\\/g; s/"/\\"/g; s/.*/"&"/' >"$dict"
printf '"&#13;"\n"&#32;"\n"<![CDATA["\n"]]>"\n"<!DOCTYPE "\n"<!ENTITY "\n"xmlns:psd=\\"http://buildingSMART-tech.org/xml/psd/PSD_IFC4.xsd\\""\n' >>"$dict"
"$dir/bin/fuzz_psd_reader" -max_total_time="$seconds" -timeout=10 -max_len=65536 -dict="$dict" \
    -print_final_stats=1 "$corpus"
