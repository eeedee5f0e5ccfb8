"""Disk Explorer: what takes the space in a folder, measured, shown and walked through as a person does it."""
import contextlib
import os
import re
import shutil
import tempfile
import urllib.parse
from pathlib import Path

import pytest

from desk import ColourScheme, bring_to_front, double_click, file_manager, frame_of, picture, press_keys, wait
from home import Measured, allocate, worded
from kestrune import BIGGEST_FILES, CHOOSE, EXPLORER, FOLDER_MESSAGE, LARGEST, PICTURE, Kestrune
from programs import DragSource, Hog

UNIT = 4096
QUESTION = 'Where did the space go?'
INVITATION = ('Choose your home folder, Downloads, or a project. See what takes the most space, then open anything in '
              'Finder.')
MEASURING = 'Measuring folders and finding large files…'
WHERE = 'Where the space goes'
FILES = 'Your biggest files · top 50'
NOTE = 'A size shows what we found, not how much space you’ll recover. Disk Explorer only looks; it never deletes files.'
METHOD = ('We include hidden files, skip linked folders and other mounted drives, and stop after 250,000 entries or '
          'about 45 seconds. macOS can share storage between files, so totals are estimates. Choose a smaller folder '
          'when a scan is incomplete.')
NOTHING = 'No files or folders we can read here.'
NO_FILES = 'No files we can read here.'
CUT = 'Showing the 200 largest entries. Explore a folder to see more detail.'
LIMIT = 250_000
UNREADABLE = '\N{REPLACEMENT CHARACTER}'  # as a name that is no text reads


def fill(folder, **sizes):
    """Files of these sizes, in units, in folder."""
    os.makedirs(folder, exist_ok=True)
    for name, units in sizes.items():
        allocate(os.path.join(os.fsencode(folder), name.encode()), units * UNIT)


@pytest.fixture
def projects(home):
    """A folder with all that a folder can hold."""
    folder = home.folder / 'Projects'
    fill(folder / 'client-app' / 'build' / 'deep', bundle=900, map=400)
    fill(folder / 'client-app', main=200)
    os.link(folder / 'client-app/main', folder / 'client-app/main again')
    fill(folder / 'model-lab', weights=1100)
    with open(folder / 'model-lab/sparse', 'wb') as file:
        file.truncate(1 << 30)
    fill(folder, **{'video.mov': 600})
    fill(folder / '.hidden cache', entry=400)
    for name, files in ((b'\xff', 3), (b'\xfe', 2)):
        fill(os.fsencode(folder) + b'/' + name, **{f'part{index}': 60 for index in range(files)})
    fill(folder / 'naïve "quoted" & <b>%41', notes=90)
    (folder / 'empty').mkdir()
    (folder / 'elsewhere').symlink_to(home.path('Ollama Models'))
    (folder / 'nowhere').symlink_to('gone')
    os.mkfifo(folder / 'pipe')
    return folder


@pytest.fixture
def page(app):
    return app.open(EXPLORER)


@pytest.fixture(scope='module')
def crowd():
    """A folder with a few more entries than a scan looks at."""
    fast = '/dev/shm' if os.access('/dev/shm', os.W_OK) else None
    with tempfile.TemporaryDirectory(prefix='kestrune-crowd.', dir=fast) as folder:
        for number in range(100):
            inner = Path(folder) / f'{number:03}'
            inner.mkdir()
            descriptor = os.open(inner, os.O_RDONLY)
            for index in range(LIMIT // 100):
                os.mknod(str(index), dir_fd=descriptor)
            os.close(descriptor)
            fill(inner, large=3)
        yield folder


def wait_for_result(app, folder):
    """The page shows folder as it is now, counted without the program."""
    truth = Measured(folder)
    app.windows.wait_for(truth.counts)
    return truth


def window_on_screen(app):
    return wait(app.window_id, 'the window on the screen')


def row_parts(text):
    """(name, kind, size, share) of what a row of the largest entries says."""
    return tuple(text.rsplit(', ', 3))


def show_in_finder(app, name, node=None):
    """The address that the file manager was asked to show."""
    with file_manager() as files:
        app.windows.press(f'Show in Finder: {name}', node)
        wait(lambda: files.calls, 'the file manager to be asked')
        return files.calls[0][1][0]


def address(path):
    return 'file://' + urllib.parse.quote(os.fsencode(path), safe='/')


def test_the_menu_opens_a_page_that_asks_for_a_folder(page):
    assert page.page() == 'Disk Explorer'
    for text in (QUESTION, INVITATION):
        page.windows.wait_for(text)
    assert page.windows.can_press(CHOOSE) and not page.windows.control('Rescan')


def test_the_panel_says_what_it_is_for_and_escape_chooses_nothing(page, pictures):
    panel = page.open_folder_panel()
    assert page.windows.reads(FOLDER_MESSAGE, panel)
    picture(pictures / 'explorer-panel-light.png')
    press_keys('Escape')
    page.wait_for_panel_to_close()
    assert page.windows.reads(QUESTION)


def test_a_folder_is_measured_to_the_last_block(page, projects):
    page.choose_folder('Projects')  # below the home folder, where the panel begins
    truth = wait_for_result(page, projects)
    for text in (WHERE, FILES, NOTE, truth.incomplete):
        assert page.windows.reads(text), text
    shown = [row_parts(text) for text in page.listed_in(LARGEST)]
    sizes = [size for _, size in truth.children.most_common()]
    assert [size for _, _, size, _ in shown] == [worded(size) for size in sizes]
    assert [name for name, *_ in shown[:2]] == ['client-app', 'model-lab']
    assert dict(row[:2] for row in shown)['video.mov'] == 'file'
    files = page.listed_in(BIGGEST_FILES)
    assert len(files) == truth.files
    assert files[0].startswith('weights, model-lab, file, ' + worded(1100 * UNIT))
    assert any(text.startswith('bundle, client-app/build/deep, file, ') for text in files)
    assert not page.windows.reads(METHOD)
    page.windows.press('How this scan works')
    page.windows.wait_for(METHOD)


def test_links_and_other_file_systems_are_counted_and_not_entered(page, home, projects):
    page.choose_folder(projects)
    truth = wait_for_result(page, projects)
    assert truth.skipped == 2 and truth.children.total() < 6500 * UNIT < Measured(home.folder).children.total()
    assert not any(text.startswith('elsewhere, ') for text in page.listed_in(LARGEST))
    page.choose_folder('/dev')
    wait_for_result(page, '/dev')
    assert page.windows.reads(NO_FILES)


def test_tiles_and_rows_name_the_same_things_with_the_same_sizes(page, projects):
    page.choose_folder(projects)
    wait_for_result(page, projects)
    rows = [row_parts(text) for text in page.listed_in(LARGEST)]
    tiles = page.listed_in(PICTURE)
    assert len(tiles) >= 6
    for tile, (name, _, size, share) in zip(tiles, rows):
        assert tile == f'{name}, {size}, {share}'
    areas = [node.get_component_iface().get_extents(0) for node in page.items_of(PICTURE)]
    assert areas[0].width * areas[0].height == max(area.width * area.height for area in areas)


def focus_is_in_picture(app):
    focused = app.windows.focused()
    return focused and app.windows.name(focused) in (PICTURE, *app.listed_in(PICTURE))


def test_folders_are_walked_by_pointer_and_keyboard_and_remembered(page, home, projects):
    page.choose_folder(projects)
    wait_for_result(page, projects)
    bring_to_front(window_on_screen(page))
    double_click(page.item(PICTURE, 'client-app, '))
    app_folder = wait_for_result(page, projects / 'client-app')
    wait(lambda: focus_is_in_picture(page), 'the keyboard to be in the new picture')
    page.press_keys('Home', 'Return')
    wait_for_result(page, projects / 'client-app/build')
    page.windows.press('Up one folder')
    page.windows.wait_for(app_folder.counts)
    (projects / 'client-app/main').unlink()
    page.windows.press('Back')
    wait_for_result(page, projects / 'client-app/build')
    page.windows.press('Back')
    page.windows.wait_for(app_folder.counts)  # as it was: nothing is measured again
    page.windows.press('Forward')
    wait_for_result(page, projects / 'client-app/build')
    page.windows.press(f'Explore: {projects}/client-app')
    wait_for_result(page, projects / 'client-app')
    page.press_keys('alt+Up')
    wait_for_result(page, projects)
    page.windows.press('Explore: model-lab')
    wait_for_result(page, projects / 'model-lab')
    page.windows.press(f'Explore: {home.folder}')
    wait_for_result(page, home.folder)


def test_names_that_are_no_text_are_explored_and_shown_exactly(page, projects):
    page.choose_folder(projects)
    wait_for_result(page, projects)
    odd = [node for node in page.items_of(LARGEST) if page.windows.name(node).startswith(f'{UNREADABLE}, ')]
    assert len(odd) == 2
    for node, name in zip(odd, (b'\xff', b'\xfe')):
        assert show_in_finder(page, UNREADABLE, node) == [address(os.fsencode(projects) + b'/' + name)]
    quoted = 'naïve "quoted" & <b>%41'
    assert show_in_finder(page, quoted) == [address(projects / quoted)]
    page.windows.press(f'Explore: {UNREADABLE}', odd[1])
    wait_for_result(page, os.fsencode(projects) + b'/\xfe')
    assert show_in_finder(page, f'part0, {UNREADABLE}') == [address(os.fsencode(projects) + b'/\xfe/part0')]


def test_rescan_sees_what_came_and_what_went(page, projects):
    page.choose_folder(projects)
    wait_for_result(page, projects)
    fill(projects, download=3000)
    page.windows.press('Rescan')
    wait_for_result(page, projects)
    assert row_parts(page.listed_in(LARGEST)[0])[:3] == ('download', 'file', worded(3000 * UNIT))
    shutil.rmtree(projects)
    page.press_keys('F5')
    page.windows.wait_for('0 inspected · 0 files')
    for text in (NOTHING, NO_FILES):
        assert page.windows.reads(text), text
    assert page.windows.can_press(CHOOSE)


def without_rights():
    """Starts what follows as somebody who cannot read everything, which only root can."""
    return ('setpriv', '--bounding-set=-dac_override,-dac_read_search') if os.geteuid() == 0 else ()


def test_what_cannot_be_read_is_counted(home, projects):
    truth = Measured(projects)
    locked = [projects / 'client-app/locked', projects / 'locked']
    for folder in locked:
        fill(folder, secret=100)
        folder.chmod(0)
    try:
        with Kestrune(home, through=without_rights()) as app:
            app.open(EXPLORER)
            app.choose_folder(projects)
            app.windows.wait_for(f'{truth.entries + 2:,} inspected · {truth.files:,} files')
            truth.skipped += 2
            assert app.windows.reads(truth.incomplete)
            app.choose_folder(locked[1])
            for text in (NOTHING, NO_FILES, 'This scan is incomplete. 1 locations couldn’t be read or were skipped.'):
                app.windows.wait_for(text)
    finally:
        for folder in locked:
            folder.chmod(0o700)


def test_a_folder_with_many_entries_shows_the_largest_200(page, home):
    many = home.folder / 'many'
    fill(many, **{f'{index:03}': 1 + index for index in range(230)})
    page.choose_folder(many)
    truth = wait_for_result(page, many)
    page.windows.wait_for(CUT)
    shown = page.listed_in(LARGEST)
    assert len(shown) == 200 and row_parts(shown[-1])[2] == worded(truth.children.most_common(200)[-1][1])
    assert page.listed_in(PICTURE)[-1].split(' ', 1)[1].startswith('smaller items, ')


def test_a_scan_ends_at_its_limit_and_says_so(page, crowd):
    page.choose_folder(crowd)
    page.windows.wait_for(f'{LIMIT:,} inspected · ')
    page.windows.wait_for('This scan is incomplete. 0 locations couldn’t be read or were skipped.')
    counts = next(text for text in page.windows.texts() if ' inspected · ' in text)
    files = int(re.search(r'· ([\d,]+) files', counts)[1].replace(',', ''))
    assert LIMIT - 100 <= files <= LIMIT


def tasks(app):
    return set(os.listdir(f'/proc/{app.process.pid}/task'))


@contextlib.contextmanager
def starved(threads):
    """These threads, and those they start, get hardly any processor, as beside programs that need all of it."""
    processor = min(os.sched_getaffinity(0))
    for thread in threads:
        with contextlib.suppress(ProcessLookupError):  # ended since it was listed
            os.sched_setaffinity(int(thread), {processor})
            os.sched_setscheduler(int(thread), os.SCHED_IDLE, os.sched_param(0))
    with Hog(processor):
        yield


def test_a_long_scan_is_watched_left_alone_and_stopped(page, projects, crowd, pictures):
    before = tasks(page)
    page.choose_folder(projects)
    wait_for_result(page, projects)
    page.choose_folder(crowd)
    page.windows.wait_for(f'{LIMIT:,} inspected · ')
    with starved(tasks(page) - before):
        page.windows.press('Rescan')
        page.windows.wait_for(MEASURING)
        page.show_page('Storage')
        page.windows.wait_for('Choose what goes. Keep what matters.')
        page.show_page('Disk Explorer')
        page.windows.wait_for(MEASURING)
        picture(pictures / 'explorer-scanning-light.png', window_on_screen(page))
        page.windows.press('Stop scan')
    page.windows.wait_for('This scan is incomplete. ')
    counts = next(text for text in page.windows.texts() if ' inspected · ' in text)
    assert int(counts.split(' ')[0].replace(',', '')) < LIMIT
    page.choose_folder(projects)
    wait_for_result(page, projects)


@pytest.mark.parametrize('name', [b'client-app', b'\xff'])
def test_a_folder_that_is_dragged_onto_the_page_is_explored(page, projects, name):
    folder = os.fsencode(projects) + b'/' + name
    left, top, width, height = frame_of(window_on_screen(page))
    with DragSource(folder) as source:
        source.drag_to(left + width // 2, top + height // 2)
        wait_for_result(page, folder)  # its owner is asked once more when it is dropped


@pytest.mark.parametrize('look', ['light', 'dark'])
def test_the_page_is_drawn_in_light_and_dark(start, projects, pictures, look):
    with ColourScheme(dark=look == 'dark'):
        app = start().open(EXPLORER)
        app.windows.wait_for(QUESTION)
        picture(pictures / f'explorer-empty-{look}.png', window_on_screen(app))
        app.choose_folder(projects)
        wait_for_result(app, projects)
        app.open_folder_panel()
        picture(pictures / f'explorer-panel-{look}.png')
        press_keys('Escape')
        app.wait_for_panel_to_close()
        picture(pictures / f'explorer-{look}.png', window_on_screen(app))
