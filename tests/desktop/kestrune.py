"""The program as the tests use it: one running process with its tray menu and its windows."""
import os
import re
import subprocess
from pathlib import Path

from desk import PATIENCE, Tray, Windows, bring_to_front, output, press_keys, wait

PROGRAM = os.environ.get('KESTRUNE', '')
PAGES = ['Overview', 'Storage', 'Disk Explorer', 'AI Tools', 'Running Apps', 'Automation', 'Activity', 'Settings']

QUICK_CLEAN = '🧹 Clean Build Caches…'
CLEAN_SAVED = '📋 Clean the Same Folders Again…'
OPEN = '✦ Open Kestrune'
STORAGE = '💾 Find What’s Taking Space…'
EXPLORER = '📂 Find Big Files…'
PORTS = '🌐 Find What’s Using a Port…'
KEEP = '🔒 Keep My Current App Open'
QUIT_OTHERS = '🚪 Quit Other Apps…'
APPS = '🖥 Running Apps…'
AI_TOOLS = '🧠 AI Tools…'
CLEAR_MEMORY = 'Clear Cached Memory…'
REMINDERS = '🔁 Daily Scan Reminders'
RECENT = '🕘 Recent Actions…'
CHECK = 'Check for Updates…'
INSTALL = 'Update Available — Install…'
SETTINGS = '⚙️ Settings & Help…'
QUIT = 'Quit Kestrune'

PORT_WINDOW = 'What’s Using a Port?'
FOLDER_PANEL = 'Choose folder'
FOLDER_MESSAGE = 'Choose a folder to inspect. Disk Explorer only reads files.'
CHOOSE = 'Choose folder…'
PICTURE = 'Picture of the largest items'
LARGEST = 'Largest entries'
BIGGEST_FILES = 'Biggest files'
REVIEW = 'Review & move to Trash'
CAUTION = ("Close the tools using these files first. Builds may need to rebuild caches; models may require another "
           "download. Space is recovered only after Trash is emptied. You can restore eligible items from Finder's "
           "Trash.")


class Kestrune:
    """Starts the program for the person of home, through a command that becomes it where one is given. A context
    manager: the program is gone at the end."""

    def __init__(self, home, *arguments, environment=None, log=None, umask=-1, through=(), program=PROGRAM):
        self.home = home
        self.log = Path(log or home.folder.parent / 'program.log')
        self._tray = self._windows = None
        with open(self.log, 'ab') as out:
            self.process = subprocess.Popen([*through, program, *arguments], stdin=subprocess.DEVNULL, stdout=out, stderr=out, umask=umask,
                                            env={**os.environ, **home.environment, **(environment or {})})

    @property
    def tray(self):
        self._tray = self._tray or Tray(self.process.pid)
        return self._tray

    @property
    def windows(self):
        self._windows = self._windows or Windows(self.process.pid)
        return self._windows

    def is_running(self):
        return self.process.poll() is None

    def wait_until_gone(self, seconds=PATIENCE):
        """The exit code."""
        return self.process.wait(seconds)

    def stop(self):
        if self.is_running():
            self.process.terminate()
        try:
            self.process.wait(PATIENCE)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()

    def __enter__(self):
        return self

    def __exit__(self, *problem):
        self.stop()

    # Windows and pages.

    def open(self, menu_line=OPEN):
        """Opens the window through the menu."""
        self.tray.click(menu_line)
        self.wait_for_window()
        return self

    def wait_for_window(self):
        return wait(lambda: self.windows.window('Kestrune'), 'the window')

    def popups(self):
        """The X11 windows of a program without an open window: its menu and tooltips, which no window list has."""
        found = subprocess.run(['xdotool', 'search', '--onlyvisible', '--pid', str(self.process.pid)],
                               capture_output=True, text=True, check=False)
        return set(found.stdout.split())

    def opened_popup(self, before=frozenset()):
        """The popup that was not there before, once it takes the keyboard and the pointer."""
        popups = wait(lambda: self.popups() - before, 'a popup on the screen')
        # It is visible first. Whoever answers again has opened it to the end.
        assert self.tray.title
        return popups

    def window_id(self, title='Kestrune'):
        """The X11 window with this title, or nothing while it is not on the screen."""
        found = subprocess.run(['xdotool', 'search', '--all', '--onlyvisible', '--pid', str(self.process.pid), '--name',
                                f'^{re.escape(title)}$'], capture_output=True, text=True, check=False).stdout.split()
        return found[0] if found else None

    def port_window_id(self):
        return self.window_id(PORT_WINDOW)

    def close_window(self):
        """As the window's close button does. Asked for again, as a person would: a window manager that is still busy
        with a new window may let a key go by."""
        for _ in range(5):
            try:
                self.press_keys('alt+F4')
                wait(lambda: not self.window_id(), 'the window to close', 8)
                return
            except AssertionError:
                if not self.window_id():
                    return
        raise AssertionError('the window does not close')

    def press_keys(self, *keys, title='Kestrune'):
        """On the keyboard, in the window with this title."""
        bring_to_front(wait(lambda: self.window_id(title), f'the window {title!r} on the screen'))
        press_keys(*keys)

    def show_page(self, page):
        self.windows.select('Pages', page)
        wait(lambda: self.page() == page, f'the page {page}')

    def page(self):
        """The page whose sidebar entry is selected."""
        return next((Windows.name(item) for item in Windows.children(self.windows.list_named('Pages'))
                     if Windows.has(item, 'SELECTED')), None)

    def open_ports(self):
        """Opens the port review through the menu."""
        self.tray.click(PORTS)
        wait(self.port_window_id, 'the port window on the screen')
        return self

    # Rows of running processes.

    def row(self, process):
        """The row of the process with this number, in whichever window shows it, or None. Servers of other desktops may
        have moved it out of sight."""
        pattern = re.compile(rf'\bPID {process}\b')
        return next((node for node in self.windows.walk(closed=('list item',), state='VISIBLE')
                     if self.windows.role(node) == 'list item' and pattern.search(self.windows.name(node))), None)

    def row_text(self, process):
        """What a screen reader reads at the row; empty without one."""
        row = self.row(process)
        return self.windows.name(row) if row else ''

    def wait_for_row(self, process, text=''):
        wait(lambda: text in self.row_text(process) and self.row(process),
             f'the row of process {process}' + (f' with {text!r}' if text else ''))

    def row_control(self, process, label):
        """The control of the row whose name begins with label, or None."""
        row = self.row(process)
        return row and next((node for node in self.windows.walk(row)
                             if self.windows.name(node).startswith(label)), None)

    def can_press_in_row(self, process, label):
        control = self.row_control(process, label)
        return bool(control) and Windows.has(control, 'ENABLED')

    def press_in_row(self, process, label):
        self.windows.use(lambda: self.row_control(process, label), f'{label!r} in the row of process {process}')

    # Disk Explorer.

    def open_folder_panel(self, button=CHOOSE):
        """Gives the panel, which then has the keyboard."""
        self.windows.press(button)
        bring_to_front(wait(lambda: self.window_id(FOLDER_PANEL), 'the folder panel'))
        return wait(lambda: self.windows.window(FOLDER_PANEL), 'the folder panel')

    def choose_folder(self, folder, button=CHOOSE):
        """Types folder into the panel."""
        self.open_folder_panel(button)
        output('xdotool', 'type', str(folder))
        press_keys('Return')
        self.wait_for_panel_to_close()

    def wait_for_panel_to_close(self):
        wait(lambda: not self.window_id(FOLDER_PANEL), 'the folder panel to close')

    def listed_in(self, name):
        """What a screen reader reads at the items of this list, in their order."""
        return [self.windows.name(node) for node in self.items_of(name)]

    def items_of(self, name):
        nodes = self.windows.walk(self.windows.list_named(name), closed=('list item',))
        return [node for node in nodes if self.windows.role(node) == 'list item']

    def item(self, name, beginning):
        """The item of this list whose text begins so."""
        return wait(lambda: next((node for node in self.items_of(name)
                                  if self.windows.name(node).startswith(beginning)), None), f'{beginning!r} in {name!r}')

    # Storage.

    def scan(self):
        """Opens Storage and scans until the caches are listed."""
        self.open(STORAGE)
        self.windows.press('Scan now')
        wait(lambda: self.listed() and not self.windows.control('Stop scan'), 'the caches to be listed')
        return self

    def listed(self):
        """The titles of the caches on the Storage page, in their order."""
        names = [self.windows.name(node) for node in self.windows.walk() if self.windows.role(node) == 'check box']
        return [name.removeprefix('Select ') for name in names if name.startswith('Select ')]

    def choose(self, *titles):
        for title in titles:
            if not self.windows.is_on(f'Select {title}'):
                self.windows.press(f'Select {title}')
            wait(lambda name=f'Select {title}': self.windows.is_on(name), f'{title} to be selected')

    def review(self):
        """Presses the footer's button and gives the confirmation dialog."""
        self.windows.press(REVIEW)
        return self.wait_for_dialog()

    def wait_for_dialog(self):
        return wait(self.windows.dialog, 'a dialog')

    def answer(self, button):
        self.windows.press(button, self.wait_for_dialog())
        wait(lambda: not self.windows.dialog(), 'the dialog to close')

    def clean(self, *titles):
        """Moves these caches to the Trash, with all that a person has to do for it."""
        self.scan()
        self.choose(*titles)
        self.review()
        self.answer('Move to Trash')
        plain = f'Moved {len(titles)} items to Trash. 0 failed.'
        self.windows.wait_for(plain)
