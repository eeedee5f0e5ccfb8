#!/usr/bin/python3
"""Asks to end numbers that do not stand for the process they seem to.

small_numbers.py PROBE: as root; needs strace and the right to trace. A request for a number below 2 must neither take
hold of a process nor signal one; a request to end an ordinary process shows first that such calls are seen. A number of
which /proc tells another process than the kernel knows by it must be refused too.
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


# The first process of a new set of processes, whose /proc is still that of the outer set: starts a program under a
# number that a process of the same program has out there, and asks to end it.
STRANGER = """
echo $(($2 - 1)) > /proc/sys/kernel/ns_last_pid
/bin/sleep 60 &
[ $! = "$2" ] || exit 9
"$1" stop "$2" "$3"
kill -0 $! && echo untouched
kill -9 $!
"""


def strangers_wrong(probe):
    """Whether a process was signalled of which nothing was known but a namesake's number."""
    with subprocess.Popen(["/bin/sleep", "60"]) as outer:
        program = os.readlink(f"/proc/{outer.pid}/exe")
        result = subprocess.run(
            ["unshare", "--pid", "--fork", "/bin/sh", "-c", STRANGER, "sh", probe, str(outer.pid), program],
            capture_output=True, check=False, timeout=60)
        is_alive = outer.poll() is None
        outer.kill()
    if result.returncode == 9:
        sys.exit("a number could not be chosen; is that permitted here?")
    print(f"number of a stranger: {result.stdout.decode().split()}")
    return result.stdout != b"refused\nuntouched\n" or not is_alive


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
    wrong += strangers_wrong(probe)
    return 1 if wrong else 0


if __name__ == "__main__":
    if not shutil.which("strace"):
        sys.exit("strace is missing: this test cannot say anything without it")
    sys.exit(main(sys.argv[1]))
