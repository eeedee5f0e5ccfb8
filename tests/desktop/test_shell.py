"""The program among others on the desktop: its first launch, a second start, the end of the session, a bus that goes."""
import contextlib
import os
import signal
import subprocess
import time

import pytest

from desk import Notifications, put_pointer_aside, wait
from home import BUILD_CACHES, Home
from kestrune import CHECK, OPEN, REMINDERS, SETTINGS, Kestrune

LOGIN_DEFAULT = 'kestrune_login_default_2_1'
LOGIN_IS_ON = ('Kestrune', 'Kestrune', 'Start at Login: ON')
HANGS = ('Kestrune is already running but doesn’t answer. Wait a moment, or end it in your system monitor and start it '
         'again.')


# First launch.

def test_the_first_launch_turns_start_at_login_on_and_says_so(start, tmp_path):
    home = Home(tmp_path / 'new')
    app = start(home=home)
    assert app.tray
    assert Notifications.wait_for('Kestrune') == LOGIN_IS_ON
    assert home.autostart_file.read_text(encoding='utf-8').startswith('[Desktop Entry]')
    wait(lambda: home.preferences().get(LOGIN_DEFAULT) is True, 'the stored setting')


def test_a_later_launch_leaves_start_at_login_off(start, tmp_path):
    home = Home(tmp_path / 'new')
    app = start(home=home)
    Notifications.wait_for('Kestrune')
    app.open(SETTINGS)
    app.windows.press('Start at login')
    wait(lambda: any(body == 'Start at Login: OFF' for _, _, body in Notifications.shown()), 'the notification')
    app.stop()
    Notifications.forget()
    switched_off = home.autostart_file.read_text(encoding='utf-8') if home.autostart_file.exists() else None
    app = start(home=home).open(SETTINGS)
    wait(lambda: app.page() == 'Settings', 'the page Settings')
    assert not app.windows.is_on('Start at login')
    assert (home.autostart_file.read_text(encoding='utf-8') if home.autostart_file.exists() else None) == switched_off
    assert Notifications.shown() == []


# A second start.

def timed_end(program):
    """The exit code of a start that only asks the first one to come forward, and how long it took."""
    begun = time.monotonic()
    return program.wait_until_gone(), time.monotonic() - begun


def test_a_second_start_ends_soon_and_brings_the_first_one_forward(app, start):
    app.open(OPEN).show_page('Storage')
    app.close_window()
    code, seconds = timed_end(start())
    assert code == 0 and seconds < 2
    app.wait_for_window()
    assert app.page() == 'Storage'
    assert app.is_running()


def test_a_killed_first_one_leaves_nothing_in_the_way(app, start):
    app.process.kill()
    app.process.wait()
    assert start().tray


def test_a_hung_first_one_is_told_of_and_left_alone(app, start):
    app.process.send_signal(signal.SIGSTOP)
    try:
        assert timed_end(start())[0] == 0
        assert Notifications.wait_for('Kestrune')[2] == HANGS
    finally:
        app.process.send_signal(signal.SIGCONT)
    # What it was asked meanwhile it does now.
    app.wait_for_window()


def test_many_starts_at_once_make_one_program(home):
    put_pointer_aside()
    with contextlib.ExitStack() as stack:
        programs = [stack.enter_context(Kestrune(home)) for _ in range(6)]
        wait(lambda: sum(program.is_running() for program in programs) == 1, 'all but one to end')
        first = next(program for program in programs if program.is_running())
        assert all(program.wait_until_gone() == 0 for program in programs if program is not first)
        first.wait_for_window()


# The end.

@pytest.mark.parametrize('number', [signal.SIGTERM, signal.SIGINT, signal.SIGHUP])
def test_a_signal_ends_the_program_whatever_is_open(app, number):
    app.open(OPEN)
    app.process.send_signal(number)
    assert app.wait_until_gone() == 0


def test_a_signal_ends_the_program_while_it_asks(app, home):
    before = home.files()
    app.scan()
    app.choose('Gradle Caches')
    app.review()
    app.process.send_signal(signal.SIGTERM)
    assert app.wait_until_gone() == 0
    assert home.files() == before and home.trashed() == []


def test_a_signal_during_a_cleanup_leaves_no_item_half_moved(app, home):
    app.scan()
    app.choose(*BUILD_CACHES)
    app.review()
    app.windows.press('Move to Trash', app.wait_for_dialog())
    app.process.send_signal(signal.SIGTERM)
    assert app.wait_until_gone() == 0
    moved = home.trashed()
    for title in BUILD_CACHES:
        assert home.path(title).exists() != (str(home.path(title)) in moved)
    assert sorted(f'Moved {title} to Trash' for title in BUILD_CACHES if not home.path(title).exists()) == sorted(
        entry['title'] for entry in home.activity())


def test_the_key_ends_the_program(app):
    app.open(OPEN)
    app.press_keys('ctrl+q')
    assert app.wait_until_gone() == 0


# The session bus.

class Bus:
    """A session bus of the test's own with a panel that shows items."""

    WATCHER = ('org.kde.StatusNotifierWatcher', '/StatusNotifierWatcher')

    def __init__(self, folder):
        self.address = f'unix:path={folder}/bus'
        self.environment = {'DBUS_SESSION_BUS_ADDRESS': self.address}
        quiet = {'stdout': subprocess.DEVNULL, 'stderr': subprocess.DEVNULL}
        self._daemon = subprocess.Popen(['dbus-daemon', '--session', '--nofork', '--nopidfile',
                                         f'--address={self.address}'], **quiet)
        wait((folder / 'bus').exists, 'the bus')
        self._panel = subprocess.Popen(['xfce4-panel', '--disable-wm-check'], env={**os.environ, **self.environment},
                                       **quiet)
        wait(lambda: 'true' in self.ask('IsStatusNotifierHostRegistered'), 'the tray host')

    def ask(self, name):
        return subprocess.run(
            ['gdbus', 'call', '--address', self.address, '-d', self.WATCHER[0], '-o', self.WATCHER[1], '-m',
             'org.freedesktop.DBus.Properties.Get', self.WATCHER[0], name], capture_output=True, text=True,
            check=True).stdout

    def kill(self):
        for process in (self._daemon, self._panel):
            process.kill()
            process.wait()


@pytest.fixture
def bus(tmp_path):
    private = Bus(tmp_path)
    yield private
    private.kill()


def test_when_the_bus_goes_the_window_opens_in_place_of_the_item(start, bus):
    app = start(environment=bus.environment)
    wait(lambda: "':" in bus.ask('RegisteredStatusNotifierItems') or app.window_id(), 'the item in the tray')
    assert app.window_id() is None
    bus.kill()
    wait(app.window_id, 'the window on the screen')
    app.close_window()
    assert app.wait_until_gone() == 0


@pytest.mark.parametrize('is_there_at_first', [True, False])
def test_without_a_bus_a_signal_still_ends_the_program(start, bus, is_there_at_first):
    if not is_there_at_first:
        bus.kill()
    app = start(environment=bus.environment)
    if is_there_at_first:
        wait(lambda: "':" in bus.ask('RegisteredStatusNotifierItems'), 'the item in the tray')
        bus.kill()
    wait(app.window_id, 'the window on the screen')
    app.process.terminate()
    assert app.wait_until_gone() == 0


# Switches.

def test_the_daily_review_switch_and_the_menu_say_the_same(app, home):
    app.tray.click(REMINDERS)
    wait(lambda: app.tray.line(REMINDERS).checked, 'the check mark')
    app.open(OPEN).show_page('Automation')
    assert app.windows.is_on('Enable daily scans and reminders')
    app.windows.press('Enable daily scans and reminders')
    wait(lambda: home.preferences().get('kestrune_scan_reminders') is False, 'the stored setting')
    assert not app.tray.line(REMINDERS, app.tray.open()).checked


def test_fewer_animations_hold_at_once_and_at_the_next_start(app, start, home):
    app.open(SETTINGS)
    assert not app.windows.is_on('Reduce animations')
    app.windows.press('Reduce animations')
    wait(lambda: home.preferences().get('reduceFX') is True, 'the stored setting')
    assert app.windows.is_on('Reduce animations')
    app.stop()
    app = start().open(SETTINGS)
    assert app.windows.is_on('Reduce animations')


def test_a_build_without_a_feed_says_where_new_versions_are(app):
    app.tray.click(CHECK)
    app.wait_for_window()
    wait(lambda: app.page() == 'Settings', 'the page Settings')
    app.windows.wait_for('This build doesn’t look for updates. Get new versions from your software centre.')
    assert not app.tray.title.startswith('🧹 ↑')
