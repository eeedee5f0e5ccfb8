"""What the whole program costs beside the smallest Qt Widgets tray program (bare/), measured in one run, turn by turn
or side by side, so that both see the same machine. Prints one table.

    tests/desktop/session.sh /usr/bin/python3 benchmarks/program.py BUILD_FOLDER

Kestrune shows no window when it starts in a tray, so it is asked for one, over the bus, as soon as it can be asked.
Needs python3-xlib.
"""
import argparse
import os
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

from Xlib import X, Xatom, display

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / 'tests/desktop'))
from desk import GLib, Tray, bus_call, wait  # noqa: E402
from home import Home  # noqa: E402


class Program:
    """A running program under measurement."""

    def __init__(self, command, environment):
        self.started = time.monotonic()
        self.process = subprocess.Popen(command, env=environment, stdin=subprocess.DEVNULL,
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.files = Path('/proc') / str(self.process.pid)

    def memory(self):
        """(resident, private dirty) in MB."""
        figures = {}
        for line in (self.files / 'smaps_rollup').read_text().splitlines()[1:]:
            name, value = line.split()[:2]
            figures[name] = int(value) / 1024
        return figures['Rss:'], figures['Private_Dirty:']

    def settled_memory(self):
        """Memory once it has not changed for three seconds."""
        last, since = self.memory(), time.monotonic()
        while time.monotonic() - since < 3:
            time.sleep(0.2)
            now = self.memory()
            if now != last:
                last, since = now, time.monotonic()
            if time.monotonic() - self.started > 60:
                break
        return last

    def threads(self):
        return {task.name for task in (self.files / 'task').iterdir()}

    def settle_threads(self):
        """Waits until the toolkit's pool threads, which end after 30 idle seconds, are gone."""
        known, since = self.threads(), time.monotonic()
        while time.monotonic() - since < 32:
            time.sleep(1)
            if self.threads() != known:
                known, since = self.threads(), time.monotonic()

    def work(self):
        """{thread: (processor time in ms, context switches)} so far."""
        work = {}
        for task in (self.files / 'task').iterdir():
            processor = int((task / 'schedstat').read_text().split()[0]) / 1e6
            lines = (task / 'status').read_text().splitlines()
            work[task.name] = processor, sum(int(line.split()[1]) for line in lines if 'ctxt_switches' in line)
        return work

    def stop(self):
        self.process.kill()
        self.process.wait()


class Screen:
    """Sees when a program's window is mapped and painted."""

    def __init__(self):
        self.display = display.Display()
        self.root = self.display.screen().root
        self.clients = self.display.intern_atom('_NET_CLIENT_LIST')
        self.owner = self.display.intern_atom('_NET_WM_PID')

    def is_painted(self, process):
        listed = self.root.get_full_property(self.clients, Xatom.WINDOW)
        for identity in listed.value if listed else ():
            window = self.display.create_resource_object('window', identity)
            try:
                owner = window.get_full_property(self.owner, Xatom.CARDINAL)
                if not owner or owner.value[0] != process:
                    continue
                size = window.get_geometry()
                data = window.get_image(0, 0, size.width, size.height, X.ZPixmap, 0xFFFFFFFF).data
            except Exception:  # the window went or is not viewable yet
                continue
            # An unpainted window has one colour, a painted one shows something.
            return len(data) > 4 and data.count(data[:4]) * 4 < len(data)
        return False


def ask_for_window():
    """Whether a running Kestrune has taken the request that a second start would send."""
    try:
        bus_call('com.torvandelsyn.kestrune', '/com/torvandelsyn/kestrune', 'org.freedesktop.Application', 'Activate',
                 GLib.Variant('(a{sv})', ({},)))
        return True
    except GLib.Error:
        return False


def time_to_window(command, environment, screen, ask=lambda: True):
    program = Program(command, environment)
    asked = False
    try:
        while not screen.is_painted(program.process.pid):
            asked = asked or ask()
            if time.monotonic() - program.started > 30:
                raise AssertionError(f'{command} painted no window')
            time.sleep(0.002)
        return 1000 * (time.monotonic() - program.started)
    finally:
        program.stop()


def wall_time(command, environment):
    begin = time.monotonic()
    subprocess.run(command, env=environment, check=True, stdout=subprocess.DEVNULL, stdin=subprocess.DEVNULL)
    return 1000 * (time.monotonic() - begin)


def side_by_side(programs, seconds):
    """[(ms of processor time a second, context switches a second)] while both do nothing."""
    for program in programs:
        program.settle_threads()
    before = [program.work() for program in programs]
    begin = time.monotonic()
    time.sleep(seconds)
    elapsed = time.monotonic() - begin
    after = [program.work() for program in programs]
    rates = []
    for old, new in zip(before, after):
        if not old.keys() <= new.keys():
            raise AssertionError('a thread ended while it was watched, and its work went with it')
        rates.append(tuple(sum(new[thread][i] - old.get(thread, (0, 0))[i] for thread in new) / elapsed
                           for i in range(2)))
    return rates


def main():
    parser = argparse.ArgumentParser(description=__doc__.split('\n')[0])
    parser.add_argument('build', type=Path)
    parser.add_argument('--rounds', type=int, default=7, help='starts of each program (7)')
    parser.add_argument('--seconds', type=int, default=60, help='how long idle programs are watched (60)')
    options = parser.parse_args()
    ours, bare = [str(options.build / 'bin' / name) for name in ('kestrune', 'bare-tray')]
    rows = []

    with tempfile.TemporaryDirectory() as folder:
        home = Home(folder)
        environment = {**os.environ, **home.environment, 'QT_LINUX_ACCESSIBILITY_ALWAYS_ON': '0',
                       'QT_ACCESSIBILITY': '0'}
        screen = Screen()
        starts, dumps = ([], []), ([], [])
        for _ in range(options.rounds):
            starts[0].append(time_to_window([ours], environment, screen, ask_for_window))
            starts[1].append(time_to_window([bare, '--window'], environment, screen))
            dumps[0].append(wall_time([ours, '--dump-menu'], environment))
            dumps[1].append(wall_time(['/bin/true'], environment))
        rows.append(('start to painted window, ms', *map(statistics.median, starts)))

        running = []
        try:
            running = [Program(command, environment) for command in ([ours], [bare])]
            tray = [Tray(program.process.pid) for program in running][0]
            memory = [program.settled_memory() for program in running]
            rows += [('resident, tray only, MB', memory[0][0], memory[1][0]),
                     ('private dirty, tray only, MB', memory[0][1], memory[1][1])]
            idle = side_by_side(running, options.seconds)
            rows += [('processor, tray only, ms/s', idle[0][0], idle[1][0]),
                     ('context switches, tray only, 1/s', idle[0][1], idle[1][1])]

            running[1].stop()
            running[1] = Program([bare, '--window'], environment)
            tray.click('✦ Open Kestrune')
            wait(lambda: all(screen.is_painted(program.process.pid) for program in running), 'both windows')
            memory = [program.settled_memory() for program in running]
            rows += [('resident, window, MB', memory[0][0], memory[1][0]),
                     ('private dirty, window, MB', memory[0][1], memory[1][1])]
            idle = side_by_side(running, options.seconds)
            rows += [('processor, window, ms/s', idle[0][0], idle[1][0]),
                     ('context switches, window, 1/s', idle[0][1], idle[1][1])]
        finally:
            for program in running:
                program.stop()
        rows.append(('--dump-menu (beside /bin/true), ms', *map(statistics.median, dumps)))

    print(f"{'':36}{'kestrune':>10}{'bare-tray':>10}{'ratio':>8}")
    for name, first, second in rows:
        ratio = f'{first / second:8.2f}' if second else f"{'-':>8}"
        print(f'{name:36}{first:10.2f}{second:10.2f}{ratio}')


if __name__ == '__main__':
    main()
