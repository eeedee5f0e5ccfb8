#!/usr/bin/python3
"""Lets every system call of a save fail, and kills the program at every one of them.

file_faults.py DRIVER WORKFOLDER: needs strace and the right to trace. After each run the file must hold the old content
or the new one, whole, and the report must not claim a save that was not made. Prints counts; exit status 0 when nothing
went wrong.
"""

import collections
import os
import re
import shutil
import subprocess
import sys

ERRORS = {
    "write": ("ENOSPC", "EIO", "EDQUOT"),
    "fsync": ("EIO", "ENOSPC"),
    "openat": ("EMFILE", "EACCES", "ENOSPC"),
    "flock": ("ENOLCK", "EAGAIN"),
    "mkdir": ("ENOSPC", "EROFS"),
    "renameat2": ("ENOSPC", "EINVAL"),
}
OTHER_ERRORS = ("EIO", "ENOMEM")
CALL = re.compile(r"^(\w+)\((.*)")
MEMORY = {"brk", "mmap", "munmap", "mprotect", "futex"}  # of the allocator, not of the save
OLD, NEW = "old content", "new content, quite a bit longer than the old one"
LEFTOVER = ".file.json.kestrune-0123456789abcdef"


class Violation(Exception):
    """A save broke a promise."""


class Scenario:
    def __init__(self, name, mode="replace", *, old=OLD, below="", leftover=False, link=False):
        self.name, self.mode, self.old, self.below, self.leftover, self.link = name, mode, old, below, leftover, link

    def build(self, folder):
        shutil.rmtree(folder, ignore_errors=True)
        os.makedirs(folder)
        self.folder = folder
        self.path = os.path.join(folder, self.below, "file.json")
        self.file = os.path.join(folder, "real.json") if self.link else self.path
        if self.old is not None:
            with open(self.file, "w", encoding="ascii") as file:
                file.write(self.old)
        if self.link:
            os.symlink("real.json", self.path)
        if self.leftover:
            with open(os.open(os.path.join(folder, LEFTOVER), os.O_CREAT | os.O_WRONLY, 0o600), "wb") as file:
                file.write(b"half")
        self.before = self.listing()

    def listing(self):
        return {os.path.relpath(os.path.join(root, name), self.folder)
                for root, folders, files in os.walk(self.folder) for name in folders + files}

    def content(self):
        if not os.path.exists(self.file):
            return None
        with open(self.file, encoding="utf-8") as file:
            return file.read()

    def aside(self):
        """What was set aside because it could not be used."""
        if not os.path.exists(self.path + ".unreadable-1"):
            return None
        with open(self.path + ".unreadable-1", encoding="utf-8") as file:
            return file.read()

    def holds_new(self):
        content = self.content()
        if content == self.old or (content is None and self.aside() == self.old):
            return False
        if content is not None and self.mode == "replace" and content == NEW:
            return True
        if content is not None and self.mode == "set" and f'"{NEW}"' in content and content.endswith("}\n"):
            return True
        raise Violation(f"neither the old content nor the new one: {content!r}")


SCENARIOS = (
    Scenario("file is there"),
    Scenario("file and folders are missing", old=None, below="a/b"),
    Scenario("a killed run left its file", leftover=True),
    Scenario("the user's link", link=True),
    Scenario("preference", "set", old='{"kept": true}'),
    Scenario("damaged preferences", "set", old="{ damaged"),
)


def run(driver, scenario, trace, *injections):
    process = subprocess.run(["strace", "-o", trace, *injections, driver, scenario.mode, scenario.path, NEW],
                             stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE, timeout=20,
                             check=False)
    return process.stdout.decode().strip()


def calls_of(trace):
    """The calls between the driver's two marks, as (name, number among all calls of that name, arguments)."""
    counts, marks, calls = collections.Counter(), 0, []
    with open(trace, encoding="utf-8", errors="replace") as lines:
        for line in lines:
            match = CALL.match(line)
            if not match:
                continue
            name, arguments = match.groups()
            counts[name] += 1
            if name == "read" and arguments.startswith("-1,"):
                marks += 1
            elif marks == 1 and name not in MEMORY:
                calls.append((name, counts[name], arguments))
    if marks != 2:
        raise Violation(f"the trace has {marks} marks")
    return calls


def look(scenario, report, call, *, killed, renamed):
    new = scenario.holds_new()
    if new and scenario.mode == "set" and '"kept"' not in scenario.content() and scenario.aside() != scenario.old:
        raise Violation("what was there before is gone")
    if killed:
        return
    if report not in ("ok", "failed"):
        raise Violation(f"the driver said {report!r}")
    if report == "ok" and not new:
        raise Violation("a save was reported that was not made")
    if report == "failed" and new and not (renamed and call == "fsync"):
        raise Violation("a save was made and reported as failed")
    left = {name for name in scenario.listing() if ".kestrune-" in name} - scenario.before
    if left and call != "unlinkat":
        raise Violation(f"left behind: {left}")
    if report == "failed" and not new and scenario.below and scenario.listing() != scenario.before and call != "rmdir":
        raise Violation(f"folders left behind: {scenario.listing()}")


def attack(driver, scenario, work):
    folder, trace = os.path.join(work, "home"), os.path.join(work, "trace")
    scenario.build(folder)
    if run(driver, scenario, trace) != "ok" or not scenario.holds_new():
        raise Violation("the undisturbed save failed")
    calls = calls_of(trace)
    outcomes = collections.Counter()
    renamed = False
    for name, number, arguments in calls:
        renamed = renamed or (name.startswith("rename") and ".kestrune-" in arguments)
        faults = [f"error={error}" for error in ERRORS.get(name, OTHER_ERRORS)] + ["signal=KILL"]
        for fault in faults:
            scenario.build(folder)
            report = run(driver, scenario, trace, "-e", f"inject={name}:{fault}:when={number}")
            killed = fault == "signal=KILL"
            try:
                look(scenario, report, name, killed=killed, renamed=renamed)
            except Violation as violation:
                raise Violation(f"{scenario.name}: {name}({arguments[:90]} with {fault}: {violation}") from violation
            outcomes["killed" if killed else report] += 1
    print(f"{scenario.name}: {len(calls)} calls, {dict(outcomes)}, no violation")


def main():
    driver, work = sys.argv[1], sys.argv[2]
    os.makedirs(work, exist_ok=True)
    try:
        for scenario in SCENARIOS:
            attack(driver, scenario, work)
    except Violation as violation:
        print(f"VIOLATION: {violation}")
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
