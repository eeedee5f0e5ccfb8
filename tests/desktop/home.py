"""A home folder as a developer has it, and what the program leaves in it."""
import collections
import json
import os
import stat
import subprocess
from pathlib import Path

MB = 1_000_000

# Title -> (folder below the home folder, size in units of 4096 bytes, the size as the program words it). The sizes
# lie above the sizes from which a folder is listed.
CACHES = {
    'Ollama Models': ('.ollama/models', 12_000, '49.2 MB'),
    'Hugging Face Hub Cache': ('.cache/huggingface/hub', 9_000, '36.9 MB'),
    'Gradle Caches': ('.gradle/caches', 6_000, '24.6 MB'),
    'NPM Global Cache': ('.npm/_cacache', 5_000, '20.5 MB'),
    'Cargo Registry Cache': ('.cargo/registry/cache', 4_000, '16.4 MB'),
    'User Logs': ('Library/Logs', 3_000, '12.3 MB'),
}
BUILD_CACHES = ['Gradle Caches', 'NPM Global Cache', 'Cargo Registry Cache']
SUBTITLES = {
    'Gradle Caches': 'Downloaded packages and cached builds — recreated when needed',
    'NPM Global Cache': 'Downloaded packages — fetched again on the next install',
    'Cargo Registry Cache': 'Downloaded Rust packages — fetched again when needed',
}


class Home:
    """Home, settings and Trash of one person, all below one folder."""

    def __init__(self, folder):
        self.folder = Path(folder) / 'home'
        self.config = Path(folder) / 'config'
        self.data = Path(folder) / 'data'
        for each in (self.folder, self.config, self.data):
            each.mkdir(mode=0o700, parents=True, exist_ok=True)
        self.environment = {
            'HOME': str(self.folder),
            'XDG_CONFIG_HOME': str(self.config),
            'XDG_DATA_HOME': str(self.data),
            'XDG_CACHE_HOME': str(self.folder / '.cache'),
            'XDG_STATE_HOME': str(self.folder / '.local/state'),
        }

    def set_preferences(self, settings):
        """The stored settings, as the program writes them."""
        self.preferences_file.parent.mkdir(mode=0o700, exist_ok=True)
        self.preferences_file.touch(mode=0o600)
        self.preferences_file.write_text(json.dumps(settings), encoding='utf-8')
        return self

    @property
    def autostart_file(self):
        return self.config / 'autostart/com.torvandelsyn.kestrune.desktop'

    def path(self, title):
        return self.folder / CACHES[title][0]

    def furnish(self, titles=tuple(CACHES)):
        """Fills the folders of these caches, and puts things beside them that no cleanup may ever touch. The program has
        been launched before: it says nothing about starting at login."""
        self.set_preferences({'kestrune_login_default_2_1': True})
        for title in titles:
            relative, blocks, _ = CACHES[title]
            inner = self.folder / relative / 'files-2.1'
            inner.mkdir(parents=True, exist_ok=True)
            allocate(inner / 'large.bin', (blocks - 1) * 4096)
            (inner / 'näme with spaces & <b>.txt').write_text('kept as it is', encoding='utf-8')
        for relative in ('.ssh/id_ed25519', 'Projects/app/main.cpp', '.npm/notes.txt', 'Documents/letter.odt'):
            path = self.folder / relative
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text('mine', encoding='utf-8')
        return self

    def files(self):
        """Every file with its size, for comparing before and after."""
        return {str(path.relative_to(self.folder)): path.lstat().st_size
                for path in self.folder.rglob('*') if not path.is_dir() and 'Application Support' not in path.parts}

    @property
    def activity_file(self):
        return self.folder / 'Library/Application Support/Kestrune/activity.json'

    @property
    def preferences_file(self):
        return self.config / 'kestrune/preferences.json'

    def activity(self):
        if not self.activity_file.exists():
            return []
        return json.loads(self.activity_file.read_text(encoding='utf-8'))

    def preferences(self):
        if not self.preferences_file.exists():
            return {}
        return json.loads(self.preferences_file.read_text(encoding='utf-8'))

    def trashed(self):
        """The original paths of what of this home lies in the Trash, as trash-list reads it: that lists every disk."""
        paths = [line.split(' ', 2)[2] for line in self._tool('trash-list').splitlines()]
        return sorted(path for path in paths if path.startswith(f'{self.folder}/'))

    def restore_from_trash(self, path):
        """Restores the one trashed item that lay at path."""
        self._tool('trash-restore', str(path), answer='0\n')

    def _tool(self, *command, answer=None):
        done = subprocess.run(command, input=answer, capture_output=True, text=True, check=False, cwd=self.folder,
                              env={**os.environ, **self.environment})
        assert done.returncode == 0, f'{command}: {done.stdout}{done.stderr}'
        return done.stdout


def allocate(path, size):
    """A file that really takes size bytes, without the time to write them."""
    with open(path, 'wb') as file:
        os.posix_fallocate(file.fileno(), 0, size)


class Measured:
    """What lies below a folder, counted without the program: links and other file systems are seen, not entered."""

    def __init__(self, folder):
        root = os.fsencode(folder)
        device = os.lstat(root).st_dev
        self.entries = self.files = self.skipped = 0
        self.children = collections.Counter()  # name -> bytes, of what is or holds a file
        self.sizes = {}  # path below the folder -> bytes, of every file
        waiting = [root]
        while waiting:
            for entry in os.scandir(waiting.pop()):
                self.entries += 1
                status = entry.stat(follow_symlinks=False)
                if stat.S_ISLNK(status.st_mode) or status.st_dev != device:
                    self.skipped += 1
                elif stat.S_ISDIR(status.st_mode):
                    waiting.append(entry.path)
                elif stat.S_ISREG(status.st_mode):
                    self.files += 1
                    path = os.path.relpath(entry.path, root)
                    self.children[path.split(b'/')[0]] += status.st_blocks * 512
                    self.sizes[path] = status.st_blocks * 512

    @property
    def counts(self):
        return f'{self.entries:,} inspected · {self.files:,} files'

    @property
    def incomplete(self):
        return (f'This scan is incomplete. {self.skipped:,} locations couldn’t be read or were skipped. '
                'Try a smaller folder to see more.')


def worded(size):
    """A size as the program words it."""
    if size < 1000:
        return 'Zero KB' if size == 0 else '1 byte' if size == 1 else f'{size} bytes'
    for power, (unit, digits) in enumerate((('KB', 0), ('MB', 1), ('GB', 2)), start=1):
        text = f'{size / 1000 ** power:.{digits}f}'
        if float(text) < 1000 or unit == 'GB':
            break
    return (text.rstrip('0').rstrip('.') if digits else text) + ' ' + unit
