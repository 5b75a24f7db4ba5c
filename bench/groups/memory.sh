# The largest memory of one job on Linux, by the size of the job; the times of these runs are not used.

measure_memory() {
    local round set
    for ((round = 1; round <= rounds; ++round)); do
        for set in 1-MiB "$megabytes-MiB" 10-files "$small_files-files"; do memory_of "$set"; done
    done
}

memory_of() {
    fresh "$1"
    if [[ $1 == *-MiB ]]; then head -c "${1%-*}M" /dev/urandom >"$at/letter"; else make_small "$at" "${1%-*}"; fi
    local source=$at
    job_encrypts "memory encrypts $1" "$at"
    timed "memory 7z encrypts $1" 7z a -mx=0 -mhe=on "-p$password" "$at.7z" "$at/."
    fresh "$1"
    move_encrypted "$source" "$at"
    job_decrypts "memory decrypts $1" "$at"
    timed "memory 7z decrypts $1" 7z x "-p$password" "-o$at.out" "$source.7z"
    if [[ $1 == *-MiB ]]; then rm -r "$at" "$at.out" "$source" "$source.7z"; fi
}

rows_memory() {
    local set work
    for work in encrypt decrypt; do
        for set in 1-MiB "$megabytes-MiB" 10-files "$small_files-files"; do
            row "Peak memory, $work ${set/-/ }" MiB "memory ${work}s $set memory" 7z "memory 7z ${work}s $set memory"
        done
    done
}
