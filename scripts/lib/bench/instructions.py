# SPDX-License-Identifier: Apache-2.0
"""Counts instructions with callgrind and holds them against bench/instructions.txt.

Stored are ratios, never counts: both sides of a ratio run on the same machine with the same C
library, whose fast paths differ from processor to processor.
"""

import concurrent.futures
import os
import re
import subprocess
import sys
from pathlib import Path

STORED = Path("bench/instructions.txt")
TOLERANCE = 0.01

# Contest, size, and two numbers of runs, whose difference is free of what is done once.
CONTESTS = {
    "parse-1": ("parse", 1, 20, 220),
    "parse-100": ("parse", 100, 2, 12),
    "parse-10000": ("parse", 10_000, 1, 2),
    "publish-10000": ("publish", 10_000, 1, 2),
    "lookup-10000": ("hits-prefixes", 10_000, 100, 500),
}

# What is divided by what.
RATIOS = {
    "Parse / bare DOM, 1 record": (("parse-1", "ours"), ("parse-1", "other")),
    "Parse / bare DOM, 100 records": (("parse-100", "ours"), ("parse-100", "other")),
    "Parse / bare DOM, 10,000 records": (("parse-10000", "ours"), ("parse-10000", "other")),
    "Add and Publish, 10,000 sorted records / bare DOM, 10,000 records":
        (("publish-10000", "other"), ("parse-10000", "other")),
    "Add and Publish, 10,000 shuffled records / bare DOM, 10,000 records":
        (("publish-10000", "ours"), ("parse-10000", "other")),
    "FindClassImpl / std::map, 10,000 names": (("lookup-10000", "ours"), ("lookup-10000", "other")),
}


def count(contest, size, side, runs):
    """Of so many runs, without what is around them."""
    command = ["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null",
               "--toggle-collect=tarnmf::bench::RunO*", "build/release/bench/tarnmf_bench",
               "runs", contest, str(size), side, str(runs)]
    done = subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, check=True)
    collected = int(re.search(rb"Collected : (\d+)", done.stderr).group(1))
    if collected == 0:
        raise RuntimeError(f"nothing counted of {contest}")
    return collected


def count_run(contest, side):
    name, size, few, many = CONTESTS[contest]
    return (count(name, size, side, many) - count(name, size, side, few)) / (many - few)


def measure():
    sides = sorted({side for pair in RATIOS.values() for side in pair})
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        counts = dict(zip(sides, pool.map(lambda side: count_run(*side), sides)))
    return {title: counts[ours] / counts[other] for title, (ours, other) in RATIOS.items()}


def toolchain():
    version = subprocess.run(["c++", "--version"], stdout=subprocess.PIPE, check=True)
    return f"{version.stdout.decode().splitlines()[0]}, {os.confstr('CS_GNU_LIBC_VERSION')}"


def store(ratios):
    lines = ["# Instructions of one side for one of the other, counted by scripts/bench --instructions.",
             f"# Stored with {toolchain()}."]
    lines += [f"{ratio:.5g} {title}" for title, ratio in ratios.items()]
    STORED.write_text("\n".join(lines) + "\n")


def compare(ratios):
    """Whether all are at most what is stored."""
    lines = [line for line in STORED.read_text().splitlines() if not line.startswith("#")]
    stored = {title: float(ratio) for ratio, title in (line.split(" ", 1) for line in lines)}
    if stored.keys() != ratios.keys():
        print(f"{STORED} has other figures; scripts/bench --instructions --store", file=sys.stderr)
        return False
    held = True
    for title, ratio in ratios.items():
        change = ratio / stored[title] - 1
        verdict = ("MORE" if change > TOLERANCE else
                   "less: store it" if change < -TOLERANCE else "ok")
        held = held and change <= TOLERANCE
        print(f"{title:70} {ratio:<9.5g} {stored[title]:<9.5g} {change:+8.2%}  {verdict}")
    if not held:
        print(f"More instructions than {STORED} has:\n  now {toolchain()}", file=sys.stderr)
        print("\n".join("  " + line for line in STORED.read_text().splitlines()[1:2]),
              file=sys.stderr)
    return held


def main(words):
    if words not in ([], ["--store"]):
        print("scripts/bench --instructions [--store]", file=sys.stderr)
        return 2
    ratios = measure()
    if words:
        store(ratios)
    return 0 if compare(ratios) else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
