# What the measurements need, and what they were made on.

say() { echo "bench: $*" >&2; }
fail() { say "$*"; exit 1; }

password='sample password'
peers=(age gnupg p7zip-full openssl time)

install_peers() {
    local missing=() package
    for package in "${peers[@]}"; do
        [[ $(dpkg-query -W -f '${db:Status-Abbrev}' $package 2>/dev/null) == ii* ]] || missing+=($package)
    done
    [ ${#missing[@]} -eq 0 ] && return
    local as_root=()
    [ "$(id -u)" -eq 0 ] || as_root=(sudo)
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# build PRESET TARGET...
build() {
    say "building $1"
    { cmake --preset "$1" && cmake --build --preset "$1" --target "${@:2}"; } >"$bench/$1.log" 2>&1 ||
        { tail -n 40 "$bench/$1.log" >&2; exit 1; }
}

start_wine() {
    tools/wine.sh --prepare
    wine_runs=true
}

clean() {
    rm -rf "$scratch" "$windows_scratch"
    if [ -d "${gpg_home:-}" ]; then gpgconf --homedir "$gpg_home" --kill all || true; rm -rf "$gpg_home"; fi
    if ${wine_runs:-false}; then tools/wine.sh --stop; fi
}

# The programs and their libraries, which are to be in memory before each run.
find_programs() {
    local program built=build/linux-release
    for program in $built/bin/jobrunner $built/tests/engine_benchmark $(find $built/bin $built/tests/timed -name '*.so') \
        "$(command -v age)" "$(command -v gpg)" /usr/lib/p7zip/7z /usr/lib/p7zip/7z.so "$(command -v openssl)" \
        "$(command -v cp)" "$(command -v shred)" "$(command -v tar)"; do
        if [ -f "$program" ]; then echo "$program"; ldd "$program" 2>/dev/null | awk '/\// { print $(NF - 1) }'; fi
    done | sort -u
}

prepare_machine() {
    trap clean EXIT
    tools/install_packages.sh >&2
    install_peers
    local programs=(jobrunner engine_benchmark start_benchmark)
    if ! $quick; then programs+=(overhead_benchmark); fi
    build linux-release "${programs[@]}"
    mapfile -t measured_programs < <(find_programs)
    prepare_peers
    if $windows; then
        if ! $quick; then programs+=(watcher_benchmark); fi
        build windows-release "${programs[@]}"
        start_wine
    fi
}

machine() {
    local processor memory
    processor=$(sed -n 's/^model name.*: //p' /proc/cpuinfo | head -n 1)
    memory=$(awk '/^MemTotal/ { printf "%.0f GiB", $2 / 1048576 }' /proc/meminfo)
    echo "- $(nproc) processors: $processor; $memory of memory"
    echo "- $(. /etc/os-release && echo "$PRETTY_NAME"), Linux $(uname -r | sed 's/-.*//'), files on $(findmnt -n -o FSTYPE -T "${scratch%/*}")"
    echo "- $(cp --version | head -n 1), age $(age --version | sed 's/^v//'), $(gpg --version | head -n 1)," \
        "$(7z | awk 'NF && !found++ { print $1, $3 }'), $(openssl version | cut -d ' ' -f 1,2)"
    if $windows; then echo "- $(wine_version), 32 bit"; fi
    if $quick; then return; fi
    if [ -w /proc/sys/vm/drop_caches ]; then
        echo "- The system's memory of files was emptied before each run."
    else
        echo "- Without root rights: the system's memory of files held what the runs before had left."
    fi
}

wine_version() {
    local root=${XDG_CACHE_HOME:-$HOME/.cache}/jobrunner/i386
    if command -v wine >/dev/null; then wine --version; else sed -n '/^Package: wine$/,/^$/s/^Version: /Wine /p' "$root/var/lib/dpkg/status"; fi
}
