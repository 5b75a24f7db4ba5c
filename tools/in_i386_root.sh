#!/bin/bash
# Runs a command inside another root, as root in a mount namespace of its own, so that no mount outlives it:
#
#   in_i386_root.sh ROOT USER:GROUP FOLDER... -- COMMAND [ARGUMENT...]
#
# /proc and the named folders appear inside under their own paths. The command starts in the caller's folder.
set -euo pipefail

root=$1
user=$2
shift 2

# A folder that the root already shows, through a mount of one of its parents for instance, is left as it is.
show() {
    [ "$root$1" -ef "$1" ] && return
    mkdir -p "$root$1"
    mount --bind "$1" "$root$1"
}

[ -e "$root/proc/self" ] || mount --bind /proc "$root/proc"
while [ "$1" != -- ]; do
    [ ! -d "$1" ] || show "$1"
    shift
done
shift
exec chroot --userspec="$user" "$root" /bin/sh -c 'cd "$1" 2>/dev/null || cd /; shift; exec "$@"' sh "$PWD" "$@"
