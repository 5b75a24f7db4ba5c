#!/bin/bash
# Explores the schedules of a job for longer than ./test does.
#
#   tools/explore_schedules.sh [SECONDS] [SEED]    SECONDS for each exploration, 60 unless told;
#                                                  with a SEED that one random schedule alone
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

cmake --preset linux-debug >/dev/null
cmake --build --preset linux-debug --target schedules_test
if [ -n "${2:-}" ]; then
    JOBRUNNER_SCHEDULE_SEED=$2 exec build/linux-debug/tests/schedules_test --gtest_filter='JobSchedules.*'
fi
JOBRUNNER_SCHEDULE_BOUND=${JOBRUNNER_SCHEDULE_BOUND:-2} JOBRUNNER_SCHEDULE_SECONDS=${1:-60} \
    exec build/linux-debug/tests/schedules_test
