#!/usr/bin/python3
"""Lets every system call of a move to the Trash fail, and kills the program at every one of them.

trash_faults.py DRIVER WORKFOLDER: needs strace and the right to trace. After each run the item must be at its place, or
in the Trash with a whole record, and the report must say so. Prints counts; exit status 0 when nothing went wrong.
"""

import collections
import os
import shutil
import sys

from call_faults import faults_at, marked_calls
from trash_arena import Arena, Violation

class Scenario:
    def __init__(self, name, *, collide=False, fixed=None):
        self.name = name
        self.collide = collide
        self.fixed = fixed  # picks one call of the trace that fails in every run: (call, arguments) -> errno or None


def unnamed_files_unsupported(call, arguments, _count):
    return "EOPNOTSUPP" if call == "openat" and "O_TMPFILE" in arguments else None


def doubt_after_the_move(call, arguments, _count):
    return "EIO" if call == "lseek" and arguments.endswith("after rename") else None


def taken_while_moving(call, _arguments, count):
    return "EEXIST" if call == "renameat2" and count == 1 else None


SCENARIOS = (
    Scenario("first move of a home"),
    Scenario("name taken in the Trash", collide=True),
    Scenario("file system without unnamed files", fixed=unnamed_files_unsupported),
    Scenario("name taken at the last moment", fixed=taken_while_moving),
    Scenario("move that must be undone", fixed=doubt_after_the_move),
)


def traced(arena, trace, injections):
    """The calls of the move, as (name, number among the calls of that name, arguments)."""
    arena.move(prefix=("strace", "-o", trace, *injections))
    return marked_calls(trace)


def fixed_injection(scenario, calls):
    seen = collections.Counter()
    for name, number, arguments in calls:
        seen[name] += 1
        error = scenario.fixed(name, arguments, seen[name]) if scenario.fixed else None
        if error:
            return name, ["-e", f"inject={name}:error={error}:when={number}"]
    if scenario.fixed:
        raise Violation("the call that shall always fail is not made: " + scenario.name)
    return None, []


def attack(scenario, arena, trace, tally):
    arena.build(collide=scenario.collide)
    always_failing, injections = fixed_injection(scenario, traced(arena, trace, []))
    arena.build(collide=scenario.collide)
    calls = traced(arena, trace, injections)
    for name, number, _ in calls:
        if name == always_failing:
            continue
        for kind, fault in faults_at(name, number):
            arena.build(collide=scenario.collide)
            outcome = arena.move(prefix=("strace", "-o", os.devnull, *injections, "-e", fault))
            tally[kind] += 1
            if outcome.killed != (kind == "killed"):
                raise Violation(f"{fault} did not take place")
            try:
                arena.check(outcome, stray_record_allowed=scenario.fixed is not None)
                if arena.in_place():
                    again = arena.move()
                    arena.check(again)
                    if not again.ok:
                        raise Violation("the next move fails: " + again.text)
            except Violation as violation:
                tally["wrong"] += 1
                print(f"WRONG ({scenario.name}, {fault}): {violation}")


def main():
    driver, work = os.path.abspath(sys.argv[1]), os.path.abspath(sys.argv[2])
    if not shutil.which("strace"):
        sys.exit("strace is missing: this test cannot say anything without it")
    os.makedirs(work, exist_ok=True)
    arena = Arena(driver, os.path.join(work, "home"))
    total = collections.Counter()
    for scenario in SCENARIOS:
        tally = collections.Counter()
        attack(scenario, arena, os.path.join(work, "trace"), tally)
        print(f"{scenario.name}: {tally['failed']} failing calls, {tally['killed']} kills, {tally['wrong']} wrong",
              flush=True)
        total += tally
    shutil.rmtree(work)
    print(f"failing calls: {total['failed']}, kills: {total['killed']}, wrong: {total['wrong']}")
    sys.exit(1 if total["wrong"] or not total["failed"] or not total["killed"] else 0)


main()
