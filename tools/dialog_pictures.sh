#!/bin/bash
# Takes the pictures of the dialogs for docs/pictures, at 96 and at 144 dots per inch:
#
#   tools/dialog_pictures.sh [FOLDER]    writes them to FOLDER, docs/pictures unless told otherwise
set -euo pipefail
cd "$(dirname "$0")/.."

folder=$(realpath -m "${1:-docs/pictures}")
base=$(tools/wine.sh --home)
mkdir -p build "$folder"
{ cmake --preset windows-release && cmake --build --preset windows-release --target dialog_pictures; } \
    >build/dialog_pictures.log 2>&1 || { tail -n 40 build/dialog_pictures.log >&2; exit 1; }

for density in 96 144; do
    export JOBRUNNER_WINE_HOME=$base-at-$density
    shots=$JOBRUNNER_WINE_HOME/prefix/drive_c/pictures
    tools/wine.sh --prepare
    rm -rf "$shots"
    mkdir -p "$shots"
    tools/wine.sh reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d $density /f >/dev/null
    tools/wine.sh --stop # the density is read when the desktop starts
    JOBRUNNER_SCREENSHOTS='C:\pictures' tools/wine.sh build/windows-release/tests/dialog_pictures.exe
    tools/wine.sh --stop
    cp "$shots"/*.png "$folder"
done
