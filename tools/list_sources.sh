#!/bin/bash
# Lists the source files of this tree that match the patterns, those that are not yet tracked included.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
git ls-files --cached --others --exclude-standard -- "$@" | while read -r file; do
    if [ -e "$file" ]; then echo "$file"; fi
done
