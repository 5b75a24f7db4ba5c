#!/bin/bash
# Draws the pictures of the dialogs into src/resources. Each is drawn eight times as large and then made smaller.
# Needs ImageMagick; another program of the name "convert" may come first in the search path.
set -euo pipefail
cd "$(dirname "$0")/../src/resources"
CONVERT=${CONVERT:-/usr/bin/convert}

draw() { # name size commands...
    local name=$1 size=$2
    shift 2
    "$CONVERT" -size $((size * 8))x$((size * 8)) xc:none "$@" -filter box -resize "${size}x${size}" -strip \
        -define png:exclude-chunks=date,time "PNG32:$name"
}

# A padlock.
draw zelicon32.png 32 -fill none -stroke '#F4F7FB' -strokewidth 24 \
    -draw 'roundrectangle 76,28 180,180 52,52' \
    -stroke none -fill '#FFC533' -draw 'roundrectangle 44,112 212,232 20,20' \
    -fill '#E0A21A' -draw 'roundrectangle 44,196 212,232 20,20' -draw 'rectangle 44,190 212,212' \
    -fill '#6B4A05' -draw 'circle 128,156 128,138' -draw 'rectangle 119,160 137,200'

# A question mark on a round plate.
draw question32.png 32 -fill '#F4F7FB' -draw 'circle 128,128 128,12' \
    -fill '#2F6FC4' -draw 'circle 128,128 128,26' \
    -fill none -stroke white -strokewidth 24 \
    -draw 'stroke-linecap round line 84,90 98,66 line 98,66 128,54 line 128,54 158,66 line 158,66 171,94' \
    -draw 'stroke-linecap round line 171,94 158,122 line 158,122 136,140 line 136,140 128,168' \
    -stroke none -fill white -draw 'circle 128,204 128,190'

# An eye.
draw showpass.png 16 -fill none -stroke '#44546A' -strokewidth 11 \
    -draw 'path "M 8,64 Q 64,4 120,64 Q 64,124 8,64 Z"' \
    -stroke none -fill '#44546A' -draw 'circle 64,64 64,42' -fill white -draw 'circle 72,56 72,49'

# Three dots.
draw dots.png 14 -fill '#44546A' -draw 'circle 20,64 20,52' -draw 'circle 56,64 56,52' -draw 'circle 92,64 92,52'

# A keyboard.
draw keyboard.png 16 -fill '#44546A' -draw 'roundrectangle 4,28 124,102 10,10' -fill white \
    -draw 'rectangle 16,42 30,54' -draw 'rectangle 42,42 56,54' -draw 'rectangle 72,42 86,54' \
    -draw 'rectangle 98,42 112,54' -draw 'rectangle 16,60 30,70' -draw 'rectangle 42,60 56,70' \
    -draw 'rectangle 72,60 86,70' -draw 'rectangle 98,60 112,70' -draw 'rectangle 34,80 94,90'

# A memory stick.
draw usb.png 16 -fill '#B9C3D0' -draw 'rectangle 40,8 88,52' -fill '#44546A' \
    -draw 'roundrectangle 26,44 102,122 12,12' -draw 'rectangle 50,20 58,34' -draw 'rectangle 70,20 78,34' \
    -fill '#7FD38A' -draw 'circle 64,100 64,92'
