"""Updates from end to end: the program with a publisher of the test's own, over https."""
import contextlib
import os
import signal
from pathlib import Path

import pytest

from desk import Notifications, Tray, wait
from feed import Publisher
from kestrune import CHECK, INSTALL, SETTINGS

PROGRAM = os.environ.get('KESTRUNE_UPDATING', '')
VERSION = '99.0.1'
SHOWN = '99.0'
AVAILABLE = f'Version {SHOWN} is available'
QUESTION = f'Kestrune {SHOWN} is available'
RETRY = ' Retry or download from downloads.example.'


@pytest.fixture
def publisher(tmp_path):
    folder = tmp_path / 'publisher'
    folder.mkdir()
    with Publisher(folder) as each:
        each.publish(VERSION, SHOWN, notes='Finds <b>more</b> & cleans less.')
        yield each


@pytest.fixture
def app(start, publisher):
    program = start(program=PROGRAM, environment=publisher.environment)
    assert program.tray
    return program


def is_marked(app):
    return app.tray.title.startswith('🧹 ↑ ')


def check(app, line=CHECK):
    """Asks for newer versions and gives the window's answer, once it is no longer looking."""
    app.tray.click(line)

    def answer():
        dialog = app.windows.dialog()
        return dialog if dialog and app.windows.name(dialog) != 'Checking for updates…' else None
    return wait(answer, 'what the check came to')


def wait_for_status(app, beginning, end=''):
    """Until the settings say this about updates."""
    app.open(SETTINGS)
    wait(lambda: app.page() == 'Settings', 'the page Settings')
    wait(lambda: any(beginning in text and text.endswith(end)
                     for text in app.windows.texts(app.windows.window('Kestrune'))), f'the status {beginning!r}')


def press(app, button):
    app.windows.press(button, app.windows.dialog())


def test_an_update_is_shown_with_its_notes_and_stays_marked_when_it_is_put_off(app):
    dialog = check(app)
    assert app.windows.name(dialog) == QUESTION
    assert app.windows.reads('Finds <b>more</b> & cleans less.', dialog)
    assert is_marked(app) and app.tray.tooltip.endswith(' · Update available')
    press(app, 'Remind Me Later')
    wait(lambda: not app.windows.dialog(), 'the window to close')
    assert is_marked(app) and app.tray.line(INSTALL) and not app.tray.line(CHECK)
    wait_for_status(app, AVAILABLE)
    assert Notifications.shown() == []


def test_the_menu_leads_back_to_an_update_that_was_put_off(app, publisher):
    check(app)
    press(app, 'Remind Me Later')
    wait(lambda: not app.windows.dialog(), 'the window to close')
    publisher.stop()
    assert app.windows.name(check(app, INSTALL)) == QUESTION


def test_a_skipped_version_is_marked_no_longer_and_still_found_by_hand(app, home):
    check(app)
    press(app, 'Skip This Version')
    wait(lambda: not is_marked(app), 'the mark to go')
    assert app.tray.line(CHECK) and not app.tray.line(INSTALL)
    wait(lambda: home.preferences().get('kestrune_update_skipped') == [VERSION], 'the stored choice')
    wait_for_status(app, f'Skipped version {SHOWN}. You can check again manually.')
    assert app.windows.name(check(app)) == QUESTION


def test_with_nothing_newer_it_says_so(app, publisher, home):
    publisher.publish('2.1.0', '2.1.0')
    check(app)
    press(app, 'OK')
    wait_for_status(app, 'No compatible update found. Last checked just now.')
    assert not is_marked(app) and app.tray.line(CHECK)
    wait(lambda: 'kestrune_update_last_check' in home.preferences(), 'the stored time')


def test_a_version_that_was_withdrawn_is_not_found_at_the_next_start(app, start, publisher):
    check(app)
    press(app, 'Remind Me Later')
    app.stop()
    publisher.publish('2.1.0', '2.1.0')
    app = start(program=PROGRAM, environment=publisher.environment)
    assert not is_marked(app)
    check(app)
    press(app, 'OK')
    wait_for_status(app, 'No compatible update found. Last checked just now.')


def test_when_nobody_answers_it_says_what_to_do(app, publisher):
    publisher.stop()
    check(app)
    press(app, 'OK')
    wait_for_status(app, "Update couldn't finish: ", RETRY)
    assert not is_marked(app)


def test_an_authority_that_nobody_knows_is_refused(start, publisher):
    app = start(program=PROGRAM, environment={**publisher.environment, 'KESTRUNE_TEST_AUTHORITY': ''})
    check(app)
    press(app, 'OK')
    wait_for_status(app, "Update couldn't finish: ", RETRY)
    assert publisher.asked == []


def test_something_else_than_a_feed_is_refused(app, publisher):
    publisher.pages['/appcast.xml'] = b'<!DOCTYPE html><html></html>'
    check(app)
    press(app, 'OK')
    wait_for_status(app, "Update couldn't finish: ", RETRY)


def test_a_check_from_the_settings_is_the_same(app):
    app.open(SETTINGS)
    app.windows.press('Check for updates…')
    wait(lambda: app.windows.window(QUESTION), 'the question')
    assert is_marked(app)


# Installing.

class Image:
    """The file that the program believes to be started from, as the runtime of AppImages tells it."""

    OLD = b'\x7fELF of the old version'

    def __init__(self, folder):
        self.path = folder / 'Kestrune.AppImage'
        self.path.write_bytes(self.OLD)
        self.path.chmod(0o755)
        self.environment = {'APPIMAGE': str(self.path), 'APPDIR': str(Path(PROGRAM).parent)}

    def running(self):
        """The process that was started from the file, or None."""
        for process in Path('/proc').iterdir():
            with contextlib.suppress(OSError):
                if process.name.isdigit() and os.readlink(process / 'exe') == str(self.path):
                    return int(process.name)
        return None


@pytest.fixture
def image(tmp_path):
    file = Image(tmp_path)
    yield file
    process = file.running()
    if process:
        os.kill(process, signal.SIGTERM)
        wait(lambda: not file.running(), 'the new version to end')


def fetched(home):
    """What lies in the folder that archives are fetched into."""
    return [path for path in (home.folder / '.cache/kestrune').rglob('*') if path.is_file()]


def test_a_signed_version_takes_the_place_of_the_old_one_and_starts(start, publisher, image, home):
    publisher.publish(VERSION, SHOWN, archive=Path(os.environ['KESTRUNE']).read_bytes())
    app = start(program=PROGRAM, environment={**publisher.environment, **image.environment})
    check(app)
    press(app, 'Install')
    wait(lambda: app.windows.control('Restart Now'), 'the new version to be in place')
    assert image.path.read_bytes() == Path(os.environ['KESTRUNE']).read_bytes()
    assert image.path.stat().st_mode & 0o777 == 0o755
    press(app, 'Restart Now')
    assert app.wait_until_gone() == 0
    process = wait(image.running, 'the new version to run')
    assert Tray(process).title.startswith('🧹 ')
    assert fetched(home) == []


def test_an_archive_that_somebody_else_signed_changes_nothing(start, publisher, image, home):
    publisher.publish(VERSION, SHOWN, archive=b'\x7fELF of somebody else', signature=publisher.sign(b'another one'))
    app = start(program=PROGRAM, environment={**publisher.environment, **image.environment})
    check(app)
    press(app, 'Install')
    wait(lambda: app.windows.window(f'Version {SHOWN} couldn’t be installed'), 'the outcome')
    press(app, 'OK')
    wait_for_status(app, "Update couldn't finish: ", RETRY)
    assert image.path.read_bytes() == Image.OLD
    assert fetched(home) == []
    assert is_marked(app)


def test_a_copy_that_cannot_replace_itself_says_where_the_new_version_is(app, publisher):
    check(app)
    press(app, 'Install')
    wait(lambda: app.windows.window(f'Version {SHOWN} is ready to download'), 'the outcome')
    assert app.windows.reads(publisher.address('/kestrune.AppImage'), app.windows.dialog())
    assert '/kestrune.AppImage' not in publisher.asked
