"""Choosing, confirming and moving caches to the Trash, and finding them again."""
import re
import shutil
import time

from desk import Notifications, file_manager, wait
from home import BUILD_CACHES, CACHES, SUBTITLES
from kestrune import CAUTION, QUICK_CLEAN, RECENT, REVIEW

GONE = 'This item is no longer at its recorded Trash location. It may have been restored or emptied.'
SECONDS_1970_TO_2001 = 978_307_200


def test_a_scan_lists_what_is_there_largest_first(app):
    app.scan()
    assert app.listed() == list(CACHES)
    for _, _, size in CACHES.values():
        assert app.windows.reads(size)
    assert not any(app.windows.is_on(f'Select {title}') for title in CACHES)


def test_the_footer_counts_what_is_chosen(app):
    app.scan()
    assert app.windows.reads('0 selected')
    app.choose('Gradle Caches', 'User Logs')
    app.windows.wait_for('2 selected · 36.9 MB')
    app.windows.press('Select build caches')
    app.windows.wait_for('3 selected · 61.4 MB')
    app.windows.press('Clear selection')
    app.windows.wait_for('0 selected')
    assert app.windows.reads('Moves to Trash. No permanent deletion.')


def test_the_confirmation_names_every_item(app):
    app.scan()
    app.choose(*BUILD_CACHES)
    dialog = app.review()
    for title in BUILD_CACHES:
        assert app.windows.reads(f'• {title} — {CACHES[title][2]}', dialog)
        assert app.windows.reads(SUBTITLES[title], dialog)
    for sentence in ('Move 3 items to Trash?', CAUTION):
        assert app.windows.reads(sentence, dialog)
    buttons = [node.get_name() for node in app.windows.walk(dialog) if node.get_role_name() == 'push button']
    assert sorted(buttons) == ['Cancel', 'Move to Trash']
    app.answer('Cancel')
    app.windows.press('Clear selection')
    app.windows.wait_for('0 selected')
    app.choose('User Logs')
    dialog = app.review()
    assert app.windows.reads('Move 1 item to Trash?', dialog)
    assert not app.windows.reads('Gradle Caches', dialog)


def test_cancel_moves_nothing(app, home):
    before = home.files()
    app.scan()
    app.choose('Gradle Caches')
    app.review()
    app.answer('Cancel')
    assert app.windows.is_on('Select Gradle Caches')
    assert app.windows.can_press(REVIEW)
    assert home.files() == before
    assert home.trashed() == [] and home.activity() == []


def test_what_was_confirmed_goes_to_the_trash_and_comes_back(app, home):
    before = home.files()
    app.clean('Gradle Caches', 'NPM Global Cache')
    chosen = ('.gradle/caches/', '.npm/_cacache/')
    assert home.files() == {name: size for name, size in before.items() if not name.startswith(chosen)}
    assert home.trashed() == sorted([str(home.path('Gradle Caches')), str(home.path('NPM Global Cache'))])
    assert 'Gradle Caches' not in app.listed() and 'Cargo Registry Cache' in app.listed()
    for title in ('Gradle Caches', 'NPM Global Cache'):
        home.restore_from_trash(home.path(title))
    assert home.files() == before
    assert home.trashed() == []


def test_the_activity_log_keeps_what_was_done(app, home):
    app.clean('Gradle Caches', 'NPM Global Cache')
    entries = wait(lambda: len(home.activity()) == 2 and home.activity(), 'two entries in the log')
    # The shortest path is moved first; the log has the newest entry first.
    assert [entry['title'] for entry in entries] == ['Moved Gradle Caches to Trash', 'Moved NPM Global Cache to Trash']
    for entry, size in zip(entries, ('24.6 MB', '20.5 MB')):
        assert list(entry) == ['id', 'date', 'title', 'detail', 'trashPath', 'failed']
        assert re.fullmatch(r'[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}', entry['id'])
        assert abs(entry['date'] + SECONDS_1970_TO_2001 - time.time()) < 60
        assert entry['detail'] == (f"{size} estimated. Empty Trash in Finder when you're ready to reclaim space.")
        assert entry['trashPath'].startswith(str(home.data / 'Trash/files/'))
        assert entry['failed'] is False
    assert home.activity_file.stat().st_mode & 0o777 == 0o600
    app.open(RECENT)
    for entry in entries:
        app.windows.wait_for(entry['title'])
        app.windows.wait_for(entry['detail'])


def test_show_in_trash_asks_the_file_manager_until_the_item_has_gone(app, home):
    with file_manager() as files:
        app.clean('Gradle Caches')
        app.open(RECENT)
        app.windows.press('Show in Trash: Moved Gradle Caches to Trash')
        wait(lambda: files.calls, 'the file manager to be asked')
        method, arguments = files.calls[0]
        assert (method, arguments[0]) == ('ShowItems', ['file://' + home.activity()[0]['trashPath']])
        home.restore_from_trash(home.path('Gradle Caches'))
        app.windows.press('Show in Trash: Moved Gradle Caches to Trash')
        app.windows.wait_for(GONE)
        assert len(files.calls) == 1


def test_show_in_finder_asks_the_file_manager_for_the_folder(app, home):
    with file_manager() as files:
        app.scan()
        app.windows.press('Show in Finder: Cargo Registry Cache')
        wait(lambda: files.calls, 'the file manager to be asked')
        assert files.calls[0][1][0] == ['file://' + str(home.path('Cargo Registry Cache'))]


def test_the_result_is_notified(app):
    app.clean('Cargo Registry Cache')
    program, title, body = Notifications.wait_for('Kestrune cleanup results')
    assert program == 'Kestrune'
    assert body == 'Moved 1 items to Trash. 0 failed.'


def test_a_folder_that_vanished_fails_and_the_others_still_move(app, home):
    app.scan()
    app.choose('Gradle Caches', 'NPM Global Cache')
    app.review()
    shutil.rmtree(home.path('Gradle Caches'))
    app.answer('Move to Trash')
    app.windows.wait_for('Moved 1 items to Trash. 1 failed.')
    assert home.trashed() == [str(home.path('NPM Global Cache'))]
    failed = wait(lambda: [entry for entry in home.activity() if entry['failed']], 'the failure in the log')
    assert [(entry['title'], entry['detail'], 'trashPath' in entry) for entry in failed] == [
        ("Couldn't move Gradle Caches", 'This item is no longer present. Rescan to update the list.', False)]


def test_a_link_in_place_of_the_folder_is_refused(app, home):
    projects = home.folder / 'Projects'
    app.scan()
    app.choose('Gradle Caches')
    app.review()
    shutil.rmtree(home.path('Gradle Caches'))
    home.path('Gradle Caches').symlink_to(projects)
    app.answer('Move to Trash')
    app.windows.wait_for('Moved 0 items to Trash. 1 failed.')
    assert (projects / 'app/main.cpp').exists() and home.path('Gradle Caches').is_symlink()
    assert home.trashed() == []
    app.open(RECENT)
    app.windows.wait_for('This location is protected or has changed. Rescan before continuing.')


def test_while_a_question_is_open_the_menu_starts_nothing(app, home):
    app.scan()
    app.choose('Gradle Caches')
    app.review()
    line = app.tray.line(QUICK_CLEAN)
    if line.enabled:
        app.tray.click(QUICK_CLEAN)
    app.tray.open()
    assert app.windows.reads('Move 1 item to Trash?')
    app.answer('Cancel')
    assert app.windows.dialog() is None
    assert not app.windows.control('Stop scan')
    assert home.trashed() == []


def test_quick_clean_offers_the_build_caches_and_nothing_else(app, home):
    app.tray.click(QUICK_CLEAN)
    dialog = app.wait_for_dialog()
    assert app.windows.reads('Move 3 items to Trash?', dialog)
    for title in CACHES:
        assert app.windows.reads(f'• {title} — ', dialog) == (title in BUILD_CACHES)
    app.answer('Move to Trash')
    wait(lambda: len(home.activity()) == 3, 'three entries in the log')
    assert home.trashed() == sorted(str(home.path(title)) for title in BUILD_CACHES)
