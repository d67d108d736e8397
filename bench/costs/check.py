#!/usr/bin/env python3
"""Counts the instructions of core_costs and compares them with those in counts.json.

  check.py path/to/core_costs            fails where a count rose by more than a tenth, or grows faster than linearly
  check.py path/to/core_costs --update   writes counts.json anew

The counts are of an unoptimised-for-speed test build, so they say nothing of microseconds; they say, on any machine and
however busy it is, that a change made the program do more. They hold for the compiler that they were taken with: with
another one nothing is compared, which the exit status 77 says.
"""
import glob
import json
import os
import re
import subprocess
import sys
import tempfile

COUNTS = os.path.join(os.path.dirname(os.path.abspath(__file__)), "counts.json")
TOLERATED_RISE = 1.10
# Per tenfold windows and sixfold displays. Sorting and searching make a little more than linear of it.
TOLERATED_GROWTH = 1.25
SKIPPED = 77


def compiler_of(program):
    comments = subprocess.run(["readelf", "-p", ".comment", program], capture_output=True, text=True, check=True).stdout
    return re.search(r"GCC: \(.*?\) (\S+)|clang version (\S+)", comments).group(0)


def count(program):
    """{what: instructions}, of all rounds together."""
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run(["setarch", "-R", "valgrind", "--tool=callgrind", f"--callgrind-out-file={folder}/out", program],
                       check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        counts = {}
        for path in glob.glob(folder + "/out*"):
            with open(path) as part:
                text = part.read()
            label = re.search(r"^desc: Trigger: Client Request: (.*)$", text, re.M)
            if label:
                counts[label.group(1)] = int(re.search(r"^(?:totals|summary): (\d+)", text, re.M).group(1))
        return counts


def growth_faults(counts):
    for what in sorted({label.split(",")[0] for label in counts}):
        def at(windows, displays):
            return counts[f"{what}, {windows} windows, {displays} displays"]
        for factor, small, large in ((10, at(10, 1), at(100, 1)), (10, at(100, 1), at(1000, 1)),
                                     (6, at(100, 1), at(100, 6))):
            if large > small * factor * TOLERATED_GROWTH:
                yield f"{what}: {small} grows to {large} where {factor} times as much is there"


def main():
    program = sys.argv[1]
    counts, compiler = count(program), compiler_of(program)
    faults = list(growth_faults(counts))
    if not counts:
        faults.append("nothing was counted")
    if "--update" in sys.argv:
        with open(COUNTS, "w") as file:
            json.dump({"compiler": compiler, "counts": dict(sorted(counts.items()))}, file, indent=1)
            file.write("\n")
    with open(COUNTS) as file:
        known = json.load(file)
    is_comparable = known["compiler"] == compiler
    for label in sorted(counts | known["counts"]):
        now, before = counts.get(label), known["counts"].get(label)
        print(f"{label}: {now}" + (f" ({now / before - 1:+.1%})" if now and before and is_comparable else ""))
        if now is None or before is None:
            faults.append(f"{label}: counted on one side only; take the counts anew with --update")
        elif is_comparable and now > before * TOLERATED_RISE:
            faults.append(f"{label}: {now / before - 1:+.0%} instructions")
    for fault in faults:
        print("FAULT " + fault, file=sys.stderr)
    if faults:
        return 1
    if not is_comparable:
        print(f"Not compared: the counts are of {known['compiler']}, this is {compiler}.")
        return SKIPPED
    return 0


if __name__ == "__main__":
    sys.exit(main())
