"""Running Apps: what it lists, and how single applications and processes are ended or kept."""
import signal

import pytest

from desk import output, press_keys, wait
from kestrune import APPS
from programs import Application

POLITE = ("Save your work first. Kestrune will request a normal quit and won't force the app to close. Developer "
          'processes receive a termination request.')
FORCED = "Unsaved work can be lost. Use this only when the app won't quit normally."
ACCEPTED = 'The app received the request. Refresh to see whether it has exited.'


@pytest.fixture
def mousepad():
    with Application('mousepad', '--disable-server') as program:
        yield program


@pytest.fixture
def galculator():
    with Application('galculator') as program:
        yield program


@pytest.fixture
def xterm():
    with Application('xterm', '-e', 'sleep', '1000') as program:
        yield program


def logged(home):
    return [(entry['title'], entry['detail'], entry['failed']) for entry in home.activity()]


def test_applications_go_by_their_desktop_names_and_servers_by_their_ports(app, mousepad, galculator, xterm, server):
    app.open(APPS)
    for program, name in ((mousepad, 'Mousepad'), (galculator, 'Galculator'), (xterm, 'XTerm')):
        app.wait_for_row(program.pid)
        assert app.row_text(program.pid).startswith(f'{name}, ')
        assert app.can_press_in_row(program.pid, 'Quit')
    app.wait_for_row(server.pid, f'Open ports: *:{server.port}')
    assert app.row_text(server.pid).startswith('node, ')
    assert not app.row(app.process.pid), 'the program lists itself'


def test_the_list_follows_what_starts_and_ends_while_it_is_open(app):
    app.open(APPS)
    with Application('galculator') as program:
        app.wait_for_row(program.pid)
    wait(lambda: not app.row(program.pid), 'the row to go')


def test_quit_leaves_unsaved_work_to_the_application(app, mousepad, home):
    mousepad.activate()
    output('xdotool', 'type', 'not saved yet')
    wait(lambda: any(title.startswith('*') for title in mousepad.windows().values()), 'the text to be unsaved')
    before = set(mousepad.windows())
    app.open(APPS)
    app.wait_for_row(mousepad.pid)
    app.press_in_row(mousepad.pid, 'Quit')
    dialog = app.wait_for_dialog()
    assert app.windows.reads('Quit Mousepad?', dialog) and app.windows.reads(POLITE, dialog)
    app.answer('Quit')
    wait(lambda: set(mousepad.windows()) - before, 'the question of Mousepad itself')
    assert mousepad.is_running()
    wait(lambda: logged(home) == [('Quit requested: Mousepad', ACCEPTED, False)], 'the entry in the log')


def test_quit_ends_an_application_that_has_nothing_to_ask(app, galculator, home):
    app.open(APPS)
    app.wait_for_row(galculator.pid)
    app.press_in_row(galculator.pid, 'Quit')
    app.answer('Quit')
    assert galculator.wait_until_gone() == 0
    wait(lambda: logged(home) == [('Quit requested: Galculator', ACCEPTED, False)], 'the entry in the log')
    wait(lambda: not app.row(galculator.pid), 'the row to go')


def test_cancel_ends_nothing(app, galculator, home):
    app.open(APPS)
    app.wait_for_row(galculator.pid)
    app.press_in_row(galculator.pid, 'Quit')
    app.answer('Cancel')
    assert galculator.is_running() and home.activity() == []


def choose_force_quit(app, program):
    before = app.popups()
    app.press_in_row(program.pid, 'More actions')
    app.opened_popup(before)
    press_keys('Return')  # on its one line, which is chosen already
    return app.wait_for_dialog()


def test_force_quit_ends_what_hangs_once_it_is_confirmed(app, galculator, home):
    app.open(APPS)
    app.wait_for_row(galculator.pid)
    galculator.hang()
    dialog = choose_force_quit(app, galculator)
    assert app.windows.reads('Force quit Galculator?', dialog) and app.windows.reads(FORCED, dialog)
    app.answer('Cancel')
    assert galculator.is_running() and home.activity() == []
    choose_force_quit(app, galculator)
    app.answer('Force Quit')
    assert galculator.wait_until_gone() == -signal.SIGKILL
    wait(lambda: logged(home) == [('Force quit requested: Galculator', ACCEPTED, False)], 'the entry in the log')


def test_protection_is_given_and_taken_in_the_row_and_in_the_strip(app, galculator, home):
    app.open(APPS)
    app.wait_for_row(galculator.pid)
    app.press_in_row(galculator.pid, 'Toggle protection for Galculator')
    app.wait_for_row(galculator.pid, 'Protected')
    app.windows.wait_for('Protected apps')
    wait(lambda: home.preferences().get('alwaysKeepApps') == ['Galculator'], 'the stored name')
    assert not app.can_press_in_row(galculator.pid, 'Quit')
    app.windows.press('Remove protection: Galculator')
    wait(lambda: 'Protected' not in app.row_text(galculator.pid), 'the mark to go')
    wait(lambda: home.preferences().get('alwaysKeepApps') == [], 'the stored name to go')
    assert app.can_press_in_row(galculator.pid, 'Quit')
    assert not app.windows.reads('Protected apps')


def test_protection_outlives_the_program(app, start, galculator, home):
    app.open(APPS)
    app.wait_for_row(galculator.pid)
    app.press_in_row(galculator.pid, 'Toggle protection for Galculator')
    wait(lambda: home.preferences().get('alwaysKeepApps') == ['Galculator'], 'the stored name')
    app.stop()
    app = start().open(APPS)
    app.wait_for_row(galculator.pid, 'Protected')
