"""Every page of the window as a person sees it, in the light and in the dark, and as a screen reader reads it."""
import pytest

from desk import ColourScheme, Windows, frame_of, output, picture, pixel, wait
from kestrune import PAGES

LOOKS = {'light': (0xFA, 0xFA, 0xFB), 'dark': (0x1C, 0x1D, 0x20)}
CONTROLS = {*Windows.CONTROLS, 'combo box', 'text', 'entry', 'slider', 'progress bar', 'table cell'}


@pytest.fixture(params=LOOKS)
def shown(request, start):
    """The window in one of the looks, and the colour of its background."""
    with ColourScheme(dark=request.param == 'dark'):
        app = start()
        app.scan()
        yield app, request.param, LOOKS[request.param]


def is_painted(window, background, path):
    """Right of the sidebar and above the title there is nothing but background."""
    picture(path, window)
    return pixel(path, 220, 8) == background


def nameless(app):
    """What a screen reader would meet without being able to say what it is."""
    return [app.windows.role(node) for node in app.windows.walk()
            if not app.windows.name(node)
            and (app.windows.role(node) in CONTROLS or app.windows.has(node, 'FOCUSABLE'))]


def test_every_page_is_drawn_in_both_looks_and_leaves_nothing_unnamed(shown, pictures):
    app, look, background = shown
    window = wait(app.window_id, 'the window on the screen')
    for page in PAGES:
        app.show_page(page)
        path = pictures / f"page-{page.lower().replace(' ', '-')}-{look}.png"
        wait(lambda shot=path: is_painted(window, background, shot), f'the page {page} in the {look}')
        assert nameless(app) == [], page
        assert app.windows.reads(page)


def test_the_keyboard_reaches_every_control_of_a_page(start):
    app = start()
    app.scan()
    for page in ('Automation', 'Settings', 'Overview'):
        app.show_page(page)
        wanted = {app.windows.name(node) for node in app.windows.walk()
                  if app.windows.has(node, 'FOCUSABLE') and app.windows.has(node, 'ENABLED')
                  and app.windows.role(node) in ('push button', 'check box', 'toggle button', 'link')}
        assert wanted, page
        reached = set()
        for _ in range(3 * len(wanted) + 20):
            app.press_keys('Tab')
            focused = app.windows.focused()
            reached.add(app.windows.name(focused) if focused else '')
            if wanted <= reached:
                break
        assert wanted <= reached, f'{page}: never reached {wanted - reached}'


@pytest.mark.parametrize('scale', ['1.25', '1.5', '2'])
def test_the_window_stays_whole_at_other_scales(start, pictures, scale):
    app = start(environment={'QT_SCALE_FACTOR': scale, 'QT_SCALE_FACTOR_ROUNDING_POLICY': 'PassThrough'})
    app.open()
    window = wait(app.window_id, 'the window on the screen')
    for page in ('Overview', 'Settings'):
        app.show_page(page)
        path = pictures / f'scale-{scale}-{page.lower()}.png'
        left = round(220 * float(scale))

        def painted(shot=path, x=left):
            picture(shot, window)
            return pixel(shot, x, 8) == LOOKS['light']
        wait(painted, f'the page {page} at {scale}')
    # No more than the screen has, whatever the scale.
    size = frame_of(window)[2:]
    screen = tuple(map(int, output('xdotool', 'getdisplaygeometry').split()))
    assert size[0] <= screen[0] and size[1] < screen[1]
