"""What a cleanup moved to the Trash goes back to its place from the Activity page."""
import hashlib

import pytest

from desk import wait
from kestrune import RECENT

GONE = 'This item is no longer at its recorded Trash location. It may have been restored or emptied.'
PUT_BACK = 'Put Back: Moved Gradle Caches to Trash'
IN_THE_WAY = 'Something else is at ~/.gradle/caches now. Rename or move it first, then try again.'


def content(folder):
    """Every entry below folder with its mode and what is in it."""
    return {str(path.relative_to(folder)): (path.lstat().st_mode,
                                            None if path.is_dir() else hashlib.sha256(path.read_bytes()).hexdigest())
            for path in sorted(folder.rglob('*'))}


@pytest.fixture
def cleaned(app, home):
    """The program on its Activity page, with one folder moved to the Trash; what was in the folder."""
    before = content(home.path('Gradle Caches'))
    app.clean('Gradle Caches')
    wait(home.activity, 'the entry in the log')
    app.open(RECENT)
    return before


def test_a_folder_is_back_byte_for_byte_and_the_second_press_says_that_it_is_gone(app, home, cleaned):
    app.windows.press(PUT_BACK)
    dialog = app.wait_for_dialog()
    for sentence in ('Put back Gradle Caches?', str(home.path('Gradle Caches'))):
        assert app.windows.reads(sentence, dialog)
    app.answer('Put Back')
    app.windows.wait_for('Put back Gradle Caches. Storage lists it after the next scan.')
    assert content(home.path('Gradle Caches')) == cleaned
    assert home.trashed() == []
    assert not list((home.data / 'Trash/info').iterdir())
    newest = wait(lambda: len(home.activity()) == 2 and home.activity()[0], 'the second entry in the log')
    assert (newest['title'], newest['detail'], newest['failed'], 'trashPath' in newest) == (
        'Put back Gradle Caches', "It's at ~/.gradle/caches again.", False, False)
    app.windows.press(PUT_BACK)
    app.windows.wait_for(GONE)
    assert app.windows.dialog() is None
    assert content(home.path('Gradle Caches')) == cleaned


def test_cancel_leaves_it_in_the_trash(app, home, cleaned):
    app.windows.press(PUT_BACK)
    app.answer('Cancel')
    assert home.trashed() == [str(home.path('Gradle Caches'))]
    assert len(home.activity()) == 1 and cleaned


def test_something_in_the_way_is_named_and_kept(app, home, cleaned):
    home.path('Gradle Caches').mkdir()
    mine = home.path('Gradle Caches') / 'new'
    mine.write_text('rebuilt')
    app.windows.press(PUT_BACK)
    app.windows.wait_for(IN_THE_WAY)
    assert app.windows.dialog() is None
    assert mine.read_text() == 'rebuilt'
    assert home.trashed() == [str(home.path('Gradle Caches'))] and cleaned


def test_what_takes_the_place_while_the_question_is_open_is_kept(app, home, cleaned):
    app.windows.press(PUT_BACK)
    app.wait_for_dialog()
    home.path('Gradle Caches').symlink_to('/does/not/exist')
    app.answer('Put Back')
    app.windows.wait_for(IN_THE_WAY)
    assert home.path('Gradle Caches').is_symlink()
    assert home.trashed() == [str(home.path('Gradle Caches'))] and cleaned
    newest = wait(lambda: len(home.activity()) == 2 and home.activity()[0], 'the second entry in the log')
    assert (newest['title'], newest['detail'], newest['failed']) == ("Couldn't put back Gradle Caches", IN_THE_WAY, True)


def test_an_item_restored_by_another_program_is_gone(app, home, cleaned):
    home.restore_from_trash(home.path('Gradle Caches'))
    app.windows.press(PUT_BACK)
    app.windows.wait_for(GONE)
    assert content(home.path('Gradle Caches')) == cleaned
