"""AI Tools: what the model folders take, and the tools that run."""
import pytest

from desk import file_manager, press_keys, wait
from home import Home, Measured
from kestrune import AI_TOOLS
from programs import Server

MODELS = {'Ollama Models': '49.2 MB', 'Hugging Face Hub Cache': '36.9 MB'}
NO_MODELS = ('No model folders found in the places we check. Keep yours somewhere else? Choose that folder in Disk '
             'Explorer.')


@pytest.fixture
def ollama(tmp_path):
    with Server(tmp_path / 'bin', 'ollama', '127.0.0.1') as process:
        yield process


def model_rows(app):
    return [node.get_name() for node in app.windows.walk(app.windows.list_named('Model folders'))
            if node.get_role_name() == 'list item']


def test_a_scan_shows_the_model_folders_and_their_sizes(app, home):
    app.open(AI_TOOLS)
    app.windows.press('Scan now')
    app.windows.wait_for('49.2 MB')
    assert model_rows(app) == [f'{title}, {size}' for title, size in MODELS.items()]
    with file_manager() as files:
        app.windows.press('Show in Finder: Ollama Models')
        wait(lambda: files.calls, 'the file manager to be asked')
        assert files.calls[0][1][0] == ['file://' + str(home.path('Ollama Models'))]


def test_a_home_without_models_says_so_after_the_scan(start, tmp_path):
    app = start(home=Home(tmp_path / 'bare')).open(AI_TOOLS)
    assert not app.windows.reads(NO_MODELS)
    app.windows.press('Scan now')
    app.windows.wait_for(NO_MODELS)


def test_a_running_tool_is_recognised_and_marked_when_it_is_protected(app, ollama):
    app.open(AI_TOOLS)
    app.wait_for_row(ollama.pid, 'MB')
    assert app.row_text(ollama.pid).startswith('ollama, ')
    app.windows.press('Review all running apps')
    wait(lambda: app.page() == 'Running Apps', 'the page Running Apps')
    app.wait_for_row(ollama.pid, f'127.0.0.1:{ollama.port}')
    app.press_in_row(ollama.pid, 'Toggle protection for ollama')
    app.wait_for_row(ollama.pid, 'Protected')
    app.show_page('AI Tools')
    app.wait_for_row(ollama.pid, 'Protected')


def test_a_tool_that_ends_leaves_the_list_at_the_next_check(app, ollama):
    app.open(AI_TOOLS)
    app.wait_for_row(ollama.pid)
    ollama.stop()
    wait(lambda: not app.row(ollama.pid), 'the row to go')


def test_the_button_leads_to_storage(app):
    app.open(AI_TOOLS)
    app.windows.press('Review model cleanup')
    wait(lambda: app.page() == 'Storage', 'the page Storage')


def test_a_custom_folder_is_inspected_once_one_is_chosen(app, home):
    app.open(AI_TOOLS)
    app.open_folder_panel('Inspect a custom folder')
    press_keys('Escape')
    app.wait_for_panel_to_close()
    assert app.page() == 'AI Tools'
    app.choose_folder(home.path('Ollama Models'), 'Inspect a custom folder')
    wait(lambda: app.page() == 'Disk Explorer', 'the page Disk Explorer')
    app.windows.wait_for(Measured(home.path('Ollama Models')).counts)
