#!/bin/bash
# Installs the Debian packages that building and testing need, the missing ones only.
set -euo pipefail

packages=(
    build-essential cmake ninja-build ccache
    g++-mingw-w64-i686-posix libgcrypt-mingw-w64-dev libgpg-error-mingw-w64-dev
    libgcrypt20-dev nlohmann-json3-dev googletest
    clang-format clang-tidy
    clang libclang-rt-dev llvm
    xvfb imagemagick debootstrap
    xdg-utils file
)

missing=()
for package in "${packages[@]}"; do
    state=$(dpkg-query -W -f '${db:Status-Abbrev}' "$package" 2>/dev/null || true)
    [[ $state == ii* ]] || missing+=("$package")
done
if [ ${#missing[@]} -eq 0 ]; then
    echo "Packages: nothing is missing."
    exit 0
fi

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || { echo "Packages: run this as root, or install sudo." >&2; exit 1; }
    as_root=(sudo)
fi
echo "Packages: installing ${missing[*]}"
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
echo "Packages: installed ${#missing[@]}."
