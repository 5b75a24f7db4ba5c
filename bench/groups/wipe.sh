# Wiping against shred with one pass that removes the files.

measure_wipe() {
    local round original=$scratch/$group/original
    mkdir -p "$original"/{large,small}
    make_large "$original/large/letter"
    make_small "$original/small" "$small_files"
    for ((round = 1; round <= rounds; ++round)); do
        wipe_fresh large
        job_wipes 'wipe large' "$at/letter"
        [ ! -e "$at/letter" ] || fail 'the file is still there'
        wipe_fresh large
        timed 'shred large' shred -n1 -u "$at/letter"
        wipe_fresh small
        job_wipes 'wipe small' "$at"
        [ ! -e "$at" ] || [ -z "$(find "$at" -type f)" ] || fail 'files are still there'
        wipe_fresh small
        timed 'shred small' sh -c "find '$at' -type f -print0 | xargs -0 shred -n1 -u"
    done
}

wipe_fresh() {
    fresh "$1"
    cp -r "$scratch/$group/original/$1/." "$at"
    prepare "$at"
}

rows_wipe() {
    row "Wipe $megabytes MiB" s 'wipe large' 'shred -n1 -u' 'shred large' 1.1
    row "Wipe $small_files files of 4 KiB" s 'wipe small' 'shred -n1 -u' 'shred small' 0.5
}
