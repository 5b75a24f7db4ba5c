#!/bin/bash
# Checks what no compiler does: that every test is compiled, and that the system stays behind its folders.
#
#   tools/check_sources.sh BUILD...    the folders of the builds, configured
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# Where the system may be seen.
system_folders='^src/platform/(win32|posix)/|^src/interfaces/statistics/(win32|posix)/|^src/windows/(.*/)?(win32|terminal|drawing)/|^src/resources/'
wrong=0
complain() { echo "$*"; wrong=1; }


commands=()
for build in "$@"; do commands+=("$build/compile_commands.json"); done
while read -r test; do
    grep -qF "/$test\"" "${commands[@]}" || complain "$test: no build compiles this test"
done < <(tools/list_sources.sh '*_test.cpp')

while read -r file; do
    if grep -nE '^ *# *include <[^>]*[./][^>]*>' "$file" | grep -vE '<(gtest/gtest\.h|nlohmann/json\.hpp|experimental/filesystem)>'; then
        complain "$file: a system header outside of the folders that may see the system"
    fi
    if grep -nE '^ *# *(if|ifdef|ifndef|elif)\b.*(_WIN32|__linux__|__unix__|__MINGW32__)' "$file"; then
        complain "$file: a choice of the system outside of the build files"
    fi
done < <(tools/list_sources.sh 'src/*.h' 'src/*.cpp' | grep -vE "$system_folders")

[ $wrong -eq 0 ] || exit 1
echo "every test is compiled, and the system stays behind its folders"
