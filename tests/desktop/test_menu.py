"""The tray item and its menu, on a desktop with a tray."""
import os
import re
from pathlib import Path

from desk import frame_of, output, press_keys, wait
from home import Home, allocate
from kestrune import (AI_TOOLS, APPS, CLEAN_SAVED, CLEAR_MEMORY, KEEP, OPEN, PORTS, QUICK_CLEAN, QUIT, QUIT_OTHERS,
                      RECENT, REMINDERS, STORAGE)

MENU = [
    'Kestrune', r'Memory \d+% · \d+ GB disk available', '', '---',
    QUICK_CLEAN, CLEAN_SAVED, PORTS, KEEP, QUIT_OTHERS, '---',
    OPEN, STORAGE, APPS, '📂 Find Big Files…', AI_TOOLS, REMINDERS, RECENT, '---',
    'Check for Updates…', '⚙️ Settings & Help…', 'Advanced', '---',
    QUIT,
]


def memory_used():
    """Percent of memory in use, from what free(1) reads."""
    figures = dict(re.findall(r'(\w+):\s+(\d+)', Path('/proc/meminfo').read_text()))
    return 100 * (1 - int(figures['MemAvailable']) / int(figures['MemTotal']))


def gigabytes_free():
    disk = os.statvfs('/')
    return disk.f_bavail * disk.f_frsize // 1_000_000_000


def resource_figures(line):
    return tuple(int(figure) for figure in re.match(r'Memory (\d+)% · (\d+) GB', line.label).groups())


def test_the_item_shows_the_memory_in_use(app):
    def is_true():
        return abs(int(re.fullmatch(r'🧹 (\d+)%', app.tray.title).group(1)) - memory_used()) <= 2

    # The machine goes on while the item stands still between two readings.
    wait(is_true, 'the true memory in use')
    assert re.fullmatch(r'Kestrune · Memory usage \d+%', app.tray.tooltip)
    assert app.tray.get('Status') == 'Active'


def test_the_menu_has_its_23_lines_in_order(app):
    lines = app.tray.open()
    assert len(lines) == 23
    for line, expected in zip(lines, MENU):
        assert re.fullmatch(expected, repr(line)) or repr(line) == expected


def test_lines_are_disabled_hidden_checked_and_given_keys_as_they_should(app):
    lines = app.tray.open()
    assert [line.enabled for line in lines[:3]] == [False, False, False]
    assert [index for index, line in enumerate(lines) if not line.visible] == [2]
    assert [line.label for line in lines if line.checkable] == [REMINDERS]
    assert not app.tray.line(REMINDERS, lines).checked
    assert all(line.enabled for line in lines[3:] if not line.separator)
    assert app.tray.line(CLEAR_MEMORY, lines).enabled
    assert app.tray.line(QUICK_CLEAN, lines).shortcut == [['Control', 'L']]
    assert app.tray.line(QUIT, lines).shortcut == [['Control', 'Q']]
    assert [inner.label for inner in app.tray.line('Advanced', lines).lines] == ['Clear Cached Memory…']


def lies_within(figure, readings, tolerance):
    """Whether the program can have read this figure between the two readings."""
    return min(readings) - tolerance <= figure <= max(readings) + tolerance


def test_opening_the_menu_reads_the_figures_again(app):
    ballast = Path('/var/tmp') / f'kestrune-ballast-{os.getpid()}'
    app.tray.open()
    try:
        allocate(ballast, 3_000_000_000)
        before = gigabytes_free()
        figure = resource_figures(app.tray.open()[1])[1]
        assert lies_within(figure, (before, gigabytes_free()), 1)
    finally:
        ballast.unlink(missing_ok=True)


def test_the_figures_of_the_menu_are_true(app):
    before = memory_used(), gigabytes_free()
    percent, free = resource_figures(app.tray.open()[1])
    after = memory_used(), gigabytes_free()
    assert lies_within(percent, (before[0], after[0]), 2)
    assert lies_within(free, (before[1], after[1]), 1)


def test_toggling_the_reminder_flips_the_check_mark_and_is_kept(app):
    app.tray.click(REMINDERS)
    wait(lambda: app.tray.line(REMINDERS).checked, 'the check mark')
    wait(lambda: app.home.preferences().get('kestrune_scan_reminders') is True, 'the stored setting')
    app.tray.click(REMINDERS)
    wait(lambda: not app.tray.line(REMINDERS).checked, 'the check mark to go')
    wait(lambda: app.home.preferences().get('kestrune_scan_reminders') is False, 'the stored setting')


def test_the_menu_opens_the_window_on_the_right_page(app):
    for line, page in ((OPEN, 'Overview'), (STORAGE, 'Storage'), (APPS, 'Running Apps'), (AI_TOOLS, 'AI Tools'),
                       (RECENT, 'Activity')):
        app.open(line)
        wait(lambda expected=page: app.page() == expected, f'the page {page}')
    assert [title for title, _ in app.windows.windows()] == ['Kestrune']


def place_in_menu(menu, lines_above, separators_above):
    """The middle of one line of the menu that a click on the item shows."""
    left, top, width, height = frame_of(*menu)
    separator = 9
    line = (height - 4 * separator) / 18
    assert line > 15, 'the menu is too small for its 18 lines that are visible'
    return left + width // 2, int(top + lines_above * line + separators_above * separator + line / 2), line


def test_a_line_of_the_menu_is_carried_out_by_the_pointer_and_by_the_keyboard(app):
    app.tray.activate()
    x, y, _ = place_in_menu(app.opened_popup(), 7, 2)
    output('xdotool', 'mousemove', str(x), str(y - 3), 'mousemove', str(x), str(y), 'click', '1')
    app.wait_for_window()
    wait(lambda: app.page() == 'Overview', 'the page Overview')
    app.close_window()
    app.tray.activate()
    app.opened_popup()
    press_keys('Up', 'Up', 'Up', 'Return')
    wait(lambda: app.window_id() and app.page() == 'Settings', 'the page Settings')


def test_a_click_on_the_item_shows_the_menu_with_its_tooltips(app):
    app.tray.activate()
    menu = app.opened_popup()
    x, quick_clean, line = place_in_menu(menu, 2, 1)
    output('xdotool', 'mousemove', str(x), str(quick_clean - 3))
    output('xdotool', 'mousemove', str(x), str(quick_clean))
    height = wait(lambda: [frame_of(popup)[3] for popup in app.popups() - menu], 'the tooltip')[0]
    assert height < 4 * line
    press_keys('Escape')
    wait(lambda: not app.popups(), 'the menu to close')


def test_cleaning_saved_folders_without_any_leads_to_storage(app):
    app.tray.click(CLEAN_SAVED)
    app.wait_for_window()
    wait(lambda: app.page() == 'Storage', 'the page Storage')
    sentence = ('Choose folders in Storage, then click Save for Next Time. You can review those same folders from the '
                'menu next time.')
    app.windows.wait_for(sentence)
    assert app.tray.open()[2].label == sentence and app.tray.open()[2].visible


def test_quick_clean_says_when_there_is_nothing_to_clean(start, tmp_path):
    app = start(home=Home(tmp_path / 'bare'))
    app.tray.click(QUICK_CLEAN)
    app.wait_for_dialog()
    app.windows.wait_for('No build caches found')
    app.windows.wait_for('No build caches found in the places we check. Try the other categories in Storage.')
    app.answer('OK')


def test_a_second_start_shows_the_window_of_the_first(app, start):
    second = start()
    assert second.wait_until_gone() == 0
    app.wait_for_window()


def test_quit_ends_the_program(app):
    app.tray.click(QUIT)
    assert app.wait_until_gone() == 0
