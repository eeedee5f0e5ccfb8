"""Starts the program on the desktop it runs in, goes through the menu and every page, light and dark, and leaves
pictures. Arguments: the program, the folder for the pictures, arguments for the program."""
import os
import sys
import tempfile
from pathlib import Path

program, pictures = sys.argv[1], Path(sys.argv[2])
os.environ['KESTRUNE'] = program

from desk import ColourScheme, Notifications, picture, press_keys, put_pointer_aside, wait  # noqa: E402
from home import BUILD_CACHES, Home  # noqa: E402
from kestrune import PAGES, PORT_WINDOW, QUIT, Kestrune  # noqa: E402
from programs import Application, Server  # noqa: E402


def settled_picture(path, window):
    """A picture of the window once two in a row are the same."""
    def is_settled():
        before = path.read_bytes() if path.exists() else b''
        picture(path, window)
        return path.read_bytes() == before
    path.unlink(missing_ok=True)
    wait(is_settled, f'{path.name} to settle')


def tour(app, look):
    Notifications.forget()  # what is still shown would cover the window
    app.tray.activate()
    app.opened_popup()
    settled_picture(pictures / f'menu-{look}.png', 'root')
    press_keys('Escape')
    wait(lambda: not app.popups(), 'the menu to close')
    app.scan()
    app.choose(*BUILD_CACHES)
    window = wait(app.window_id, 'the window on the screen')
    for page in PAGES[:-2] + PAGES[-1:]:
        app.show_page(page)
        settled_picture(page_picture(page, look), window)
    app.open_ports()
    settled_picture(pictures / f'ports-{look}.png', app.port_window_id())
    app.press_keys('Escape', title=PORT_WINDOW)
    wait(lambda: not app.port_window_id(), 'the port window to close')
    app.show_page('Storage')
    app.review()
    settled_picture(pictures / f'confirmation-{look}.png', 'root')
    app.answer('Move to Trash')
    app.windows.wait_for(f'Moved {len(BUILD_CACHES)} items to Trash. 0 failed.')
    Notifications.wait_for('Kestrune cleanup results')  # and no longer over the window
    app.show_page('Activity')
    settled_picture(page_picture('Activity', look), window)


def page_picture(page, look):
    return pictures / f"{PAGES.index(page) + 1}-{page.lower().replace(' ', '-')}-{look}.png"


def main():
    pictures.mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory(prefix='kestrune-tour.') as folder:
        home = Home(folder)
        tools = Path(folder) / 'bin'
        put_pointer_aside()
        with Application('mousepad', '--disable-server'), Application('galculator'), \
                Server(tools, 'node', '*', '127.0.0.1'), Server(tools, 'ollama', '127.0.0.1'):
            for look in ('light', 'dark'):
                home.furnish()
                with ColourScheme(dark=look == 'dark'), Kestrune(home, *sys.argv[3:]) as app:
                    tour(app, look)
                    app.tray.click(QUIT)
                    app.wait_until_gone()


if __name__ == '__main__':
    main()
