#!/usr/bin/python3
"""Lets every system call of a move back from the Trash fail, and kills the program at every one of them.

put_back_faults.py DRIVER WORKFOLDER: needs strace and the right to trace. After each run the item must be back, or in
the Trash with its whole record, and the report must say so. Prints counts; exit status 0 when nothing went wrong.
"""

import collections
import os
import shutil
import sys

from call_faults import faults_at, marked_calls
from put_back_arena import PutBackArena
from trash_arena import Violation


def doubtful(calls):
    """The injection that makes a move be undone: the mounts cannot be read after it."""
    for name, number, arguments in calls:
        if name == "lseek" and arguments.endswith("after rename"):
            return name, ("-e", f"inject={name}:error=EIO:when={number}")
    raise Violation("no look at the mounts follows the move")


def traced(arena, trace, injections):
    arena.build()
    arena.put_back(prefix=("strace", "-o", trace, *injections))
    return marked_calls(trace)


def attack(arena, trace, tally, undone):
    always_failing, injections = doubtful(traced(arena, trace, ())) if undone else (None, ())
    for name, number, _ in traced(arena, trace, injections):
        if name == always_failing:
            continue
        for kind, fault in faults_at(name, number):
            arena.build()
            outcome = arena.put_back(prefix=("strace", "-o", os.devnull, *injections, "-e", fault))
            tally[kind] += 1
            try:
                if outcome.killed != (kind == "killed"):
                    raise Violation("the fault did not take place")
                arena.check(outcome)
                if arena.is_at(arena.location):
                    again = arena.put_back()
                    arena.check(again)
                    if not again.ok:
                        raise Violation("the next move fails: " + again.text)
            except Violation as violation:
                tally["wrong"] += 1
                print(f"WRONG ({'undone' if undone else 'plain'} move, {fault}): {violation}")


def main():
    driver, work = os.path.abspath(sys.argv[1]), os.path.abspath(sys.argv[2])
    if not shutil.which("strace"):
        sys.exit("strace is missing: this test cannot say anything without it")
    os.makedirs(work, exist_ok=True)
    arena = PutBackArena(driver, os.path.join(work, "home"))
    tally = collections.Counter()
    for undone in (False, True):
        attack(arena, os.path.join(work, "trace"), tally, undone)
    shutil.rmtree(work)
    print(f"failing calls: {tally['failed']}, kills: {tally['killed']}, wrong: {tally['wrong']}")
    sys.exit(1 if tally["wrong"] or not tally["failed"] or not tally["killed"] else 0)


main()
