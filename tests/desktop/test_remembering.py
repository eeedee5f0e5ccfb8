"""What the program still knows after it was ended and started again."""
import json
from pathlib import Path

from desk import frame_of, output, wait
from home import CACHES
from kestrune import CLEAN_SAVED, RECENT, REMINDERS, STORAGE

SAVED = 'Folders saved. Choose Use Saved Folders after a scan, or Clean the Same Folders Again from the menu.'


def show_excluded(app):
    app.windows.press('Show excluded locations')
    wait(lambda: app.windows.is_on('Show excluded locations'), 'the excluded locations to be shown')


def test_an_excluded_folder_stays_excluded(app, start, home):
    app.scan()
    app.choose('Gradle Caches')
    app.windows.press('Exclude: Gradle Caches')
    app.windows.wait_for('0 selected')
    wait(lambda: 'Gradle Caches' not in app.listed(), 'the row to go')
    wait(lambda: home.preferences().get('kestrune_exclusions') == [str(home.path('Gradle Caches'))], 'the setting')
    app.stop()

    app = start().scan()
    assert app.listed() == [title for title in CACHES if title != 'Gradle Caches']
    app.windows.press('Select build caches')
    app.windows.wait_for('2 selected · 36.9 MB')
    show_excluded(app)
    app.windows.press('Include again: Gradle Caches')
    wait(lambda: home.preferences().get('kestrune_exclusions') == [], 'the setting to go')
    assert app.windows.reads('2 selected')


def test_saved_folders_are_offered_again(app, start, home):
    app.scan()
    app.choose('Cargo Registry Cache', 'User Logs')
    app.windows.press('Save for Next Time')
    app.windows.wait_for(SAVED)
    app.stop()

    app = start()
    app.tray.click(CLEAN_SAVED)
    dialog = app.wait_for_dialog()
    for sentence in ('Move 2 items to Trash?', '• Cargo Registry Cache — 16.4 MB', '• User Logs — 12.3 MB'):
        assert app.windows.reads(sentence, dialog)
    app.answer('Cancel')
    app.open(STORAGE)
    app.windows.press('Clear selection')
    app.windows.wait_for('0 selected')
    app.windows.press('Use Saved Folders')
    app.windows.wait_for('2 selected · 28.7 MB')
    assert home.trashed() == []


def test_the_reminder_stays_on(app, start, home):
    app.tray.click(REMINDERS)
    wait(lambda: home.preferences().get('kestrune_scan_reminders') is True, 'the stored setting')
    app.stop()
    assert start().tray.line(REMINDERS).checked


def test_a_mask_that_takes_the_owners_rights_costs_no_setting_and_the_rest_of_it_stays(start, home):
    app = start(umask=0o725)
    app.tray.click(REMINDERS)
    wait(lambda: home.preferences().get('kestrune_scan_reminders') is True, 'the stored setting')
    assert home.preferences_file.stat().st_mode & 0o777 == 0o600
    assert home.preferences_file.parent.stat().st_mode & 0o777 == 0o700
    status = Path(f'/proc/{app.process.pid}/status').read_text()
    assert 'Umask:\t0025\n' in status


def test_the_activity_is_still_there(app, start):
    app.clean('NPM Global Cache')
    wait(lambda: app.home.activity(), 'the log')
    app.stop()
    app = start().open(RECENT)
    app.windows.wait_for('Moved NPM Global Cache to Trash')


def test_the_window_comes_back_where_it_was(app, start):
    app.open()
    window = wait(app.window_id, 'the window on the screen')
    output('xdotool', 'windowsize', window, '1000', '690')
    wait(lambda: frame_of(window)[2:] == (1000, 690), 'the new size')
    before = frame_of(window)
    output('xdotool', 'windowmove', window, '211', '101')
    wait(lambda: frame_of(window) != before, 'the new place')
    left = frame_of(window)
    app.close_window()
    app.stop()

    app = start().open()
    window = wait(app.window_id, 'the window on the screen')
    wait(lambda: frame_of(window) == left, f'the frame {left}')


def test_a_damaged_log_reads_as_empty_and_gives_way_to_the_next_entry(start, home):
    home.activity_file.parent.mkdir(parents=True)
    home.activity_file.write_text('[{"id": 1', encoding='utf-8')
    app = start().open(RECENT)
    app.windows.wait_for('A clean slate')
    app.clean('NPM Global Cache')
    wait(lambda: home.activity_file.read_text(encoding='utf-8') != '[{"id": 1', 'the log to be written')
    assert [entry['title'] for entry in home.activity()] == ['Moved NPM Global Cache to Trash']


def test_damaged_settings_are_kept_aside(start, home):
    folder = home.preferences_file.parent
    home.preferences_file.write_text('{"kestrune_exclusions": [', encoding='utf-8')
    app = start().scan()
    app.windows.press('Exclude: Gradle Caches')
    wait(lambda: 'Gradle Caches' not in app.listed(), 'the row to go')
    wait(lambda: len(list(folder.iterdir())) == 2, 'a second file')
    kept = next(path for path in folder.iterdir() if path != home.preferences_file)
    assert kept.read_text(encoding='utf-8') == '{"kestrune_exclusions": ['
    assert home.preferences()['kestrune_exclusions'] == [str(home.path('Gradle Caches'))]


def test_a_hostile_name_among_the_exclusions_harms_nothing(app, start, home):
    app.scan()
    app.windows.press('Exclude: Gradle Caches')
    wait(lambda: home.preferences().get('kestrune_exclusions'), 'the setting')
    app.stop()
    settings = home.preferences()
    hostile = str(home.folder / 'R&D <b>bold</b> %s\n"quoted"')
    settings['kestrune_exclusions'].append(hostile)
    home.preferences_file.write_text(json.dumps(settings), encoding='utf-8')

    app = start().scan()
    assert app.listed() == [title for title in CACHES if title != 'Gradle Caches']
    app.windows.press('Exclude: NPM Global Cache')
    wait(lambda: str(home.path('NPM Global Cache')) in home.preferences()['kestrune_exclusions'], 'the setting')
    assert hostile in home.preferences()['kestrune_exclusions']
