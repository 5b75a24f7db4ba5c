# One large file against other programs and a plain copy.

measure_large() {
    local round original=$scratch/$group/original peer
    mkdir -p "$original"
    make_large "$original/letter"
    for ((round = 1; round <= rounds; ++round)); do
        large_jobs
        large_copies
        for peer in age gpg 7z openssl; do
            large_fresh
            peer_file $peer large "$at/letter"
            same "$original/letter" "$(find "$at/out" -type f)"
            rm -r "$at"
        done
    done
}

large_fresh() {
    fresh large
    cp "$scratch/$group/original/letter" "$at/letter"
}

large_jobs() {
    large_fresh
    prepare "$at"
    job_encrypts 'large encrypts' "$at/letter"
    rm "$at/letter"
    prepare "$at"
    job_decrypts 'large decrypts' "$at/letter.zel"
    same "$scratch/$group/original/letter" "$at/letter"
    rm "$at/letter.zel"
    prepare "$at"
    job_encrypts 'large moves' "$at/letter" 1
    [ ! -e "$at/letter" ] || fail 'the source is still there'
    rm -r "$at"
}

large_copies() {
    large_fresh
    prepare "$at"
    timed 'large cp' cp "$at/letter" "$at/copy"
    rm "$at/copy"
    prepare "$at"
    timed 'large cp durable' sh -c "cp '$at/letter' '$at/copy' && sync '$at/copy'"
    rm -r "$at"
}

rows_large() {
    local size="$megabytes MiB" peer note
    row "Encrypt $size" s 'large encrypts' 'cp' 'large cp' 2
    row "Encrypt $size" s 'large encrypts' 'cp and sync of the copy' 'large cp durable'
    row "Encrypt $size, read back, delete the source" s 'large moves' 'cp and sync of the copy' 'large cp durable'
    row "Decrypt $size" s 'large decrypts' 'cp' 'large cp' 1.5
    row "Decrypt $size" s 'large decrypts' 'cp and sync of the copy' 'large cp durable'
    for peer in age gpg 7z openssl; do
        peer_rows "$size" large $peer ahead
    done
}

# peer_rows SIZE KEY PEER [GOAL]
peer_rows() {
    local goal=${4:-} note=''
    case $3 in
        openssl) note=', not authenticated' goal='' ;;
        7z) note=', a checksum only' ;;
    esac
    row "Encrypt $1" s "$2 encrypts" "$3$note" "$2 $3 encrypts" $goal
    row "Decrypt $1" s "$2 decrypts" "$3$note" "$2 $3 decrypts" $goal
}
