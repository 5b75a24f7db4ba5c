# One table of all figures that there are.

# shown NUMBER UNIT
shown() {
    awk -v n="$1" -v unit="$2" 'BEGIN {
        if (unit == "s" && n < 0.1) { n *= 1000; unit = "ms" }
        printf n < 10 ? "%.2f %s" : n < 100 ? "%.1f %s" : "%.0f %s", n, unit
    }'
}

# row WHAT UNIT KEY [COMPARATOR KEY [GOAL]]: a goal is the largest ratio; "ahead" is one below 1.
row() {
    local ours theirs ratio exact met='' goal=${6:-} limit
    if $quick; then goal=''; fi
    ours=$(median_of "$3")
    [ -n "$ours" ] || return 0
    if [ $# -lt 5 ]; then
        echo "| $1 | $(shown "$ours" "$2") | | | | | |"
        return
    fi
    theirs=$(median_of "$5")
    [ -n "$theirs" ] || return 0
    exact=$(ratio_of "$3" "$5")
    ratio=$(printf %.2f "$exact")
    if [ -n "$goal" ]; then
        limit=${goal/ahead/0.99999}
        met=$(awk "BEGIN { print $exact <= $limit ? \"yes\" : \"**no**\" }")
        if [ "$goal" != ahead ]; then goal="at most $goal"; fi
    fi
    echo "| $1 | $(shown "$ours" "$2") | $4 | $(shown "$theirs" "$2") | $ratio | $goal | $met |"
}

# text_row WHAT KEY [GOAL MICROSECONDS]: a figure of a program that measures itself.
text_row() {
    local text met=''
    text=$(text_of "$2")
    [ -n "$text" ] || return 0
    if [ $# -eq 4 ]; then
        met=$(echo "$text" | awk -v limit="$4" '{ n = $1; if ($2 == "ms") n *= 1000; print n <= limit ? "yes" : "**no**" }')
    fi
    echo "| $1 | $text | | | | ${3:-} | $met |"
}

table() {
    local group megabytes small_files
    if $quick; then
        echo "One round with small sizes: nothing to judge by."
    else
        echo "Medians of $(cat "$results"/*.tsv | awk -F '\t' '$1 ~ /: rounds$/ { print $2 }' | sort -nu | paste -s -d '/') rounds:"
    fi
    echo
    machine
    echo
    echo "| What | Ours | Beside it | Its figure | Ratio | Goal | Met |"
    echo "|---|---|---|---|---|---|---|"
    for group in "${all_groups[@]}"; do
        [ -e "$results/$group.tsv" ] || continue
        megabytes=$(text_of "$group: MiB") small_files=$(text_of "$group: files")
        "rows_${group//-/_}"
    done
}

# write_table DOCUMENT TABLE: between the two marks.
write_table() {
    local begin='<!-- figures -->' end='<!-- end of figures -->'
    grep -qF "$begin" "$1" && grep -qF "$end" "$1" || fail "$1 has no place for the table"
    awk -v begin="$begin" -v end="$end" -v table="$2" '
        $0 == end { inside = 0 }
        !inside { print }
        $0 == begin { inside = 1; print ""; while ((getline line <table) > 0) print line; print "" }
    ' "$1" >"$1.new"
    mv "$1.new" "$1"
}
