#!/usr/bin/python3
"""Compares the walker with du on a tree shaped like developer caches: walk.py WALK_DRIVER [ENTRIES] [ROUNDS]

The tree is made in a temporary folder (TMPDIR) and removed at the end. Both programs run warm and in turn; their medians,
their ratio, the walker's system calls per entry (strace -c) and the check against the tree's manifest are printed. Exit
status 0 when every run of the walker gave the manifest's numbers.
"""

import os
import re
import statistics
import subprocess
import sys
import tempfile
import time

GENERATOR = os.path.join(os.path.dirname(os.path.abspath(__file__)), "cache_tree.py")


def timed(command):
    start = time.perf_counter()
    output = subprocess.run(command, stdout=subprocess.PIPE, check=True).stdout
    return time.perf_counter() - start, output.split()


def calls_per_entry(driver, tree, entries):
    summary = subprocess.run(["strace", "-f", "-c", driver, tree], stdout=subprocess.DEVNULL, stderr=subprocess.PIPE,
                             check=True).stderr.decode()
    counts = {name: int(calls) for calls, name in re.findall(r"^\s*[\d.]+\s+[\d.]+\s+\d+\s+(\d+)\s+(?:\d+\s+)?(\w+)$",
                                                             summary, re.MULTILINE) if name != "total"}
    busiest = sorted(counts.items(), key=lambda item: -item[1])[:5]
    return sum(counts.values()) / entries, ", ".join(f"{name} {count}" for name, count in busiest)


def compare(driver, tree, manifest, rounds):
    walker, du = [driver, tree], ["du", "-s", tree]
    for command in (walker, du):
        timed(command)
    times, right = {"walker": [], "du": []}, True
    for _ in range(rounds):
        seconds, output = timed(walker)
        times["walker"].append(seconds)
        right = right and [int(output[1]), int(output[0])] == manifest and output[2] == b"0"
        times["du"].append(timed(du)[0])
    medians = {name: statistics.median(values) for name, values in times.items()}
    for name, values in times.items():
        print(f"{name}: median {medians[name]:.3f} s of {rounds} (from {min(values):.3f} to {max(values):.3f})")
    print(f"walker / du: {medians['walker'] / medians['du']:.2f}")
    print(f"manifest ({manifest[0]} entries, {manifest[1]} bytes): {'met in every run' if right else 'MISSED'}")
    return right


def main():
    driver = os.path.abspath(sys.argv[1])
    entries = sys.argv[2] if len(sys.argv) > 2 else "250000"
    rounds = int(sys.argv[3]) if len(sys.argv) > 3 else 9
    with tempfile.TemporaryDirectory(prefix="kestrune-walk-") as folder:
        tree = os.path.join(folder, "caches")
        made = subprocess.run([sys.executable, GENERATOR, tree, entries], stdout=subprocess.PIPE, check=True).stdout
        manifest = [int(number) for number in made.split()]
        right = compare(driver, tree, manifest, rounds)
        per_entry, busiest = calls_per_entry(driver, tree, manifest[0])
        print(f"walker's system calls per entry: {per_entry:.2f} ({busiest})")
    return 0 if right else 1


if __name__ == "__main__":
    sys.exit(main())
