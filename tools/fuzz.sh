#!/bin/bash
# Gives a reader of untrusted bytes inputs that clang's fuzzer makes up, see docs/fuzzing.md.
#
#   tools/fuzz.sh READER [SECONDS]            the long run (600 s); what it finds new goes into tests/fuzz/corpus
#   tools/fuzz.sh --short READER SECONDS      leaves the corpus as it is
#   tools/fuzz.sh --coverage                  the lines that the corpus reaches
#   tools/fuzz.sh --list                      the readers
#
# An input that crashes, is read wrong, takes over 5 seconds or over 512 MiB ends the run with an error, and is kept
# in build/fuzz/READER.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

corpus=tests/fuzz/corpus
limits=(-max_len=8192 -timeout=5 -rss_limit_mb=512 -malloc_limit_mb=64)
# What was freed is kept for a while, which is not what a reader needs.
export ASAN_OPTIONS=quarantine_size_mb=32

readers() { find tests/fuzz -maxdepth 2 -name '*.cpp' ! -name reader.cpp ! -name entry_point.cpp ! -name corpus_test.cpp -printf '%f\n' | sed 's/\.cpp$//' | sort; }

build() {
    tools/install_packages.sh
    cmake --preset "$1" >"build/$1-configure.log" && cmake --build --preset "$1" "${@:2}" >"build/$1-build.log" && return
    cat "build/$1-configure.log" "build/$1-build.log" 2>/dev/null | tail -n 40
    return 1
}

# run READER SECONDS: what is new goes to build/fuzz/READER/new.
run() {
    local work=build/fuzz/$1 program=build/linux-fuzz/fuzz/fuzz_$1
    mkdir -p "$work/new" "$work/seeds" "$corpus/$1"
    "$program" --seeds "$work/seeds"
    "$program" "${limits[@]}" -max_total_time="$2" -print_final_stats=1 -artifact_prefix="$work/" \
        "$work/new" "$corpus/$1" "$work/seeds" 2>"$work/log" || { tail -n 60 "$work/log"; return 1; }
    sed -n 's/^stat::number_of_executed_units: */executions: /p; s/^stat::peak_rss_mb: */peak MiB: /p' "$work/log"
    grep -E 'cov: ' "$work/log" | tail -n 1
}

# Keeps the few inputs that reach as many edges, however often, and each find that was named by hand.
merge() {
    local work=build/fuzz/$1 program=build/linux-fuzz/fuzz/fuzz_$1
    rm -rf "$work/merged"
    mkdir -p "$work/merged"
    "$program" "${limits[@]}" -merge=1 -use_counters=0 -artifact_prefix="$work/" "$work/merged" "$corpus/$1" "$work/seeds" "$work/new" \
        2>"$work/merge.log" || { tail -n 60 "$work/merge.log"; return 1; }
    find "$corpus/$1" -type f ! -name 'find-*' -delete
    mv "$work/merged/"* "$corpus/$1/"
    rm -rf "$work/new"
    echo "corpus: $(find "$corpus/$1" -type f | wc -l) inputs, $(du -bs "$corpus/$1" | cut -f 1) bytes"
}

# The lines of the product's own code that a reader's program holds, and how many of them its corpus runs.
coverage() {
    local reader work program
    build linux-fuzz-coverage
    for reader in $(readers); do
        work=build/fuzz/$reader program=build/linux-fuzz-coverage/fuzz/fuzz_$reader
        mkdir -p "$work"
        LLVM_PROFILE_FILE=$work/profile.raw "$program" -runs=0 "$corpus/$reader" 2>/dev/null
        llvm-profdata merge -o "$work/profile" "$work/profile.raw"
        llvm-cov report "$program" -instr-profile="$work/profile" -ignore-filename-regex='(^/usr/|/tests/|testing_)' \
            >"$work/coverage"
        # The columns of regions, functions, lines and branches: count, missed, share.
        awk -v reader="$reader" '/^TOTAL/ { print reader ": " $8 - $9 " of " $8 " lines, " $11 - $12 " of " $11 " branches" }' \
            "$work/coverage"
    done
}

mkdir -p build
case ${1:-} in
    --list) readers ;;
    --coverage) coverage ;;
    --short)
        [ $# -eq 3 ] || { echo "tools/fuzz.sh --short READER SECONDS" >&2; exit 2; }
        run "$2" "$3"
        ;;
    '' | -*) sed -n '2,10s/^# \{0,1\}//p' "${BASH_SOURCE[0]}" >&2; exit 2 ;;
    *)
        build linux-fuzz
        run "$1" "${2:-600}"
        merge "$1"
        ;;
esac
