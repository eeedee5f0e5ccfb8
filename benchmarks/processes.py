#!/usr/bin/python3
"""What a look at processes and ports costs beside the tools: processes.py PROCESSES_DRIVER [ROUNDS]

Run as root: a fleet of 300 processes and 20 servers (10 listening sockets and 600 descriptors each) is started as a user
who owns nothing else, and the tools and the driver are run as that user, in turn. Processor time of children and
grandchildren is compared: ps and lsof as the program would have to run them, ss as a tool that asks the kernel as well,
and the driver's first and later snapshots. Exit status 0 when each snapshot named the owners of all sockets.
"""

import ctypes
import os
import resource
import signal
import socket
import statistics
import subprocess
import sys

USER = 64_999  # of nobody
PROCESSES, SERVERS, SOCKETS, DESCRIPTORS = 280, 20, 10, 600
PR_SET_DUMPABLE = 4
LATER = 24  # snapshots after the first, in each round
PS = ["/bin/ps", "-U", str(USER), "-o", "pid=,rss=,pcpu=,exe="]
LSOF = ["/usr/bin/lsof", "-nP", "-iTCP", "-sTCP:LISTEN", "-Fpn"]
SS = ["/usr/bin/ss", "-ltnp"]


def become_user():
    os.setgroups([])
    os.setresgid(USER, USER, USER)
    os.setresuid(USER, USER, USER)


def serve(ready):
    """One server: listening sockets among connections, pipes and files, as a development server holds them."""
    listening = [socket.create_server(("127.0.0.1", 0)) for _ in range(SOCKETS)]
    held = [listening]
    count = SOCKETS + 5
    while count < DESCRIPTORS:
        held.append([socket.socketpair(), os.pipe(), open("/etc/passwd"), open("/dev/null")])
        count += 6
    ready()
    signal.pause()  # here, where everything is still held


def start_member(work):
    """A process of the fleet, which does its work and waits for the end; it dies with this script."""
    reader, writer = os.pipe()
    pid = os.fork()
    if pid == 0:
        os.setsid()
        become_user()
        # Whoever changes its owner hides from the new one, as a program started by that owner does not.
        ctypes.CDLL(None).prctl(PR_SET_DUMPABLE, 1)
        work(lambda: os.write(writer, b"1"))
    os.close(writer)
    ready = os.read(reader, 1)
    os.close(reader)
    if not ready:
        raise RuntimeError("a process of the fleet did not start")
    return pid


def sleep_as_program(ready):
    ready()
    os.execv("/bin/sleep", ["sleep", "100000"])


def tool_seconds(command):
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, preexec_fn=become_user)
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime


def snapshots(driver):
    """Seconds of each snapshot of a new driver, and whether all of them saw every process and every socket's owner."""
    output = subprocess.run([driver], input="\n" * (1 + LATER), stdout=subprocess.PIPE, text=True, check=True,
                            preexec_fn=become_user).stdout
    lines = [[int(number) for number in line.split()] for line in output.splitlines()]
    right = all(line[1] == PROCESSES + SERVERS + 1 and line[2:] == [SERVERS, SERVERS * SOCKETS] for line in lines)
    return [line[0] / 1e6 for line in lines], right


def measure(driver, rounds):
    tools = {"ps": PS, "lsof": LSOF, "ss": SS}
    times = {name: [] for name in [*tools, "first", "later", "later, mean"]}
    right = True
    for turn in range(rounds + 1):
        seconds = {name: tool_seconds(command) for name, command in tools.items()}
        taken, complete = snapshots(driver)
        right = right and complete
        if turn > 0:  # the first turn only warms up
            seconds |= {"first": taken[0], "later": statistics.median(taken[1:]),
                        "later, mean": statistics.mean(taken[1:])}
            for name, value in seconds.items():
                times[name].append(value)
    return {name: statistics.median(values) for name, values in times.items()}, right


def report(medians, right):
    both = medians["ps"] + medians["lsof"]
    print(f"{'processor time, median':24}{'ms':>9}{'/ (ps + lsof)':>16}{'/ ss':>8}")
    for name, seconds in {**medians, "ps + lsof": both}.items():
        print(f"{name:24}{seconds * 1000:9.2f}{seconds / both:16.4f}{seconds / medians['ss']:8.3f}")
    print(f"later: 1/{both / medians['later']:.0f} of ps and lsof; mean of all later ones: "
          f"1/{both / medians['later, mean']:.0f}")
    print(f"{SERVERS * SOCKETS} sockets of {SERVERS} servers: {'all owned in every snapshot' if right else 'MISSED'}")


def main():
    driver = os.path.abspath(sys.argv[1])
    rounds = int(sys.argv[2]) if len(sys.argv) > 2 else 9
    fleet = []
    try:
        for number in range(PROCESSES + SERVERS):
            fleet.append(start_member(serve if number % 15 == 0 else sleep_as_program))
        medians, right = measure(driver, rounds)
    finally:
        for pid in fleet:
            os.kill(pid, signal.SIGKILL)
            os.waitpid(pid, 0)
    report(medians, right)
    return 0 if right else 1


if __name__ == "__main__":
    sys.exit(main())
