#!/usr/bin/env python3
"""Changes a comparison, a constant or an order in the sources, one at a time, and sees whether a test fails.

    tools/mutate.py [--count 100] [--seed 1]    prints a line for each change; those that survive are to be looked at

It works on a copy of the last commit below build/mutations, with the tests of the changed folder, and with the whole
jobs when those say nothing. The same seed chooses the same changes as long as the sources are the same.
"""

import argparse
import collections
import json
import os
import random
import re
import subprocess
import sys

TESTS = {
    "src/bridges": "bridges_test",
    "src/commands": "commands_test",
    "src/jobprocess": "jobprocess_test",
    "src/platform": "platform_test",
    "src/systemutilities": "systemutilities_test",
    "src/telemetry": "telemetry_test",
    "src/windows": "windows_test",
    "modules/statistics": "statistics_module_test",
    "modules/vaultcore": "vaultcore_module_test",
    "modules/zelplatform": "zelplatform_module_test",
}
IN_WHOLE_JOBS = ("src/bridges", "src/commands", "src/jobprocess", "src/windows", "modules/vaultcore")
REPLACEMENTS = [
    (" <= ", " < "),
    (" >= ", " > "),
    (" < ", " <= "),
    (" > ", " >= "),
    (" == ", " != "),
    (" != ", " == "),
    (" && ", " || "),
    (" || ", " && "),
    ("true", "false"),
    ("false", "true"),
]
NUMBER = re.compile(r"(?<![\w.])([1-9]\d{0,5})(?![\w.'])")
CALL = re.compile(r"^    \s*[\w.>:-]+\([^;{}]*\);$")
# A test that hangs has noticed as well.
PATIENCE = 300

Change = collections.namedtuple("Change", "folder file line old new")


def run(command, limit=PATIENCE):
    """Whether the command succeeded within its time."""
    try:
        return subprocess.run(command, capture_output=True, timeout=limit).returncode == 0
    except subprocess.TimeoutExpired:
        return False


def changes_of_line(line):
    code = line.split("//")[0]
    if code.strip().startswith(("#", "*", "template", "static_assert", "namespace")) or "noexcept" in code:
        return
    spots = [(m.start(), m.end(), new) for old, new in REPLACEMENTS for m in re.finditer(re.escape(old), code)]
    spots += [(m.start(), m.end(), str(int(m.group()) + 1)) for m in NUMBER.finditer(code)]
    for start, end, new in spots:
        if code[:start].count('"') % 2 == 0:
            yield line[:start] + new + line[end:]
    if CALL.match(code):
        yield re.match(" *", line).group() + ";"


def all_changes():
    """By folder: of what the native build compiles, without its tests."""
    with open("build/linux-debug/compile_commands.json") as file:
        files = sorted({os.path.relpath(command["file"]) for command in json.load(file)})
    changes = collections.defaultdict(list)
    for file in files:
        folder = "/".join(file.split("/")[:2])
        if folder not in TESTS or file.endswith(("_test.cpp", "entry_point.cpp")) or "/keymaker/" in file:
            continue
        for number, line in enumerate(open(file).read().split("\n")):
            changes[folder] += [Change(folder, file, number, line, new) for new in changes_of_line(line)]
    return changes


def chosen(count, seed):
    """Each folder in turn, so that the small ones have a share too."""
    source = random.Random(seed)
    pools = all_changes()
    for pool in pools.values():
        source.shuffle(pool)
    picked = []
    while len(picked) < count and any(pools.values()):
        picked += [pool.pop() for pool in pools.values() if pool]
    return picked[:count]


def build(target, *more):
    return run(["cmake", "--build", "build/linux-debug", "--target", target, *more], 3600)


def test_notices(program):
    command = [f"build/linux-debug/tests/{program}", "--gtest_brief=1", "--gtest_fail_fast"]
    return build(program) and not run(command)


def outcome(change):
    if not build(TESTS[change.folder]):
        return "refused"
    if test_notices(TESTS[change.folder]):
        return "failed"
    if change.folder in IN_WHOLE_JOBS and test_notices("whole_jobs_test"):
        return "failed"
    return "SURVIVED"


def attempt(change):
    with open(change.file) as file:
        before = file.read()
    lines = before.split("\n")
    assert lines[change.line] == change.old
    lines[change.line] = change.new
    with open(change.file, "w") as file:
        file.write("\n".join(lines))
    try:
        return outcome(change)
    finally:
        with open(change.file, "w") as file:
            file.write(before)


def prepare_copy():
    root = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
    copy = os.path.join(root, "build", "mutations")
    subprocess.run(["rm", "-rf", copy], check=True)
    subprocess.run(["git", "clone", "-q", root, copy], check=True)
    os.chdir(copy)
    subprocess.run(["cmake", "--preset", "linux-debug"], check=True, stdout=subprocess.DEVNULL)
    for program in ["whole_jobs_test", *TESTS.values()]:
        if not build(program) or not run([f"build/linux-debug/tests/{program}", "--gtest_brief=1"], 600):
            sys.exit(f"{program} fails without any change")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--count", type=int, default=100)
    parser.add_argument("--seed", type=int, default=1)
    options = parser.parse_args()
    prepare_copy()
    counts = collections.Counter()
    for change in chosen(options.count, options.seed):
        result = attempt(change)
        counts[result] += 1
        print(f"{result}\t{change.file}:{change.line + 1}\t{change.old.strip()}\t{change.new.strip()}", flush=True)
    print(", ".join(f"{count} {result}" for result, count in sorted(counts.items())))


if __name__ == "__main__":
    main()
