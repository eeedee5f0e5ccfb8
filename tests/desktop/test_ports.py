"""What’s Using a Port: from the question to the free port.

The program lists what runs as it starts, and asks for nothing while a listing is under way: a server that a test looks
for listens before the program starts, unless the test says otherwise.
"""
import signal
import time

from desk import frame_of, has_keyboard, output, press_keys, wait
from kestrune import PORT_WINDOW
from programs import Server, is_free

WARNING = ('Stopping a server closes its whole process, including its other work. Save first. Protected apps stay '
           'running.')
CHANGED = "Process changed or couldn't be stopped. Rescan before retrying."


def stop_question(app, server):
    """The open question, certainly about this server."""
    dialog = app.wait_for_dialog()
    assert app.windows.reads(f'Quit {server.name}?', dialog)
    assert app.windows.reads(f'Listening on: *:{server.port}. This stops the entire process, including its other work '
                             'and connections.', dialog)
    return dialog


def test_three_clicks_lead_from_the_menu_to_a_free_port(server, app, home):
    app.open_ports()
    app.wait_for_row(server.pid, f'*:{server.port}')
    assert app.row_text(server.pid).startswith('node')
    assert app.windows.reads('What’s using your ports?') and app.windows.reads(WARNING)
    app.press_in_row(server.pid, 'Stop process')
    stop_question(app, server)
    app.answer('Quit')
    assert server.wait_until_gone() == -signal.SIGTERM
    assert is_free(server.port)
    entry = wait(home.activity, 'the entry in the log')[0]
    assert (entry['title'], entry['detail'], entry['failed']) == (
        'Stop requested: node', f'Sent a termination request to PID {server.pid}.', False)
    wait(lambda: not app.row(server.pid), 'the row to go')


def test_cancel_stops_nothing(server, app, home):
    app.open_ports()
    app.wait_for_row(server.pid)
    app.press_in_row(server.pid, 'Stop process')
    stop_question(app, server)
    app.answer('Cancel')
    assert server.is_running() and not is_free(server.port)
    assert home.activity() == []
    assert app.can_press_in_row(server.pid, 'Stop process')


def test_every_address_of_a_server_is_named(start, tmp_path):
    with Server(tmp_path / 'bin', 'vite', '*', '127.0.0.1', '::1') as server:
        app = start().open_ports()
        app.wait_for_row(server.pid)
        every, local, local6 = server.ports
        endpoints = sorted([f'*:{every}', f'127.0.0.1:{local}', f'[::1]:{local6}'])
        assert ', '.join(endpoints) in app.row_text(server.pid)


def test_a_server_of_any_name_is_found_by_its_port(start, tmp_path):
    with Server(tmp_path / 'bin', 'my own & server', '127.0.0.1') as server:
        app = start().open_ports()
        app.wait_for_row(server.pid, f'127.0.0.1:{server.port}')
        assert app.row_text(server.pid).startswith('my own & server')


def test_refresh_finds_a_server_started_meanwhile(server, app, tmp_path):
    app.open_ports()
    app.wait_for_row(server.pid)
    with Server(tmp_path / 'bin', 'node', '*') as later:
        def is_found():
            # As often as a person presses it, who looks at the list in between.
            app.windows.press('Refresh', app.windows.window(PORT_WINDOW))
            time.sleep(1.5)
            return app.row(later.pid)

        wait(is_found, 'the row of the later server')


def test_a_protected_server_can_only_be_looked_at(server, start, home):
    home.set_preferences({**home.preferences(), 'alwaysKeepApps': ['node']})
    app = start()
    app.open_ports()
    app.wait_for_row(server.pid)
    assert app.row_control(server.pid, 'Protected')
    assert not app.can_press_in_row(server.pid, 'Protected')
    assert not app.row_control(server.pid, 'Stop process')


def test_a_server_that_ended_before_it_was_stopped_is_told_of(server, app, home):
    app.open_ports()
    app.wait_for_row(server.pid)
    app.press_in_row(server.pid, 'Stop process')
    stop_question(app, server)
    server.stop()
    app.answer('Quit')
    entry = wait(home.activity, 'the entry in the log')[0]
    assert (entry['title'], entry['detail'], entry['failed']) == ('Stop requested: node', CHANGED, True)


def test_the_keyboard_is_enough(server, app, home):
    app.open()
    app.press_keys('ctrl+n')
    ports = wait(app.port_window_id, 'the port window on the screen')
    app.wait_for_row(server.pid)
    wait(lambda: has_keyboard(ports), 'the keyboard to come to the port window')

    def tab_until(arrived, what):
        for _ in range(80):
            focused = app.windows.focused()
            if focused and arrived(focused):
                return
            press_keys('Tab')
            wait(lambda before=focused: app.windows.focused() != before, 'the focus to move')
        raise AssertionError(f'Tab does not lead to {what}')

    def is_our_button(node):
        button = app.row_control(server.pid, 'Stop process')
        return app.windows.name(node).startswith('Stop process') and button == node

    tab_until(is_our_button, 'the button of the server')
    press_keys('space')
    dialog = stop_question(app, server)
    wait(lambda: app.windows.focused() in list(app.windows.walk(dialog)), 'the keyboard to come to the question')
    tab_until(lambda node: app.windows.name(node) == 'Quit', 'the button Quit')
    press_keys('Return')
    assert server.wait_until_gone() == -signal.SIGTERM
    wait(home.activity, 'the entry in the log')
    wait(lambda: not app.windows.dialog(), 'the question to close')
    wait(lambda: has_keyboard(ports), 'the keyboard to return to the port window')
    press_keys('Escape')
    wait(lambda: not app.port_window_id(), 'the port window to close')
    wait(app.window_id, 'the window behind it')
    assert app.is_running()


def test_the_window_is_centred_and_listed_anew_each_time(server, app, tmp_path):
    app.open_ports()
    app.wait_for_row(server.pid)
    window = app.port_window_id()
    before = frame_of(window)
    output('xdotool', 'windowmove', window, '20', '60')
    wait(lambda: frame_of(window) != before, 'the port window to move')
    app.press_keys('Escape', title=PORT_WINDOW)
    wait(lambda: not app.port_window_id(), 'the port window to close')
    with Server(tmp_path / 'bin', 'node', '*') as later:
        app.open_ports()
        app.wait_for_row(later.pid)

        def is_centred():
            left, _, width, _ = frame_of(window)
            return abs(left + width / 2 - 1440 / 2) <= 8

        window = wait(app.port_window_id, 'the port window on the screen again')
        wait(is_centred, 'the port window in the middle')
