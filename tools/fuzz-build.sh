# Sourced by the fuzz-*.sh scripts: goes to the repository's root, reads SECONDS (first argument,
# default 300) and builds the libFuzzer harness named by build_fuzzer with clang in its own
# folder (FUZZ_BUILD, default build-fuzz). Warnings are not errors there: the gate is the main
# build with gcc.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
seconds=${1:-300}
dir=${FUZZ_BUILD:-build-fuzz}

build_fuzzer() {
    local launcher=()
    if command -v ccache >/dev/null; then
        launcher=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
    fi
    cmake -S . -B "$dir" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ \
        -DVL_BUILD_FUZZERS=ON -DVL_BUILD_BENCH=OFF -DVL_WERROR=OFF "${launcher[@]}" >/dev/null
    cmake --build "$dir" --target "$1" -j "${JOBS:-2}"
}
