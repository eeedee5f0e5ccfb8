"""The menu's own actions on what runs: keeping the current app, quitting the others, clearing cached memory."""
import os
import shutil

import pytest

from desk import Notifications, wait
from kestrune import APPS, CLEAR_MEMORY, KEEP, QUIT_OTHERS, RECENT
from programs import Application

QUIT_OTHERS_TEXT = ('Save your work first. Kestrune requests normal quits; apps may show their own save dialogs. '
                    'Protected apps and background agents stay running. Unresponsive apps are never forced to close by '
                    'this action.')
MEMORY_TEXT = ('macOS may ask for an administrator password. This does not close apps or delete files. macOS will '
               'refill useful caches as needed, so the benefit may be temporary.')


@pytest.fixture
def galculator():
    with Application('galculator') as program:
        yield program


def keep_current(app, program, name, home):
    program.activate()
    app.tray.click(KEEP)
    body = Notifications.wait_for('Kestrune')[2]
    assert body == f'Protected {name}. Kestrune will keep it running.'
    wait(lambda: home.preferences().get('alwaysKeepApps') == [name], 'the stored name')


def test_the_current_app_is_kept(app, galculator, home):
    keep_current(app, galculator, 'Galculator', home)
    app.open(APPS)
    app.wait_for_row(galculator.pid, 'Protected')
    app.windows.wait_for('Protected apps')
    assert app.windows.control('Remove protection: Galculator')


def test_the_other_apps_are_asked_and_the_kept_one_is_not(app, galculator, home):
    with Application('xterm', '-e', 'sleep', '1000') as xterm, Application('mousepad', '--disable-server') as mousepad:
        keep_current(app, mousepad, 'Mousepad', home)
        app.tray.click(QUIT_OTHERS)
        dialog = app.wait_for_dialog()
        assert app.windows.reads('Quit 2 other apps?', dialog) and app.windows.reads(QUIT_OTHERS_TEXT, dialog)
        assert app.windows.reads('Galculator, XTerm', dialog)
        app.answer('Quit Apps')
        assert galculator.wait_until_gone() == 0
        xterm.wait_until_gone()
        summary = 'Quit requests sent to 2 apps. Protected apps were kept running.'
        wait(lambda: any(body == summary for _, _, body in Notifications.shown()), 'the notification')
        assert app.tray.open()[2].label == summary and app.tray.open()[2].visible
        assert mousepad.is_running()
    entry = wait(home.activity, 'the entry in the log')[0]
    assert (entry['title'], entry['detail'], entry['failed']) == (
        'Quit Other Apps requested', '2 of 2 apps accepted a quit request. This is not a count of confirmed exits; '
        'check Running Apps for the current state.', False)


def test_cancel_quits_nobody(app, galculator, home):
    app.tray.click(QUIT_OTHERS)
    assert app.windows.reads('Quit 1 other apps?', app.wait_for_dialog())
    app.answer('Cancel')
    assert galculator.is_running() and home.activity() == []


def test_with_only_kept_apps_there_is_nothing_to_quit(app, galculator, home):
    keep_current(app, galculator, 'Galculator', home)
    app.tray.click(QUIT_OTHERS)
    dialog = app.wait_for_dialog()
    assert app.windows.reads('No other apps to quit', dialog)
    assert app.windows.reads('Kestrune, protected apps and background agents are kept running.', dialog)
    app.answer('OK')
    assert galculator.is_running() and home.activity() == []


def test_an_app_whose_executable_is_protected_is_not_asked(app, galculator, home, tmp_path):
    # Nothing but the tray is in use: no listing has told what runs.
    executable = tmp_path / 'statsview'
    shutil.copyfile(shutil.which('xterm'), executable)
    executable.chmod(0o755)
    with Application(str(executable), '-e', 'sleep', '1000') as viewer:
        app.tray.click(QUIT_OTHERS)
        assert app.windows.reads('Quit 1 other apps?', app.wait_for_dialog())
        app.answer('Quit Apps')
        assert galculator.wait_until_gone() == 0
        wait(home.activity, 'the entry in the log')
        assert viewer.is_running()


def test_clearing_memory_waits_for_the_answer(app, home):
    app.tray.click(CLEAR_MEMORY)
    dialog = app.wait_for_dialog()
    assert app.windows.reads('Clear cached memory?', dialog) and app.windows.reads(MEMORY_TEXT, dialog)
    app.answer('Cancel')
    assert home.activity() == [] and not app.tray.open()[2].visible


def may_drop_caches():
    """Whether this user can ask the kernel for it here."""
    return os.access('/proc/sys/vm/drop_caches', os.W_OK) and not os.statvfs('/proc/sys').f_flag & os.ST_RDONLY


def test_clearing_memory_tells_truly_how_it_went(app, home):
    app.tray.click(CLEAR_MEMORY)
    app.answer('Continue')
    entry = wait(home.activity, 'the entry in the log', 150)[0]
    if may_drop_caches():
        expected = ('Inactive memory cleared', 'macOS completed the purge command; memory will be reused as needed.',
                    False, 'Memory action completed.')
    else:
        expected = ("Memory action didn't complete", 'Authorization was cancelled or the command failed.', True,
                    'Memory action cancelled or unavailable.')
    assert (entry['title'], entry['detail'], entry['failed']) == expected[:3]
    assert Notifications.wait_for('Kestrune')[2] == expected[3]
    assert app.tray.open()[2].label == expected[3]
    app.open(RECENT)
    app.windows.wait_for(expected[0])
