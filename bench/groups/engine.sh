# The whole program against its engine called directly, with the same module, which has a clock in it.

# timed_program BUILD MODULE: a copy of the program folder whose engine takes its time.
timed_program() {
    mkdir -p "$area/$group"
    cp -r "build/$1/bin" "$area/$group/program"
    cp "build/$1/tests/timed/$2" "$area/$group/program/$2"
}

engine_seconds() { record "$1 engine" "$(awk '{ print $1 / 1e9 }' "$JOBRUNNER_ENGINE_TIME")"; }

linux_process() {
    export JOBRUNNER_ENGINE_TIME=$scratch/engine_time
    program=$area/$group/program/jobrunner "job_${2}s" "$1" "$3"
    engine_seconds "$1"
}

linux_direct() {
    export JOBRUNNER_ENGINE_TIME=$scratch/engine_time
    timed "$1" build/linux-release/tests/engine_benchmark "$2" "$3" "$password"
    engine_seconds "$1"
}

windows_name() { echo "Z:${1//\//\\}"; }

# answered KEY PASSWORD PROGRAM ARGUMENT...
answered() {
    local times=$area/times
    tools/wine.sh build/windows-release/tests/answered_run.exe "$(windows_name "$times")" "${@:2}" >"$scratch/said" 2>&1 || {
        cat "$scratch/said" >&2
        fail "$1: the program failed"
    }
    record "$1" "$(awk '{ print $1 / 1000 }' "$times")"
    record "$1 engine" "$(awk '{ print $2 / 1000 }' "$times")"
}

windows_process() {
    local fields='"destiny": 0' name
    [ "$2" = encrypt ] || fields='"mode": 0'
    name=$(windows_name "$3")
    printf '{"kind": "%s", %s, "files": ["%s"]}' "$2" "$fields" "${name//\\/\\\\}" >"$area/job.json"
    answered "$1" "$password" "$(windows_name "$area/$group/program/JobRunner.exe")" "$(windows_name "$area/job.json")"
}

windows_direct() {
    answered "$1" '' "$(windows_name "$PWD/build/windows-release/tests/engine_benchmark.exe")" "$2" \
        "$(windows_name "$3")" "$password"
}

compare_results() { same "$1" "$at" --exclude='*.zel'; }

# engine_run SYSTEM WHO WORK SET: on a fresh folder. A large file is moved into it and back, small ones are copied.
engine_run() {
    local system=$1 who=$2 work=$3 set=$4 input=$area/$group/input key="$1 $2 $3 $4"
    fresh "$set"
    if [ "$set" = large ]; then mv "$input/large.$work"/* "$at"; else cp -r "$input/small.$work/." "$at"; fi
    prepare "$at"
    "${system}_$who" "$key" "$work" "$at"
    # As many results as there were files; what a decryption made is compared with what was encrypted.
    [ "$(find "$at" -name '*.zel' | wc -l)" -eq "$(find "$at" -type f ! -name '*.zel' | wc -l)" ] || fail "$key: results are missing"
    if [ "$work" = decrypt ]; then compare_results "$input/$set.encrypt"; fi
    if [ "$set" = large ]; then
        if [ "$work" = encrypt ]; then rm "$at"/*.zel; else rm "$at/letter"; fi
        mv "$at"/* "$input/large.$work"
    fi
}

measure_engine() {
    local system=$1 round set work who input=$area/$group/input order
    mkdir -p "$input"/{large,small}.{encrypt,decrypt}
    make_large "$input/large.encrypt/letter"
    make_small "$input/small.encrypt" "$small_files"
    # What is decrypted is made once; every decryption gets it in a folder of its own.
    for set in large small; do
        JOBRUNNER_ENGINE_TIME='' build/linux-release/tests/engine_benchmark encrypt "$input/$set.encrypt" "$password"
        move_encrypted "$input/$set.encrypt" "$input/$set.decrypt"
    done
    for ((round = 1; round <= rounds; ++round)); do
        order='process direct'
        if [ $((round % 2)) -eq 0 ]; then order='direct process'; fi
        for set in large small; do
            for work in encrypt decrypt; do
                for who in $order; do engine_run "$system" "$who" "$work" "$set"; done
            done
        done
    done
}

measure_engine_linux() {
    area=$scratch
    timed_program linux-release vaultcore.so
    measure_engine linux
}

measure_engine_windows() {
    area=$windows_scratch
    timed_program windows-release vaultcore.dll
    measure_engine windows
    area=$scratch
}

rows_of_engine() {
    local system=$1 name=$2 work key
    for work in encrypt decrypt; do
        key="$work large"
        row "$name: $work $megabytes MiB, the engine's time" s "$system process $key engine" 'engine called directly' "$system direct $key engine" 1.05
        row "$name: $work $megabytes MiB, the whole process" s "$system process $key" 'engine called directly' "$system direct $key"
        key="$work small"
        row "$name: $work $small_files files, the engine's time" s "$system process $key engine" 'engine called directly' "$system direct $key engine" 1.10
        row "$name: $work $small_files files, the whole process" s "$system process $key" 'engine called directly' "$system direct $key"
    done
}
rows_engine_linux() { rows_of_engine linux Linux; }
rows_engine_windows() { rows_of_engine windows 'Windows (Wine)'; }
