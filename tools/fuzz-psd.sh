#!/usr/bin/env bash
# Fuzzes the property-set definition reader and writer for SECONDS (default 300): builds the
# libFuzzer harness (see fuzz-build.sh), seeds the
# corpus with the official definition files and a dictionary of their element and type names,
# and stops at the first crash, at a set that does not read back as it was written or does not
# come back from the library's records as it was, or at an input that takes longer than 10 s.
source "$(dirname "$0")/fuzz-build.sh"
build_fuzzer fuzz_psd_reader
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
