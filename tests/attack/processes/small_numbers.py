#!/usr/bin/python3
"""Asks to end the numbers that stand for no single process, and watches every system call of it.

small_numbers.py PROBE: needs strace and the right to trace. Not one call may take hold of a process or signal one. A
request to end an ordinary process shows first that such calls are seen.
"""

import os
import re
import shutil
import subprocess
import sys
import tempfile

NUMBERS = (1, 0, -1, -2, -(1 << 31))
# Whichever way there is to signal a process, and to take hold of one before.
CALLS = re.compile(r"\b(kill|tkill|tgkill|rt_sigqueueinfo|rt_tgsigqueueinfo|pidfd_open|pidfd_send_signal)\(.*")


def traced(probe, number, program):
    """The calls, and whether the request was refused."""
    with tempfile.NamedTemporaryFile("r", errors="replace") as trace:
        result = subprocess.run(
            ["strace", "-f", "-o", trace.name, probe, "stop", str(number), program],
            capture_output=True, check=False, timeout=60)
        lines = trace.read().splitlines()
    if not any("exit_group(" in line for line in lines):
        sys.exit(f"strace saw no whole run; is tracing permitted here? {result}")
    calls = [found.group(0) for found in map(CALLS.search, lines) if found]
    return calls, result.returncode == 1 and result.stdout == b"refused\n"


def first_program():
    """What a listing calls the first process, so that nothing but its number speaks against it."""
    try:
        return os.readlink("/proc/1/exe")
    except OSError:
        with open("/proc/1/comm", encoding="utf-8") as file:
            return file.read().rstrip("\n")


def main(probe):
    with subprocess.Popen(["/bin/sleep", "60"]) as sleeper:
        calls, refused = traced(probe, sleeper.pid, os.path.realpath("/bin/sleep"))
        if refused or not any(call.startswith("pidfd_send_signal(") for call in calls):
            sleeper.kill()
            sys.exit(f"an ordinary request was not seen: {calls}")
    wrong = 0
    program = first_program()
    for number in NUMBERS:
        calls, refused = traced(probe, number, program)
        print(f"{number}: {'refused' if refused else 'NOT REFUSED'}, {len(calls)} calls that concern a process")
        wrong += len(calls) + (not refused)
    return 1 if wrong else 0


if __name__ == "__main__":
    if not shutil.which("strace"):
        sys.exit("strace is missing: this test cannot say anything without it")
    sys.exit(main(sys.argv[1]))
