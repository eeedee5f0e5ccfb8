"""A desktop that is not as it should be: no tray, a tray that comes and goes, no bus, no display."""
import contextlib
import subprocess

import pytest

from desk import WATCHER, GLib, Tray, bus_call, bus_property, wait
from home import Home
from kestrune import PORT_WINDOW, PROGRAM


def has_watcher():
    arguments = GLib.Variant('(s)', (WATCHER[0],))
    return bus_call('org.freedesktop.DBus', '/org/freedesktop/DBus', 'org.freedesktop.DBus', 'NameHasOwner',
                    arguments).unpack()[0]


class Panel:
    """A tray host."""

    def __init__(self):
        self._process = subprocess.Popen(['xfce4-panel', '--disable-wm-check'], stdout=subprocess.DEVNULL,
                                         stderr=subprocess.DEVNULL)
        wait(lambda: bus_property(*WATCHER, 'IsStatusNotifierHostRegistered'), 'the tray host')

    def stop(self):
        self._process.kill()
        self._process.wait()
        wait(lambda: not has_watcher(), 'the tray to go')


@pytest.fixture
def panel():
    """panel() starts a tray host; it ends with the test."""
    with contextlib.ExitStack() as stack:
        def begin():
            host = Panel()
            stack.callback(host.stop)
            return host
        yield begin


def test_without_a_tray_the_window_opens_and_closing_it_ends_the_program(start):
    app = start()
    app.wait_for_window()
    app.close_window()
    assert app.wait_until_gone() == 0


def open_ports(app):
    """Opens the port review beside the window, by its key."""
    app.wait_for_window()
    app.press_keys('ctrl+n')
    return wait(app.port_window_id, 'the port window on the screen')


def test_without_a_tray_the_last_window_to_close_ends_the_program(start):
    app = start()
    ports = open_ports(app)
    app.close_window()
    assert app.is_running() and app.port_window_id() == ports
    app.press_keys('Escape', title=PORT_WINDOW)
    assert app.wait_until_gone() == 0


def test_without_a_tray_closing_the_port_window_leaves_the_other(start):
    app = start()
    open_ports(app)
    app.press_keys('Escape', title=PORT_WINDOW)
    wait(lambda: not app.port_window_id(), 'the port window to close')
    app.close_window()
    assert app.wait_until_gone() == 0


def test_a_tray_that_comes_later_gets_the_item(start, panel):
    app = start()
    app.wait_for_window()
    panel()
    assert app.tray.title.startswith('🧹 ')
    # The tray has answered all that the program asked it before it answers this, and the program reads that first.
    assert bus_property(*WATCHER, 'IsStatusNotifierHostRegistered') and app.tray.title
    app.close_window()
    assert app.is_running()
    app.tray.click('Quit Kestrune')
    assert app.wait_until_gone() == 0


def test_the_program_outlives_the_tray_and_returns_to_the_next_one(start, panel):
    first = panel()
    app = start()
    assert app.tray
    assert app.window_id() is None
    first.stop()
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
    app.close_window()
    assert app.wait_until_gone() == 0


def test_the_program_starts_without_a_session_bus(start, tmp_path):
    app = start(environment={'DBUS_SESSION_BUS_ADDRESS': f'unix:path={tmp_path}/nobody'})
    app.close_window()
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
                          capture_output=True, check=False, timeout=60)
    assert (done.returncode, done.stderr) == (0, b'')
    assert done.stdout.decode().split('\n') == [*DUMP, '']
    assert [path for path in tmp_path.rglob('*') if path.is_file()] == []


@pytest.mark.parametrize('redirection', ['>&-', '>/dev/full', '| true'])
def test_dump_menu_ends_well_when_nobody_can_read_it(tmp_path, redirection):
    home = Home(tmp_path)
    script = f'set -o pipefail; trap "" PIPE; "$0" --dump-menu {redirection}'
    done = subprocess.run(['/bin/bash', '-c', script, PROGRAM], env=bare_environment(home), stdin=subprocess.DEVNULL,
                          capture_output=True, check=False, timeout=60)
    assert done.returncode == 0
