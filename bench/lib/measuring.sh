# Runs, figures and their medians. A figure is a line "KEY<tab>NUMBER" in the file of its group.

# prepare INPUT...: the same start for each run. Nothing is left to be written; memory holds the input and the programs.
prepare() {
    if $quick; then return; fi
    sync
    if [ -w /proc/sys/vm/drop_caches ]; then echo 1 >/proc/sys/vm/drop_caches; fi
    cat "${measured_programs[@]}" >/dev/null
    find "$@" -type f -exec cat {} + >/dev/null
}

record() { printf '%s\t%s\n' "$1" "$2" >>"$figures"; }

# timed KEY COMMAND...: seconds, and MiB of memory at most under "KEY memory".
timed() {
    local begin end
    begin=$EPOCHREALTIME
    /usr/bin/time -o "$scratch/peak" -f %M "${@:2}" >"$scratch/said" 2>&1 </dev/null || {
        tail -n 20 "$scratch/said" >&2
        fail "$1: the program failed"
    }
    end=$EPOCHREALTIME
    record "$1" "$(awk "BEGIN { print (${end/,/.}) - (${begin/,/.}) }")"
    record "$1 memory" "$(awk '{ print $1 / 1024 }' "$scratch/peak")"
}

values_of() { cat "$results"/*.tsv 2>/dev/null | awk -F '\t' -v key="$1" '$1 == key { print $2 }'; }
median() { sort -g | awk '{ value[NR] = $1 } END { if (NR) print NR % 2 ? value[(NR + 1) / 2] : (value[NR / 2] + value[NR / 2 + 1]) / 2 }'; }

# median_of KEY: nothing when there is no such figure.
median_of() { values_of "$1" | median; }
# ratio_of KEY COMPARATOR: the median of the ratios of each round.
ratio_of() { paste <(values_of "$1") <(values_of "$2") | awk 'NF == 2 { print $1 / $2 }' | median; }

# text_of KEY: the figure as it was written.
text_of() { cat "$results"/*.tsv 2>/dev/null | awk -F '\t' -v key="$1" '$1 == key && !found++ { print $2 }'; }

# same A B [OPTION]: what came out has to be what went in.
same() { diff -rq "${@:3}" "$1" "$2" >"$scratch/said" || { head -n 5 "$scratch/said" >&2; fail "$2 is not the same."; }; }

# fresh NAME: a new and empty folder, named $at. Old ones stay until the group is through: to make thousands of files
# soon after thousands were removed costs a multiple.
fresh() {
    folders=$((folders + 1))
    at=$area/$group/$folders-$1
    mkdir -p "$at"
}

make_large() { head -c "${megabytes}M" /dev/urandom >"$1"; }
# make_small FOLDER COUNT: files of 4 KiB, a hundred in a folder; in one with thousands Wine takes 20 ms for a file.
make_small() {
    local from most
    for ((from = 0; from < $2; from += 100)); do
        most=$(($2 - from < 100 ? $2 - from : 100))
        mkdir "$1/year.$from"
        head -c $((most * 4096)) /dev/urandom | split -b 4096 -a 5 -d - "$1/year.$from/letter."
    done
}
# move_encrypted FROM TO: each into the folder of the same name.
move_encrypted() {
    local folder
    find "$1" -type d -printf '%P\n' | while read -r folder; do
        mkdir -p "$2/$folder"
        find "$1/$folder" -maxdepth 1 -name '*.zel' -exec mv -t "$2/$folder" {} +
    done
}

measure_group() {
    group=$1 folders=0 figures=$results/$1.part area=$scratch
    if $missing && [ -e "$results/$group.tsv" ]; then return; fi
    if ! $windows && [[ $group == engine-windows || $group == waiting ]]; then return; fi
    # These take half a minute and more for each system, whatever their size.
    if $quick && [[ $group == waiting || $group == overhead ]]; then return; fi
    say "$group, since ${SECONDS} s"
    : >"$figures"
    mkdir -p "$scratch/$group"
    record "$group: MiB" "$megabytes"
    record "$group: files" "$small_files"
    record "$group: rounds" "$rounds"
    "measure_${group//-/_}"
    mv "$figures" "$results/$group.tsv"
    rm -rf "${scratch:?}/$group" "${windows_scratch:?}/$group"
}
