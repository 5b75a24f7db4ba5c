# Many small files in folders against other programs and a plain copy.

measure_small() {
    local round original=$scratch/$group/original peer
    mkdir -p "$original"
    make_small "$original" "$small_files"
    for ((round = 1; round <= rounds; ++round)); do
        small_jobs
        small_copies
        for peer in age gpg 7z openssl; do
            small_fresh
            peer_folder $peer small "$at"
            same "$original" "$at.out"
        done
    done
}

small_fresh() {
    fresh small
    cp -r "$scratch/$group/original/." "$at"
}

small_jobs() {
    local source
    small_fresh
    source=$at
    prepare "$at"
    job_encrypts 'small encrypts' "$at"
    fresh small
    move_encrypted "$source" "$at"
    prepare "$at"
    job_decrypts 'small decrypts' "$at"
    same "$scratch/$group/original" "$at" --exclude='*.zel'
}

small_copies() {
    small_fresh
    prepare "$at"
    timed 'small cp' cp -r "$at" "$at.copy"
    prepare "$at"
    timed 'small cp durable' sh -c "cp -r '$at' '$at.again' && sync -f '$at.again'"
}

rows_small() {
    local size="$small_files files of 4 KiB" peer
    row "Encrypt $size" s 'small encrypts' 'cp -r' 'small cp' 2.5
    row "Encrypt $size" s 'small encrypts' 'cp -r and one sync' 'small cp durable'
    row "Decrypt $size" s 'small decrypts' 'cp -r' 'small cp' 2.5
    row "Decrypt $size" s 'small decrypts' 'cp -r and one sync' 'small cp durable'
    for peer in age gpg 7z openssl; do peer_rows "$size" small $peer; done
}
