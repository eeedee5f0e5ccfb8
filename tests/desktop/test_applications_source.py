"""What the desktop tells about applications, and how it is asked to end them: the probe among real programs and windows
of all kinds."""
import contextlib
import json
import os
import shutil
import signal
import subprocess
from pathlib import Path

import pytest

from desk import PATIENCE, Windows, bring_to_front, output, press_keys, wait

PROBE = os.environ.get('KESTRUNE_PROBE', '')
WINDOWS = os.environ.get('KESTRUNE_WINDOWS', '')


def ask(*words, **environment):
    result = subprocess.run([PROBE, *words], capture_output=True, text=True, check=False, timeout=60,
                            env={**os.environ, **environment})
    return json.loads(result.stdout)


def listed():
    return ask('apps')['applications']


def application(program):
    return next((each for each in listed() if each['pid'] == program.pid), None)


@pytest.fixture
def run():
    """run(command…) starts a program; it ends with the test."""
    with contextlib.ExitStack() as stack:
        def begin(*command):
            program = stack.enter_context(subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                                           stderr=subprocess.DEVNULL, text=True))
            stack.callback(program.kill)
            return program
        yield begin


@pytest.fixture
def windows(run):
    """windows(kind or option…) shows windows of these kinds, of one process."""
    def begin(*words):
        program = run(WINDOWS, *words)
        assert program.stdout.readline() == 'shown\n'
        return program
    return begin


def shown(program):
    """The program once the window manager lists it."""
    return wait(lambda: application(program), 'the application to be listed')


def window_of(program):
    return wait(lambda: output('xdotool', 'search', '--onlyvisible', '--pid', str(program.pid)).split(), 'a window')[-1]


def settled(programs):
    """The applications once all of programs are among them."""
    def ready():
        found = listed()
        return found if {each.pid for each in programs} <= {each['pid'] for each in found} else None
    return wait(ready, 'the applications to be listed')


# The list.

def test_guests_are_listed_beside_another_display_system(run, windows, tmp_path):
    program = windows('normal')
    shown(program)
    server = tmp_path / 'Xwayland'
    shutil.copyfile(shutil.which('sleep'), server)
    server.chmod(0o755)
    run(str(server), '1000')
    found = ask('apps', WAYLAND_DISPLAY='elsewhere')['applications']
    assert program.pid in [each['pid'] for each in found]


def test_real_programs_are_listed_with_name_id_and_picture(run):
    terminal, calculator, editor = run('xterm'), run('galculator'), run('mousepad')
    found = {each['pid']: each for each in settled([terminal, calculator, editor])}
    assert [found[each.pid]['name'] for each in (terminal, calculator, editor)] == ['XTerm', 'Galculator', 'Mousepad']
    assert found[editor.pid]['id'] == 'org.xfce.mousepad'
    assert found[calculator.pid]['id'] == 'galculator'
    assert found[terminal.pid]['id'] == 'debian-xterm'
    for each in (calculator, editor):
        picture = found[each.pid]['icon']
        assert picture.startswith('/') and picture.endswith(('.svg', '.png')) and os.path.isfile(picture), picture
    for each in (terminal, calculator, editor):
        assert found[each.pid]['regular']
        ticks = int(open(f'/proc/{each.pid}/stat', encoding='utf-8').read().rpartition(')')[2].split()[19])
        assert found[each.pid]['startTime'] == ticks


def test_order_is_that_of_the_first_windows(windows):
    programs = []
    for _ in range(3):
        programs.append(windows('normal'))
        shown(programs[-1])
    order = [each['pid'] for each in listed()]
    places = [order.index(each.pid) for each in programs]
    assert places == sorted(places)


def test_process_with_three_windows_is_one_application(windows):
    program = windows('normal', 'normal', 'dialog', 'normal')
    shown(program)
    assert [each['pid'] for each in listed()].count(program.pid) == 1
    assert application(program)['regular']


def test_program_without_an_entry_is_called_what_its_window_says(windows):
    found = shown(windows('class=Some Program', 'normal'))
    assert (found['name'], found['id'], found['icon']) == ('Some Program', '', '')


@pytest.mark.parametrize('kind', ['dialog', 'utility', 'skip', 'dock', 'splash', 'desktop'])
def test_what_shows_only_such_windows_is_no_regular_application(windows, kind):
    assert not shown(windows(kind))['regular']


def test_dialog_before_the_main_window_makes_no_difference(windows):
    program = windows('dialog', 'normal')
    wait(lambda: (application(program) or {}).get('regular'), 'the application to be regular')


def test_false_process_number_of_a_window_is_not_believed(windows):
    victim = windows('normal')
    shown(victim)
    liar = windows(f'pid={victim.pid}', 'class=Liar', 'normal')
    assert shown(liar)['name'] == 'Liar'
    assert application(victim)['name'] == 'Windows'


def test_window_that_says_nothing_about_its_process_is_found_all_the_same(windows):
    assert shown(windows('mute', 'class=Quiet', 'normal'))['name'] == 'Quiet'


def test_window_of_another_machine_is_no_application_here(windows):
    local = windows('normal')
    other = windows('machine=elsewhere.example', 'pid=4711', 'normal')
    later = windows('normal')
    shown(local)
    shown(later)
    assert application(other) is None
    assert all(each['pid'] != 4711 for each in listed())


# Who is in front.

def test_front_application_follows_the_user_and_each_change_is_told_once(windows, run):
    one, two = windows('class=One', 'normal'), windows('class=Two', 'normal', 'normal')
    settled([one, two])
    first, second = window_of(one), window_of(two)
    bring_to_front(first)
    watcher = run(PROBE, 'apps-watch')
    assert json.loads(watcher.stdout.readline()) == 'watching'
    seen = []
    for window, program in ((second, two), (first, one), (second, two), (first, one)):
        bring_to_front(window)
        seen.append(json.loads(watcher.stdout.readline())['pid'])
        assert ask('apps')['frontmost'] == program.pid
    assert seen == [two.pid, one.pid, two.pid, one.pid]
    # Another window of the same program is no change, and nothing was told twice.
    others = output('xdotool', 'search', '--onlyvisible', '--pid', str(two.pid)).split()
    for window in (*others, *others):
        bring_to_front(window)
    watcher.stdin.close()
    assert [json.loads(line)['pid'] for line in watcher.stdout] == [two.pid]


def test_parts_of_the_desktop_do_not_come_to_the_front(windows):
    program = windows('normal')
    shown(program)
    bring_to_front(window_of(program))
    desktop = windows('desktop')
    shown(desktop)
    assert ask('apps')['frontmost'] in (program.pid, None)


# Quitting.

def test_quitting_brings_the_programs_own_question_and_does_not_end_it(run, tmp_path):
    (tmp_path / 'note.txt').write_text('first line\n', encoding='utf-8')
    editor = run('mousepad', str(tmp_path / 'note.txt'))
    shown(editor)
    window = window_of(editor)
    bring_to_front(window)
    press_keys('x')
    wait(lambda: '*' in output('xdotool', 'getwindowname', window), 'the text to be changed')
    assert ask('apps-quit', str(editor.pid)) == 'accepted'
    dialog = Windows(editor.pid)
    wait(lambda: dialog.dialog(), 'the question about unsaved work')
    assert editor.poll() is None
    assert (tmp_path / 'note.txt').read_text(encoding='utf-8') == 'first line\n'


def test_quitting_ends_a_program_without_unsaved_work(run):
    calculator = run('galculator')
    shown(calculator)
    assert ask('apps-quit', str(calculator.pid)) == 'accepted'
    assert calculator.wait(PATIENCE) == 0
    assert application(calculator) is None


def test_each_main_window_is_asked_once(windows):
    program = windows('normal', 'dialog', 'normal', 'stubborn', 'utility')
    shown(program)
    assert ask('apps-quit', str(program.pid)) == 'accepted'
    assert [program.stdout.readline() for _ in range(2)] == ['asked\n'] * 2
    program.stdin.close()
    assert program.wait(PATIENCE) == 0
    assert program.stdout.read() == ''


@pytest.mark.parametrize('kind', ['stubborn', 'dialog', 'skip', 'dock'])
def test_program_that_cannot_be_asked_declines_and_lives_on(windows, kind):
    program = windows(kind)
    shown(program)
    assert ask('apps-quit', str(program.pid)) == 'declined'
    # It is still connected, and nobody told it anything.
    program.stdin.close()
    assert program.wait(PATIENCE) == 0
    assert program.stdout.read() == ''


def test_without_a_window_manager_that_closes_the_window_is_asked_directly(windows):
    program = windows('normal')
    shown(program)
    hints = output('xprop', '-root', '_NET_SUPPORTED')
    fewer = [hint for hint in hints.partition('= ')[2].strip().split(', ') if hint != '_NET_CLOSE_WINDOW']
    try:
        output('xprop', '-root', '-f', '_NET_SUPPORTED', '32a', '-set', '_NET_SUPPORTED', ', '.join(fewer))
        assert '_NET_CLOSE_WINDOW' not in output('xprop', '-root', '_NET_SUPPORTED')
        assert ask('apps-quit', str(program.pid)) == 'accepted'
        assert program.stdout.readline() == 'asked\n'
    finally:
        restored = hints.partition('= ')[2].strip()
        output('xprop', '-root', '-f', '_NET_SUPPORTED', '32a', '-set', '_NET_SUPPORTED', restored)


def test_force_quitting_ends_the_process_at_once(windows):
    program = windows('stubborn')
    shown(program)
    assert ask('apps-quit', str(program.pid), 'force') == 'accepted'
    assert program.wait(PATIENCE) == -signal.SIGKILL


def test_unknown_process_is_no_application():
    assert ask('apps-quit', str(os.getpid())) == 'unknown'
    assert ask('apps-quit', '1') == 'unknown'


# Trouble.

def test_server_that_does_not_answer_holds_nobody_up(windows, run):
    program = windows('normal')
    shown(program)
    watcher = run(PROBE, 'apps-watch')
    assert json.loads(watcher.stdout.readline()) == 'watching'
    program.stdin.write('\n')
    program.stdin.flush()
    assert program.stdout.readline() == 'grabbed\n'
    # It was told of a change and has asked what changed; it ends while the server still answers nobody.
    watcher.stdin.close()
    try:
        assert watcher.wait(PATIENCE) == 0
    finally:
        program.stdin.write('\n')
        program.stdin.flush()
        assert program.stdout.readline() == 'released\n'
    assert application(program)


def test_server_that_goes_away_ends_nothing(run, tmp_path):
    read_end, write_end = os.pipe()
    server = subprocess.Popen(['Xvfb', '-displayfd', str(write_end), '-nolisten', 'tcp', '-noreset'],
                              pass_fds=[write_end], stderr=subprocess.DEVNULL)
    with server, os.fdopen(read_end) as told:
        os.close(write_end)
        environment = {**os.environ, 'DISPLAY': ':' + told.readline().strip()}
        watcher = subprocess.Popen([PROBE, 'apps-watch'], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True,
                                   env=environment)
        with watcher:
            assert json.loads(watcher.stdout.readline()) == 'watching'
            server.terminate()
            server.wait(PATIENCE)
            wait(lambda: not is_connected(watcher.pid, environment['DISPLAY']), 'the connection to be closed')
            assert watcher.poll() is None
            watcher.stdin.close()
            assert watcher.wait(PATIENCE) == 0


def is_connected(process, display):
    """Whether the process has a connection to the display."""
    opened = set()
    for descriptor in Path(f'/proc/{process}/fd').iterdir():
        with contextlib.suppress(FileNotFoundError):  # closed since it was listed
            opened.add(os.readlink(descriptor))
    with open('/proc/net/unix', encoding='utf-8') as sockets:
        return any(f'socket:[{line.split()[6]}]' in opened and line.rstrip().endswith(f'X11-unix/X{display[1:]}')
                   for line in sockets)


def test_without_a_display_there_are_no_applications():
    environment = {name: value for name, value in os.environ.items() if name != 'DISPLAY'}
    result = subprocess.run([PROBE, 'apps'], capture_output=True, text=True, check=True, env=environment)
    answer = json.loads(result.stdout)
    assert (answer['applications'], answer['frontmost'], answer['tellsFrontmost']) == ([], None, False)
