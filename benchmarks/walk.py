#!/usr/bin/python3
"""What a walk costs beside du and beside the least it can cost: walk.py BUILD_FOLDER [--trees small|full] [--cold]

Makes its trees below TMPDIR with walk_trees and removes them at the end. All programs run in turn, so that they see the
same machine: the walk as the Disk Explorer asks for it (scan) and without limits (scan whole), the storage page's
(measure), du -s, gdu and ncdu where they are installed, and walk_floor with one and two threads. Exit status 0 when
every run of ours and of the floor gave what the tree's manifest says; the wanted speeds are told, not enforced.
"""

import argparse
import json
import os
import re
import shutil
import statistics
import subprocess
import sys
import tempfile
import time
from collections import namedtuple
from pathlib import Path

Shape = namedtuple("Shape", "name kind size wanted cold_wanted")
Run = namedtuple("Run", "wall cpu output")
Wanted = namedtuple("Wanted", "figure peer at_most")

LIMIT = 250_000  # entries of the Disk Explorer's own request
DESCRIPTORS = 64  # a walk may hold
COLD = [Wanted("wall", "du", 0.35)]
FULL, COLD_FULL = [Wanted("wall", "du", 0.50)], [Wanted("wall", "du", 0.55)]
BUSY = [Wanted("wall", "du", 0.45), Wanted("cpu", "du", 0.85), Wanted("wall", "floor 2", 1.10)]
SHAPES = {
    "full": [
        Shape("250,000 entries", "projects", 250_000, BUSY, COLD),
        Shape("1,000,000 entries", "projects", 1_000_000, BUSY, COLD),
        Shape("one folder of 200,000", "one-folder", 200_000, FULL, COLD_FULL),
        Shape("chain of 3,000", "chain", 3_000, [Wanted("cpu", "du", 0.70)], []),
        Shape("3,000 sparse files", "sparse", 3_000, [], []),
    ],
    "small": [
        Shape("30,000 entries", "projects", 30_000, BUSY, COLD),
        Shape("one folder of 20,000", "one-folder", 20_000, FULL, COLD_FULL),
        Shape("chain of 3,000", "chain", 3_000, [Wanted("cpu", "du", 0.70)], []),
        Shape("300 sparse files", "sparse", 300, [], []),
    ],
}


def run(command):
    """Runs to the end; wall and processor time are those of the process and all its threads."""
    with tempfile.TemporaryFile() as output:
        start = time.perf_counter()
        process = os.posix_spawnp(command[0], command, os.environ, file_actions=[
            (os.POSIX_SPAWN_DUP2, output.fileno(), 1), (os.POSIX_SPAWN_OPEN, 2, os.devnull, os.O_WRONLY, 0)])
        _, status, usage = os.wait4(process, 0)
        wall = time.perf_counter() - start
        if status != 0:
            raise RuntimeError(f"{' '.join(command)} ended with status {os.waitstatus_to_exitcode(status)}")
        output.seek(0)
        return Run(wall, usage.ru_utime + usage.ru_stime, output.read().decode())


def drop_caches():
    os.sync()
    Path("/proc/sys/vm/drop_caches").write_text("3")


def may_drop_caches():
    try:
        drop_caches()
        return True
    except OSError:
        return False


def system_calls(command):
    """How many the program makes in all, its threads included."""
    summary = subprocess.run(["strace", "-f", "-c", *command], stdout=subprocess.DEVNULL, stderr=subprocess.PIPE,
                             check=True).stderr.decode()
    return int(re.search(r"^100\.00\s+\S+\s+\S*?\s*(\d+)\s+(?:\d+\s+)?total$", summary, re.MULTILINE)[1])


class Programs:
    def __init__(self, build):
        binaries = Path(build).resolve() / "bin"
        self.driver, self.floor, self.trees = (str(binaries / name) for name in
                                               ("walk_driver", "walk_floor", "walk_trees"))
        self.idle = [self.driver, "--idle"]

    def commands(self, tree, size):
        walks = {"scan": ["--scan"], "scan whole": ["--scan-all"], "measure": ["--measure"]}
        if size <= LIMIT:
            del walks["scan whole"]
        commands = {name: [self.driver, *words, tree] for name, words in walks.items()}
        commands |= {"floor 1": [self.floor, "1", tree], "floor 2": [self.floor, "2", tree], "du": ["du", "-s", tree]}
        peers = {"gdu": ["gdu", "-n", "-p", tree], "ncdu": ["ncdu", "-0", "-o", "/dev/null", tree]}
        return commands | {name: words for name, words in peers.items() if is_walker(name)}

    def whole(self, size):
        """The program's walk that sees every entry."""
        return "scan" if size <= LIMIT else "scan whole"


def is_walker(name):
    """Whether it is installed, and not just another name of coreutils' du."""
    path = shutil.which(name)
    return path is not None and os.path.realpath(path) != os.path.realpath(shutil.which("du"))


def mistakes(name, output, manifest):
    """The figures in which a program's answer differs from the manifest."""
    found, wanted = json.loads(output), {key: manifest[key] for key in ("entries", "bytes")}
    if name.startswith("floor"):
        wanted |= {key: manifest[key] for key in ("files", "links")}
    elif name == "measure":
        wanted["unreadable"] = 0
    elif name == "scan" and manifest["entries"] > LIMIT:
        wanted = {"entries": LIMIT, "limitReached": True, "stopped": False}
    else:
        wanted |= {key: manifest[key] for key in ("files", "otherChildren", "otherBytes", "children", "largestFiles")}
        wanted |= {"skipped": manifest["links"], "limitReached": False, "stopped": False}
    return [f"{key}: {str(found.get(key))[:60]} instead of {str(value)[:60]}"
            for key, value in wanted.items() if found.get(key) != value]


class Measurement:
    """One tree, all programs, warm or cold."""

    def __init__(self, programs, shape, tree, manifest, rounds, cold):
        self.programs, self.shape, self.tree, self.manifest = programs, shape, tree, manifest
        self.cold = cold
        self.whole = programs.whole(shape.size)
        self.commands = programs.commands(tree, shape.size)
        self.runs = {name: [] for name in self.commands}
        self.wrong = {}
        for _ in range(rounds):
            for name, command in self.commands.items():
                if cold:
                    drop_caches()
                elif not self.runs[name]:
                    run(command)  # the first one only warms up
                self.note(name, run(command))

    def note(self, name, done):
        self.runs[name].append(done)
        if name.startswith(("scan", "measure", "floor")):
            different = mistakes(name, done.output, self.manifest)
            if different:
                self.wrong[name] = different

    def median(self, name, figure):
        return statistics.median(getattr(one, figure) for one in self.runs[name])

    def ratio(self, name, figure, peer):
        return self.median(name, figure) / max(self.median(peer, figure), 1e-6)

    def table(self, extras):
        title = f"{self.shape.name}, {'cold' if self.cold else 'warm'}"
        print(f"\n{title:24}{'wall ms':>9}{'cpu ms':>9}{'wall/du':>9}{'cpu/du':>9}{'wall/fl2':>9}{'cpu/fl2':>9}"
              f"{'calls/e':>9}{'MiB':>7}  manifest")
        for name in self.commands:
            ratios = [self.ratio(name, figure, peer) for peer in ("du", "floor 2") for figure in ("wall", "cpu")]
            calls, memory = extras.get(name, (None, None))
            known = "" if name in ("du", "gdu", "ncdu") else "MISSED" if name in self.wrong else "met"
            print(f"{name:24}{1000 * self.median(name, 'wall'):9.1f}{1000 * self.median(name, 'cpu'):9.1f}"
                  + "".join(f"{ratio:9.2f}" for ratio in ratios)
                  + (f"{calls:9.2f}" if calls else f"{'':9}") + (f"{memory:7.1f}" if memory is not None else f"{'':7}")
                  + f"  {known}")
        for name, different in self.wrong.items():
            print(f"  {name}: " + "; ".join(different))

    def targets(self):
        for wanted in self.shape.cold_wanted if self.cold else self.shape.wanted:
            value = self.ratio(self.whole, wanted.figure, wanted.peer)
            report_target(f"{self.shape.name}, {'cold' if self.cold else 'warm'}: {self.whole}, {wanted.figure} / "
                          f"{wanted.peer}", value, wanted.at_most)


def report_target(what, value, at_most, unit=""):
    print(f"  {what:68}{value:9.2f}{unit:3} ≤ {at_most:g}{unit:3} {'met' if value <= at_most else 'MISSED'}")


def peak(output):
    return json.loads(output)["peakKiB"]


def extras(measurement, idle_memory):
    """{program: (system calls per entry above the idle program's, MiB above the idle program's)}"""
    programs, entries, found = measurement.programs, measurement.manifest["entries"], {}
    idle_calls = system_calls(programs.idle) if shutil.which("strace") else None
    for name in (measurement.whole, "measure", "floor 2"):
        calls = None
        if idle_calls is not None:
            calls = (system_calls(measurement.commands[name]) - idle_calls) / entries
        memory = None
        if name != "floor 2":
            memory = max(peak(one.output) - idle_memory for one in measurement.runs[name]) / 1024
        found[name] = calls, memory
    return found


def worst_cancel(programs, tree, wall):
    """(milliseconds from the wish to stop to the answer at worst, how many of the scans were stopped)"""
    answers = []
    for step in range(1, 13):
        delay = str(int(1000 * wall * step / 13))
        output = json.loads(run([programs.driver, "--scan-all", "--cancel-after", delay, tree]).output)
        if "cancelMicroseconds" in output and output["stopped"]:
            answers.append(output["cancelMicroseconds"] / 1000)
    return max(answers, default=0.0), len(answers)


def manners(measurement, memory):
    """What else a walk promises, on the tree that takes the longest; returns whether the manifest held."""
    programs, tree, wall = measurement.programs, measurement.tree, measurement.median(measurement.whole, "wall")
    report_target("peak memory above the idle program", memory, 16, "MiB")
    worst, stopped = worst_cancel(programs, tree, wall)
    report_target(f"longest answer to a cancel, of {stopped}", worst, 100, "ms")
    told = run([programs.driver, "--scan-all", "--progress", tree])
    calls = json.loads(told.output)["progressCalls"]
    print(f"  progress: {calls} calls in {told.wall:.2f} s")
    frugal = run(["prlimit", f"--nofile={DESCRIPTORS + 3}", programs.driver, "--scan-all", tree])
    wrong = mistakes("scan whole", told.output, measurement.manifest)
    wrong += mistakes("scan whole", frugal.output, measurement.manifest)
    print(f"  manifest with progress, and with at most {DESCRIPTORS} descriptors: {'; '.join(wrong) or 'met'}")
    return not wrong


def measure(programs, shapes, rounds, cold, folder):
    """Measures on one tree after the other; returns whether every manifest held."""
    idle_memory = max(peak(run(programs.idle).output) for _ in range(rounds))
    right, done = True, []
    largest = max(shapes, key=lambda shape: shape.size)
    for shape in shapes:
        tree = str(Path(folder) / shape.kind)
        start = time.perf_counter()
        manifest = json.loads(run([programs.trees, tree, shape.kind, str(shape.size)]).output)
        print(f"{shape.name}: made in {time.perf_counter() - start:.1f} s", flush=True)
        warm = Measurement(programs, shape, tree, manifest, rounds, False)
        found = extras(warm, idle_memory)
        warm.table(found)
        taken = [warm] + ([Measurement(programs, shape, tree, manifest, min(rounds, 3), True)] if cold else [])
        for chilled in taken[1:]:
            chilled.table({})
        print()
        for measurement in taken:
            measurement.targets()
            right = right and not measurement.wrong
        if found[warm.whole][0] is not None and shape.kind != "chain":
            report_target(f"{shape.name}: system calls per entry", found[warm.whole][0], 1.3)
        if shape is largest:
            right = manners(warm, found[warm.whole][1]) and right
        print(flush=True)
        subprocess.run(["rm", "-rf", tree], check=True)
    return right


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("build", type=Path)
    parser.add_argument("--trees", choices=SHAPES, default="small", help="small ones take less than a minute (small)")
    parser.add_argument("--rounds", type=int, default=3, help="runs of each program on each tree (3)")
    parser.add_argument("--cold", action="store_true", help="measure with empty caches as well; needs root")
    options = parser.parse_args()
    cold = options.cold
    if cold and not may_drop_caches():
        print("Cold runs are left out: this user may not empty the system's caches.")
        cold = False
    with tempfile.TemporaryDirectory(prefix="kestrune-walk-") as folder:
        right = measure(Programs(options.build), SHAPES[options.trees], options.rounds, cold, folder)
    print("every manifest was met" if right else "A MANIFEST WAS MISSED")
    return 0 if right else 1


if __name__ == "__main__":
    sys.exit(main())
