# How each program encrypts and decrypts. Of a folder the ones that know only files get an archive from tar.

# job KEY ANSWERS FIELDS PATH: the whole program with this job, its question answered at once.
job() {
    printf '{%s, "files": ["%s"]}' "$3" "$4" >"$scratch/job.json"
    printf %b "$2" >"$scratch/answers"
    timed "$1" sh -c "exec '${program:-build/linux-release/bin/jobrunner}' '$scratch/job.json' <'$scratch/answers'"
}
job_encrypts() { job "$1" "p\n$password\n$password\n" '"kind": "encrypt", "destiny": '${3:-0} "$2"; }
job_decrypts() { job "$1" "p\n$password\n" '"kind": "decrypt", "mode": 0' "$2"; }
job_wipes() { job "$1" 'y\n' '"kind": "delete", "method": 2' "$2"; }

prepare_peers() {
    gpg_home=$(mktemp -d)
    rm -f "$scratch/identity"
    age-keygen -o "$scratch/identity" 2>"$scratch/said"
    recipient=$(age-keygen -y "$scratch/identity")
    export gpg_home password recipient identity=$scratch/identity
    # Once, so that its agent runs.
    echo | sh -c "${encrypts[gpg]}" >"$scratch/said"
}

# Both read from standard input and write to standard output.
gpg='gpg --homedir "$gpg_home" --batch --quiet --pinentry-mode loopback --passphrase "$password"'
declare -A encrypts=(
    [age]='age -r "$recipient"'
    [gpg]="$gpg --symmetric --cipher-algo AES256 --compress-algo none"
    [openssl]='openssl enc -aes-256-ctr -pbkdf2 -pass env:password'
)
declare -A decrypts=(
    [age]='age -d -i "$identity"'
    [gpg]="$gpg --decrypt"
    [openssl]='openssl enc -d -aes-256-ctr -pbkdf2 -pass env:password'
)

# peer_file PEER KEY FILE: encrypts the file, then decrypts it into a folder of its own.
peer_file() {
    local peer=$1 key=$2 file=$3 out
    out=$(dirname "$file")/out
    mkdir "$out"
    prepare "$file"
    if [ "$peer" = 7z ]; then
        timed "$key $peer encrypts" 7z a -mx=0 -mhe=on "-p$password" "$file.7z" "$file"
        prepare "$file.7z"
        timed "$key $peer decrypts" 7z x "-p$password" "-o$out" "$file.7z"
    else
        timed "$key $peer encrypts" sh -c "${encrypts[$peer]} <'$file' >'$file.enc'"
        prepare "$file.enc"
        timed "$key $peer decrypts" sh -c "${decrypts[$peer]} <'$file.enc' >'$out/file'"
    fi
}

# peer_folder PEER KEY FOLDER: the same for a folder, into FOLDER.out.
peer_folder() {
    local peer=$1 key=$2 folder=$3
    mkdir "$folder.out"
    prepare "$folder"
    if [ "$peer" = 7z ]; then
        timed "$key $peer encrypts" 7z a -mx=0 -mhe=on "-p$password" "$folder.7z" "$folder/."
        prepare "$folder.7z"
        timed "$key $peer decrypts" 7z x "-p$password" "-o$folder.out" "$folder.7z"
    else
        timed "$key $peer encrypts" sh -c "tar -C '$folder' -cf - . | ${encrypts[$peer]} >'$folder.enc'"
        prepare "$folder.enc"
        timed "$key $peer decrypts" sh -c "${decrypts[$peer]} <'$folder.enc' | tar -C '$folder.out' -xf -"
    fi
}
