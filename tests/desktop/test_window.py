"""The workspace window: its pages, its figures, its looks."""
import os
import re

from desk import ColourScheme, picture, pixel, wait
from kestrune import OPEN, PAGES
from test_menu import gigabytes_free, memory_used

SUBTITLES = {
    'Overview': 'See what’s using your Mac. Choose your next move.',
    'Storage': 'Choose what goes. Keep what matters.',
    'Disk Explorer': 'Find your biggest folders and files. Nothing gets deleted here.',
    'AI Tools': 'See your AI downloads and what’s still running.',
    'Running Apps': "See what's running before you close anything.",
    'Automation': 'Get a daily reminder. You decide what to clean.',
    'Activity': 'A clear record of what happened.',
    'Settings': 'Make Kestrune work your way.',
}
LIGHT, DARK = (0xFA, 0xFA, 0xFB), (0x1C, 0x1D, 0x20)


def test_the_sidebar_switches_through_all_pages(app):
    app.open()
    pages = [item.get_name() for item in app.windows.children(app.windows.list_named('Pages'))]
    assert pages == PAGES
    for page in PAGES[::-1]:
        app.show_page(page)
        app.windows.wait_for(SUBTITLES[page])
        assert [other for other in PAGES if app.windows.reads(SUBTITLES[other])] == [page]


def figure(app, pattern):
    """The first number that the Overview shows in a text matching pattern."""
    for text in app.windows.texts():
        match = re.search(pattern, text)
        if match:
            return float(match.group(1))
    return None


def memory_is_true(app):
    available = figure(app, r'(\d+\.\d) GB available')
    total = os.sysconf('SC_PAGE_SIZE') * os.sysconf('SC_PHYS_PAGES') / 2 ** 30
    return available is not None and abs(100 * (1 - available / total) - memory_used()) <= 2


def disk_is_true(app):
    return any(abs(int(number) - gigabytes_free()) <= 1
               for text in app.windows.texts() for number in re.findall(r'\b(\d+) GB\b', text))


def test_the_overview_shows_true_figures(app):
    app.open()
    for title in ('Memory usage', 'Memory pressure', 'Storage available', 'CPU usage', 'Network', 'Battery'):
        app.windows.wait_for(title)
    # The machine goes on while the page stands still between two readings, so the two are only ever near each other.
    wait(lambda: memory_is_true(app), 'the true available memory')
    wait(lambda: disk_is_true(app), 'the true free disk space')
    app.windows.wait_for("High memory usage alone doesn't mean your Mac needs cleaning. macOS uses available RAM for "
                         "useful work; pressure and responsiveness matter more.")


def test_review_storage_opens_storage(app):
    app.open()
    app.windows.wait_for('Room to breathe')
    app.windows.press('Review storage')
    wait(lambda: app.page() == 'Storage', 'the page Storage')


def test_an_empty_activity_page_says_so(app):
    app.open()
    app.show_page('Activity')
    app.windows.wait_for('A clean slate')
    app.windows.wait_for('Your cleanup and app actions will appear here.')
    app.windows.wait_for("Your last 100 actions are saved on this Mac. Moving files to Trash doesn't free space until "
                         "you empty Trash in Finder.")


def test_closing_the_window_only_hides_it(app):
    app.open()
    app.close_window()
    app.tray.click(OPEN)
    wait(app.window_id, 'the window again')
    assert app.is_running()


def background(window, path):
    """The colour between the header and the right edge of the window."""
    picture(path, window)
    return pixel(path, 600, 8)


def test_the_window_follows_the_desktop_into_the_dark_and_back(start, tmp_path):
    with ColourScheme(dark=True) as scheme:
        app = start().open()
        shot = tmp_path / 'shot.png'
        window = wait(app.window_id, 'the window on the screen')
        wait(lambda: background(window, shot) == DARK, 'the dark window')
        scheme.change(dark=False)
        wait(lambda: background(window, shot) == LIGHT, 'the light window')
        scheme.change(dark=True)
        wait(lambda: background(window, shot) == DARK, 'the dark window')
