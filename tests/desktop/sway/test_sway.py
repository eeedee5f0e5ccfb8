"""What is told about applications in a session of sway without a screen, and how they are asked to end there: the probe
among real Wayland programs."""
import contextlib
import json
import os
import shutil
import subprocess
import tempfile
import time
from pathlib import Path

import pytest

PROBE = os.environ.get('KESTRUNE_PROBE', '')
TOOLS = ('sway', 'swaymsg', 'dbus-daemon', 'gdbus', 'mousepad', 'galculator')


# What the slowest machine needs, with everything else on it busy.
PATIENCE = 60


def wait(question, what, seconds=PATIENCE):
    """What question() answers as soon as that is true."""
    deadline = time.monotonic() + seconds
    while True:
        if answer := question():
            return answer
        assert time.monotonic() < deadline, f'waited in vain for {what}'
        time.sleep(0.05)


class Session:
    """sway and a session bus, with a home of their own."""

    def __init__(self, folder, stack):
        self._stack = stack
        self._folder = folder
        runtime = folder / 'run'
        runtime.mkdir(mode=0o700)
        kept = {name: os.environ[name] for name in ('PATH', 'LD_LIBRARY_PATH', 'ASAN_OPTIONS') if name in os.environ}
        self.environment = kept | {
            'HOME': str(folder), 'XDG_RUNTIME_DIR': str(runtime), 'XDG_SESSION_TYPE': 'wayland',
            'DBUS_SESSION_BUS_ADDRESS': f'unix:path={runtime}/bus', 'LANG': 'C.UTF-8', 'GDK_BACKEND': 'wayland',
            'NO_AT_BRIDGE': '1', 'GIO_USE_VFS': 'local', 'QT_QPA_PLATFORM': 'offscreen', 'WLR_BACKENDS': 'headless',
            'WLR_LIBINPUT_NO_DEVICES': '1', 'WLR_RENDERER': 'pixman'}
        (folder / 'config').write_text('xwayland disable\n')
        self.start('dbus-daemon', '--session', '--nofork', '--nopidfile', f'--address=unix:path={runtime}/bus')
        wait((runtime / 'bus').exists, 'the session bus')
        self.start('sway', '--config', str(folder / 'config'))
        self.environment['SWAYSOCK'] = str(wait(lambda: next(runtime.glob('sway-ipc.*.sock'), None), 'sway'))
        self.environment['WAYLAND_DISPLAY'] = wait(
            lambda: next((each for each in runtime.glob('wayland-*') if each.is_socket()), None), 'its display').name
        wait(lambda: self.message('-t', 'get_outputs'), 'its screen')

    def start(self, *command, **options):
        """A running program; it ends with the session."""
        log = self._stack.enter_context((self._folder / f'{Path(command[0]).name}.log').open('a'))
        program = self._stack.enter_context(
            subprocess.Popen(command, env=self.environment, **({'stdout': log, 'stderr': log} | options)))
        self._stack.callback(program.kill)
        return program

    def run(self, *command):
        return subprocess.run(command, env=self.environment, capture_output=True, text=True, check=False, timeout=PATIENCE)

    def message(self, *words):
        result = self.run('swaymsg', '--raw', *words)
        return json.loads(result.stdout) if result.returncode == 0 else None

    def probe(self, *words):
        return json.loads(self.run(PROBE, *words).stdout)

    def application(self, program):
        return next((each for each in self.probe('apps')['applications'] if each['pid'] == program.pid), None)

    def open(self, *command):
        """A program whose window is there."""
        program = self.start(*command)
        wait(lambda: self.windows(program), f'the window of {command[0]}')
        return program

    def windows(self, program):
        """The titles of the program's windows."""
        titles, containers = [], [self.message('-t', 'get_tree')]
        while containers:
            container = containers.pop()
            containers += container['nodes'] + container['floating_nodes']
            if container.get('pid') == program.pid:
                titles.append(container['name'])
        return titles


@pytest.fixture
def session():
    missing = [tool for tool in TOOLS if not shutil.which(tool)]
    assert not missing, f'These programs are missing: {missing}. ./check installs them.'
    with tempfile.TemporaryDirectory(prefix='kestrune-sway.', dir='/tmp') as folder, contextlib.ExitStack() as stack:
        yield Session(Path(folder), stack)


def front(session, program):
    return lambda: session.probe('apps')['frontmost'] == program.pid


def edit(session):
    """Changes the text in the editor, as a key would."""
    result = session.run('gdbus', 'call', '--session', '--dest', 'org.xfce.mousepad', '--object-path',
                         '/org/xfce/mousepad/window/1', '--method', 'org.gtk.Actions.Activate',
                         'edit.duplicate-line-selection', '[]', '{}')
    assert result.returncode == 0, result.stderr


def test_programs_are_listed_with_name_id_and_picture(session):
    calculator, editor = session.open('galculator'), session.open('mousepad')
    told = session.probe('apps')
    assert [(each['pid'], each['name'], each['id'], each['regular']) for each in told['applications']] == [
        (calculator.pid, 'Galculator', 'galculator', True), (editor.pid, 'Mousepad', 'org.xfce.mousepad', True)]
    assert all(os.path.isfile(each['icon']) for each in told['applications'])


def test_the_program_with_the_focus_is_in_front(session):
    assert session.probe('apps') | {'microseconds': 0} == {
        'applications': [], 'tellsFrontmost': True, 'frontmost': None, 'microseconds': 0}
    calculator = session.open('galculator')
    wait(front(session, calculator), 'the calculator in front')
    editor = session.open('mousepad')
    wait(front(session, editor), 'the editor in front')
    session.message('[app_id="galculator"] focus')
    wait(front(session, calculator), 'the calculator in front again')


def test_each_change_of_the_front_is_told_once(session):
    watcher = session.start(PROBE, 'apps-watch', stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
    assert watcher.stdout.readline() == '"watching"\n'

    def told():
        return json.loads(watcher.stdout.readline())['pid']

    # One after the other: of changes that come together only the last one is told.
    calculator = session.open('galculator')
    assert told() == calculator.pid
    editor = session.open('mousepad')
    assert told() == editor.pid
    for app_id, program in (('galculator', calculator), ('mousepad', editor)):
        session.message(f'[app_id="{app_id}"] focus')
        session.message(f'[app_id="{app_id}"] focus')
        assert told() == program.pid
    watcher.stdin.close()
    assert watcher.wait(timeout=PATIENCE) == 0
    assert watcher.stdout.read() == ''


def test_a_program_that_is_asked_to_quit_ends(session):
    calculator = session.open('galculator')
    assert session.probe('apps-quit', str(calculator.pid)) == 'accepted'
    assert calculator.wait(timeout=PATIENCE) == 0


def test_unsaved_work_is_asked_about_and_nobody_is_forced(session):
    editor = session.open('mousepad')
    edit(session)
    assert session.probe('apps-quit', str(editor.pid)) == 'accepted'
    wait(lambda: len(session.windows(editor)) == 2, 'its question')
    assert 'Save Changes' in session.windows(editor)
    assert editor.poll() is None


def test_every_window_of_a_program_is_asked(session):
    editor = session.open('mousepad')
    session.run('mousepad', '--opening-mode=window', '/etc/hostname')
    wait(lambda: len(session.windows(editor)) == 2, 'the second window')
    assert session.probe('apps-quit', str(editor.pid)) == 'accepted'
    assert editor.wait(timeout=PATIENCE) == 0


def test_a_program_that_has_ended_is_not_known_any_more(session):
    calculator = session.open('galculator')
    calculator.kill()
    calculator.wait()
    wait(lambda: not session.application(calculator), 'the calculator to leave the list')
    assert session.probe('apps-quit', str(calculator.pid)) == 'unknown'
