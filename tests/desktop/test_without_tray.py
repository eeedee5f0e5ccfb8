"""A desktop that is not as it should be: no tray, a tray that comes and goes, no bus, no display."""
import os
import subprocess

import pytest

from desk import Tray, Windows, bus_property, wait, WATCHER
from home import Home
from kestrune import PROGRAM, Kestrune


@pytest.fixture
def panel():
    """panel() starts a tray host; it ends with the test."""
    running = []

    def begin():
        process = subprocess.Popen(['xfce4-panel', '--disable-wm-check'], stdout=subprocess.DEVNULL,
                                   stderr=subprocess.DEVNULL)
        running.append(process)
        wait(lambda: bus_property(*WATCHER, 'IsStatusNotifierHostRegistered'), 'the tray host', 20)
        return process

    yield begin
    for process in running:
        process.kill()
        process.wait()


def test_without_a_tray_the_window_opens_and_closing_it_ends_the_program(start):
    app = start()
    app.wait_for_window()
    window = wait(app.window_id, 'the window on the screen')
    subprocess.run(['xdotool', 'windowactivate', '--sync', window, 'key', 'alt+F4'], check=True)
    assert app.wait_until_gone() == 0


def test_without_a_tray_the_last_window_to_close_ends_the_program(start):
    app = start()
    app.wait_for_window()
    subprocess.run(['xdotool', 'windowactivate', '--sync', wait(app.window_id, 'the window on the screen'), 'key',
                    'ctrl+n'], check=True)
    ports = wait(app.port_window_id, 'the port window on the screen')
    app.close_window()
    assert app.is_running() and app.port_window_id() == ports
    subprocess.run(['xdotool', 'windowactivate', '--sync', ports, 'key', 'Escape'], check=True)
    assert app.wait_until_gone() == 0


def test_without_a_tray_closing_the_port_window_leaves_the_other(start):
    app = start()
    app.wait_for_window()
    subprocess.run(['xdotool', 'windowactivate', '--sync', wait(app.window_id, 'the window on the screen'), 'key',
                    'ctrl+n'], check=True)
    ports = wait(app.port_window_id, 'the port window on the screen')
    subprocess.run(['xdotool', 'windowactivate', '--sync', ports, 'key', 'Escape'], check=True)
    wait(lambda: not app.port_window_id(), 'the port window to close')
    app.close_window()
    assert app.wait_until_gone() == 0


def test_a_tray_that_comes_later_gets_the_item(start, panel):
    app = start()
    app.wait_for_window()
    panel()
    assert app.tray.title.startswith('🧹 ')
    app.close_window()
    assert app.is_running()
    app.tray.click('Quit Kestrune')
    assert app.wait_until_gone() == 0


def test_the_program_outlives_the_tray_and_returns_to_the_next_one(start, panel):
    first = panel()
    app = start()
    assert app.tray
    assert app.window_id() is None
    first.kill()
    first.wait()
    app.wait_for_window()
    panel()
    wait(lambda: Tray.find(app.process.pid), 'the item in the new tray')
    assert app.is_running()


@pytest.fixture
def bus(tmp_path):
    """A session bus of its own, which a test may end."""
    address = f'unix:path={tmp_path}/bus'
    process = subprocess.Popen(['dbus-daemon', '--session', '--nofork', '--nopidfile', f'--address={address}'],
                               stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    wait((tmp_path / 'bus').exists, 'the bus')
    process.address = address
    yield process
    process.kill()
    process.wait()


def test_the_program_outlives_the_session_bus(start, bus):
    app = start(environment={'DBUS_SESSION_BUS_ADDRESS': bus.address})
    wait(app.window_id, 'the window on the screen')
    bus.kill()
    bus.wait()
    # Only a living event loop closes the window when it is asked to.
    window = app.window_id()
    subprocess.run(['xdotool', 'windowactivate', '--sync', window, 'key', 'alt+F4'], check=True)
    assert app.wait_until_gone() == 0


def test_the_program_starts_without_a_session_bus(start, tmp_path):
    app = start(environment={'DBUS_SESSION_BUS_ADDRESS': f'unix:path={tmp_path}/nobody'})
    window = wait(app.window_id, 'the window on the screen')
    subprocess.run(['xdotool', 'windowactivate', '--sync', window, 'key', 'alt+F4'], check=True)
    assert app.wait_until_gone() == 0


DUMP = ['Kestrune', '', '', '---', '🧹 Clean Build Caches…', '📋 Clean the Same Folders Again…',
        '🌐 Find What’s Using a Port…', '🔒 Keep My Current App Open', '🚪 Quit Other Apps…', '---', '✦ Open Kestrune',
        '💾 Find What’s Taking Space…', '🖥 Running Apps…', '📂 Find Big Files…', '🧠 AI Tools…',
        '🔁 Daily Scan Reminders', '🕘 Recent Actions…', '---', 'Check for Updates…', '⚙️ Settings & Help…', 'Advanced',
        '---', 'Quit Kestrune']


def bare_environment(home):
    """Neither display nor bus nor runtime folder."""
    return {'PATH': '/usr/bin:/bin', 'LANG': 'C', **home.environment}


def test_dump_menu_needs_neither_display_nor_bus_and_leaves_no_trace(tmp_path):
    home = Home(tmp_path)
    done = subprocess.run([PROGRAM, '--dump-menu'], env=bare_environment(home), stdin=subprocess.DEVNULL,
                          capture_output=True, check=False, timeout=20)
    assert (done.returncode, done.stderr) == (0, b'')
    assert done.stdout.decode().split('\n') == [*DUMP, '']
    assert [path for path in tmp_path.rglob('*') if path.is_file()] == []


@pytest.mark.parametrize('redirection', ['>&-', '>/dev/full', '| true'])
def test_dump_menu_ends_well_when_nobody_can_read_it(tmp_path, redirection):
    home = Home(tmp_path)
    script = f'set -o pipefail; trap "" PIPE; "$0" --dump-menu {redirection}'
    done = subprocess.run(['/bin/bash', '-c', script, PROGRAM], env=bare_environment(home), stdin=subprocess.DEVNULL,
                          capture_output=True, check=False, timeout=20)
    assert done.returncode == 0
