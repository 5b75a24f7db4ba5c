# What the program costs apart from its engine: programs that measure themselves, sizes, and the wait for a document.

# on_both PROGRAM: its rows, "NAME<tab>TEXT", under the name of the system.
on_both() {
    "build/linux-release/tests/$1" | sed 's/^/Linux: /' >>"$figures"
    if $windows; then tools/wine.sh "build/windows-release/tests/$1.exe" | tr -d '\r' | sed 's/^/Windows: /' >>"$figures"; fi
}

measure_start() { on_both start_benchmark; }

rows_start() {
    local system
    for system in Linux Windows; do
        text_row "$system: process start to question, median of 21" "$system: Process start to question, median"
        text_row "$system: answer to first file gone, median of 21" "$system: Answer to first file gone, median"
        text_row "$system: process start to engine at work, median of 21" "$system: Process start to engine at work (sum), median"
        text_row "$system: process start to engine at work, longest" "$system: Process start to engine at work (sum), longest"
    done
}

measure_overhead() { on_both overhead_benchmark; }

rows_overhead() {
    local system limit
    for system in Linux Windows; do
        limit=1
        [ $system = Linux ] || limit=5
        text_row "$system: a report of the engine, p50" "$system: Report, p50"
        text_row "$system: a report of the engine, p99" "$system: Report, p99" "at most $limit µs" $limit
        text_row "$system: a report while the display hangs, p99" "$system: Report while the display hangs, p99" "at most $limit µs" $limit
        text_row "$system: the longest report while the display hangs" "$system: Report while the display hangs, longest" 'never the 5 s of the hang' 5000000
        text_row "$system: reports per second" "$system: Reports per second"
        text_row "$system: a question and its answer, p50" "$system: Round trip, p50"
        text_row "$system: a question and its answer, p99" "$system: Round trip, p99"
        text_row "$system: the same with the progress display open, p50" "$system: Round trip with the progress display open, p50"
        text_row "$system: reading the clock, in each of these, p50" "$system: Clock, p50"
    done
}

# size_of KEY FILE...: MiB.
size_of() { record "$1" "$(cat "${@:2}" | wc -c | awk '{ print $1 / 1048576 }')"; }

measure_size() {
    local folder
    size_of 'Linux: size, program' build/linux-release/bin/jobrunner
    size_of 'Linux: size, folder' build/linux-release/bin/*
    if ! $windows; then return; fi
    folder=build/windows-release/bin
    size_of 'Windows: size, program' $folder/JobRunner.exe
    size_of 'Windows: size, runtime' $folder/lib*.dll
    size_of 'Windows: size, folder' $folder/*
}

rows_size() {
    row 'Linux: size of the program' MiB 'Linux: size, program'
    row 'Linux: size of the program and all beside it' MiB 'Linux: size, folder'
    row 'Windows: size of the program' MiB 'Windows: size, program'
    row "Windows: size of the compiler's run-time library beside it" MiB 'Windows: size, runtime'
    row 'Windows: size of the program and all beside it' MiB 'Windows: size, folder'
}

# watch_documents ROUNDS: with 0 rounds, only the use of the processor.
watch_documents() { tools/wine.sh build/windows-release/tests/watcher_benchmark.exe "$1" | tr -d '\r'; }

measure_waiting() { watch_documents 0 >>"$figures"; }

rows_waiting() {
    text_row 'Watcher: use of one processor, nothing in the folder changes' 'One processor, while nothing in the folder changes'
    text_row 'Watcher: use of one processor, once something has changed' 'One processor, once something has changed'
}
