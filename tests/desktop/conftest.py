"""Fixtures; a failed test leaves a picture of the screen and the accessibility tree in the pictures folder."""
import contextlib
import os
import re
import shutil
import subprocess
from pathlib import Path

import pytest

from desk import Notifications, picture, put_pointer_aside
from home import Home
from kestrune import Kestrune
from programs import Server

PICTURES = Path(os.environ.get('KESTRUNE_PICTURES', '/tmp/kestrune-pictures'))


@pytest.hookimpl(hookwrapper=True)
def pytest_runtest_makereport(item, call):
    report = (yield).get_result()
    if report.when == 'call' and report.failed:
        PICTURES.mkdir(parents=True, exist_ok=True)
        name = re.sub(r'\W+', '-', item.name)
        with contextlib.suppress(subprocess.CalledProcessError):
            picture(PICTURES / f'failed-{name}.png')
        for program in getattr(item, 'programs', []):
            if program.is_running() and program._windows:
                (PICTURES / f'failed-{name}.txt').write_text(program.windows.describe(), encoding='utf-8')
            report.sections.append(('what the program printed', program.log.read_text(errors='replace')))


@pytest.fixture
def home(tmp_path):
    """The home of a developer with six caches large enough to be listed. Its space is given back with the test."""
    yield Home(tmp_path).furnish()
    for folder in tmp_path.iterdir():
        shutil.rmtree(folder, ignore_errors=True)


@pytest.fixture
def start(request, home):
    """start(*arguments, home=…, environment=…, umask=…, program=…) starts the program; it ends with the test."""
    request.node.programs = programs = []
    Notifications.forget()
    put_pointer_aside()

    def begin(*arguments, home=home, **options):
        programs.append(Kestrune(home, *arguments, **options))
        return programs[-1]

    yield begin
    for program in programs:
        program.stop()


@pytest.fixture
def app(start):
    """The running program, its item already in the tray."""
    program = start()
    assert program.tray
    return program


@pytest.fixture
def server(tmp_path):
    """A developer's server that listens on a free port of every address."""
    with Server(tmp_path / 'bin', 'node', '*') as process:
        yield process


@pytest.fixture
def pictures():
    PICTURES.mkdir(parents=True, exist_ok=True)
    return PICTURES
