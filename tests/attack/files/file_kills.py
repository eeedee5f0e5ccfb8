#!/usr/bin/python3
"""Kills the program while it saves, again and again, and looks at what the file holds.

file_kills.py DRIVER WORKFOLDER KILLS: after each kill the file must be whole and hold the last acknowledged value or the
one after it, and no more than the killed writer's own half-written file may lie beside it. Exit status 0 when it did.
"""

import json
import os
import random
import shutil
import signal
import subprocess
import sys
import time

LONGEST_RUN = 0.025  # seconds from the first acknowledged save to the kill


class Violation(Exception):
    """A save broke a promise."""


def counter_in(mode, path):
    with open(path, "rb") as file:
        content = file.read()
    if mode == "files":
        numbers = content.split()
        if len(numbers) != 2000 or len(set(numbers)) != 1 or not content.endswith(b" "):
            raise Violation(f"not a whole file: {content[:60]!r} … {len(content)} bytes")
        return int(numbers[0])
    values = json.loads(content)
    if values["kept"] != ["/home/user/.npm"]:
        raise Violation(f"another key was lost: {values}")
    return int(values["counter"][0])


def run_and_kill(driver, mode, path, first):
    """The last acknowledged number; the process was killed at a random moment."""
    with subprocess.Popen([driver, mode, path, str(first)], stdout=subprocess.PIPE, bufsize=0) as process:
        acknowledged = process.stdout.readline()
        time.sleep(random.uniform(0, LONGEST_RUN))
        process.send_signal(signal.SIGKILL)
        acknowledged += process.stdout.read()
        process.wait()
    if process.returncode != -signal.SIGKILL:
        raise Violation(f"the driver ended by itself: {process.returncode}")
    return int(acknowledged.split()[-1])


def attack(driver, mode, folder, kills):
    shutil.rmtree(folder, ignore_errors=True)
    path = os.path.join(folder, "file.json")
    os.makedirs(folder)
    if mode == "preferences":
        with open(path, "w", encoding="ascii") as file:
            json.dump({"kept": ["/home/user/.npm"]}, file)
    number, saves, left_behind, not_told = 1, 0, 0, 0
    for _ in range(kills):
        acknowledged = run_and_kill(driver, mode, path, number)
        held = counter_in(mode, path)
        if held not in (acknowledged, acknowledged + 1):
            raise Violation(f"acknowledged {acknowledged}, the file holds {held}")
        beside = [name for name in os.listdir(folder) if name != "file.json"]
        if len(beside) > 1 or any(not name.startswith(".file.json.kestrune-") for name in beside):
            raise Violation(f"left beside the file: {beside}")
        saves += held - number + 1
        left_behind += len(beside)
        not_told += held - acknowledged
        number = held + 1
    print(f"{mode}: {kills} kills during {saves} saves; {left_behind} half-written files, all cleaned up by the next "
          f"run; {not_told} saves done and not yet told; 0 invalid files, 0 acknowledged saves lost")
    if not left_behind or not not_told:
        raise Violation("no kill hit a save half-way: the attack is too weak")


def main():
    driver, work, kills = sys.argv[1], sys.argv[2], int(sys.argv[3])
    try:
        for mode in ("files", "preferences"):
            attack(driver, mode, os.path.join(work, mode), kills)
    except Violation as violation:
        print(f"VIOLATION: {violation}")
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
