#!/usr/bin/env python3
"""Fails when an operation grows faster with the number of records than it should.

usage: check-growth.py PROGRAM

`PROGRAM` alone lists its operations, one a line: a name and "linear" or "sort". `PROGRAM NAME N` prepares N records and
carries the operation out. Instructions are counted, not time, so the answer is the same on a busy machine: valgrind's
count for N = 0 is taken off, and from 1,000 to 10,000 records the rest may grow by the limit of its kind.
"""
import concurrent.futures
import os
import re
import shutil
import subprocess
import sys

LIMITS = {"linear": 11, "sort": 14}
SKIPPED = 77  # as tests/CMakeLists.txt has it


def instructions(program, name, count):
    command = ["valgrind", "--tool=cachegrind", "--cache-sim=no", "--cachegrind-out-file=/dev/null"]
    run = subprocess.run([*command, program, name, str(count)], capture_output=True, text=True, check=False)
    total = re.search(r"I\s+refs:\s+([\d,]+)", run.stderr)
    if run.returncode != 0 or not total:
        sys.exit(f"{name} with {count} records failed:\n{run.stdout}{run.stderr}")
    return int(total[1].replace(",", ""))


def main(program):
    if not shutil.which("valgrind"):
        print("Skipped: valgrind, which counts the instructions, is not installed.")
        return SKIPPED
    lines = subprocess.run([program], capture_output=True, text=True, check=True).stdout.splitlines()
    operations = [line.split() for line in lines]
    if not operations:
        sys.exit(f"{program} lists no operations.")
    failed = False
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        runs = {(name, n): pool.submit(instructions, program, name, n) for name, _ in operations for n in (0, 1000, 10000)}
        for name, kind in operations:
            empty, small, large = (runs[name, n].result() for n in (0, 1000, 10000))
            growth = (large - empty) / max(small - empty, 1)
            grows = growth > LIMITS[kind]
            failed |= grows
            print(f"{name:40} {growth:6.2f}  at most {LIMITS[kind]}{'  GROWS TOO FAST' if grows else ''}")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
