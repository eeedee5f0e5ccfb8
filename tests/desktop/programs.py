"""Real programs beside the one under test: applications with windows, and servers that listen on ports."""
import contextlib
import os
import shutil
import signal
import subprocess
import sys
import threading
import urllib.parse

from desk import PATIENCE, bring_to_front, listed_windows, output, wait

SERVER = '''
import signal, socket, sys
sockets = []
for endpoint in sys.argv[1:]:
    host, port = endpoint.rsplit(' ', 1)
    family = socket.AF_INET6 if ':' in host else socket.AF_INET
    listening = socket.socket(family, socket.SOCK_STREAM)
    if family == socket.AF_INET6:
        listening.setsockopt(socket.IPPROTO_IPV6, socket.IPV6_V6ONLY, 1)
    listening.bind((host, int(port)))
    listening.listen()
    sockets.append(listening)
print(*[listening.getsockname()[1] for listening in sockets], flush=True)
signal.pause()
'''


class Program:
    """A process of the test's own. A context manager: it is gone at the end."""

    def __init__(self, *command, **options):
        self.process = subprocess.Popen(command, stdin=subprocess.DEVNULL, **options)

    @property
    def pid(self):
        return self.process.pid

    def is_running(self):
        return self.process.poll() is None

    def wait_until_gone(self, seconds=PATIENCE):
        """The exit code; a signal's number, negative, when one ended it."""
        return self.process.wait(seconds)

    def stop(self):
        if self.is_running():
            self.process.kill()
        self.process.wait()
        if self.process.stdout:
            self.process.stdout.close()

    def __enter__(self):
        return self

    def __exit__(self, *problem):
        self.stop()


class Application(Program):
    """An application with a window on the desktop."""

    def __init__(self, *command):
        super().__init__(*command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        wait(self.windows, f'a window of {command[0]}')

    def windows(self):
        """The X11 windows that a window list has, with their titles."""
        found = subprocess.run(['xdotool', 'search', '--all', '--onlyvisible', '--pid', str(self.pid),
                                '--name', '.'], capture_output=True, text=True, check=False).stdout.split()
        return {window: output('xdotool', 'getwindowname', window).strip()
                for window in listed_windows() if window in found}

    def activate(self):
        bring_to_front(next(iter(wait(self.windows, 'its window'))))

    def hang(self):
        """It answers nothing any more, like a program stuck in a loop."""
        self.process.send_signal(signal.SIGSTOP)


class Server(Program):
    """A process called name, by its executable, that listens on "*", "127.0.0.1" or "::1", each on a free port."""

    ANY = {'*': '0.0.0.0'}

    def __init__(self, folder, name, *hosts):
        self.name = name
        folder.mkdir(parents=True, exist_ok=True)
        executable = folder / name
        if not executable.exists():
            shutil.copyfile(os.path.realpath(sys.executable), executable)
            executable.chmod(0o755)
        super().__init__(str(executable), '-I', '-S', '-c', SERVER,
                         *[f'{self.ANY.get(host, host)} 0' for host in hosts],
                         stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True,
                         env={**os.environ, 'PYTHONHOME': sys.base_prefix})
        self.ports = [int(port) for port in self.process.stdout.readline().split()]
        assert len(self.ports) == len(hosts), f'{name} does not listen'

    @property
    def port(self):
        return self.ports[0]


class Hog(Program):
    """Takes all of one processor that others leave."""

    def __init__(self, processor):
        super().__init__('taskset', '-c', str(processor), '/bin/sh', '-c', 'while :; do :; done')


class DragSource(Program):
    """A small window at the right edge of the screen from which these files can be dragged."""

    PLACE = (1310, 420)
    STEP = 12

    def __init__(self, *paths):
        addresses = ['file://' + urllib.parse.quote(os.fsencode(path)) for path in paths]
        super().__init__(os.environ['KESTRUNE_DRAGGING'], *map(str, self.PLACE), *addresses,
                         stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        self.said = []
        threading.Thread(target=self._listen, args=(self.process.stdout,), daemon=True).start()
        self._wait_for('shown')

    def _listen(self, lines):
        with contextlib.suppress(ValueError):  # closed at the end
            for line in lines:
                self.said.append(line.strip())

    def _wait_for(self, word):
        wait(lambda: word in self.said, f'the window to drag from to say {word!r}')

    def drag_to(self, x, y):
        """Drags to this place and lets go there once that is welcome."""
        output('xdotool', 'mousemove', *(str(at + 30) for at in self.PLACE), 'mousedown', '1')
        self._move_until('dragging')
        output('xdotool', 'mousemove', str(x), str(y))
        self._move_until('wanted')
        output('xdotool', 'mouseup', '1')
        self._wait_for('dropped')

    def _move_until(self, word):
        """To and fro: each motion asks what lies under the pointer once more."""
        def has_said():
            for step in (self.STEP, -self.STEP):
                output('xdotool', 'mousemove_relative', '--', '0', str(step))
            return word in self.said
        wait(has_said, f'the window to drag from to say {word!r}')


def is_free(port):
    """Whether nobody listens on the port of this machine."""
    return not output('ss', '-Hltn', f'sport = :{port}').strip()
