"""What `cmake --install` lays out, held to the validators that desktops and distributions use."""
import gzip
import os
import re
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree
from html.parser import HTMLParser
from pathlib import Path

BUILD, PREFIX, VERSION = sys.argv[1:4]
ID = 'com.torvandelsyn.kestrune'

INSTALLED = [
    'bin/kestrune',
    'libexec/kestrune/kestrune-clear-cache',
    'libexec/kestrune/kestrune-fetch',
    f'share/applications/{ID}.desktop',
    'share/doc/kestrune/changelog.Debian.gz',
    'share/doc/kestrune/copyright',
    f'share/icons/hicolor/scalable/apps/{ID}.svg',
    f'share/icons/hicolor/symbolic/apps/{ID}-symbolic.svg',
    'share/kestrune/help/help.html',
    'share/kestrune/help/updates.html',
    'share/kestrune/help/whats-new.html',
    'share/locale/de/LC_MESSAGES/kestrune.mo',
    'share/man/man1/kestrune.1.gz',
    f'share/metainfo/{ID}.metainfo.xml',
    f'share/polkit-1/actions/{ID}.policy',
]


class Page(HTMLParser):
    """Where a page leads, and what it would load."""

    def __init__(self, text):
        super().__init__()
        self.links, self.loaded, self.open = [], [], []
        self.feed(text)

    def handle_starttag(self, tag, attributes):
        given = dict(attributes)
        if tag == 'a':
            self.links.append(given['href'])
        elif 'src' in given or 'href' in given:
            self.loaded.append(given)
        if tag != 'meta':
            self.open.append(tag)

    def handle_endtag(self, tag):
        assert self.open and self.open[-1] == tag, f'{tag} closes {self.open}'
        self.open.pop()


class Tree(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.folder.cleanup)
        subprocess.run([os.environ['CMAKE'], '--install', BUILD], check=True, stdout=subprocess.DEVNULL,
                       env=os.environ | {'DESTDIR': cls.folder.name})
        cls.root = Path(cls.folder.name + PREFIX)

    def read(self, name):
        return (self.root / name).read_text(encoding='utf-8')

    def accepted_by(self, *command):
        result = subprocess.run(command, text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        self.assertEqual(result.returncode, 0, result.stdout)
        return result.stdout

    def test_everything_is_laid_out_and_nothing_else(self):
        found = sorted(str(path.relative_to(self.root)) for path in self.root.rglob('*') if not path.is_dir())
        self.assertEqual(found, sorted(INSTALLED))

    def test_desktop_entry_is_valid_and_names_what_is_there(self):
        name = f'share/applications/{ID}.desktop'
        self.assertEqual(self.accepted_by('desktop-file-validate', str(self.root / name)), '')
        keys = dict(line.split('=', 1) for line in self.read(name).splitlines()[1:])
        self.assertTrue(os.access(self.root / 'bin' / keys['Exec'], os.X_OK))
        self.assertTrue((self.root / f'share/icons/hicolor/scalable/apps/{keys["Icon"]}.svg').exists())

    def test_metainfo_is_valid_and_belongs_to_the_entry(self):
        name = f'share/metainfo/{ID}.metainfo.xml'
        self.accepted_by('appstreamcli', 'validate', '--no-net', '--pedantic', str(self.root / name))
        component = ElementTree.fromstring(self.read(name))
        self.assertEqual(component.findtext('id'), ID)
        self.assertEqual(component.findtext('launchable'), f'{ID}.desktop')
        self.assertEqual(component.find('releases/release').get('version'), VERSION)

    def test_entry_metainfo_and_icons_make_one_application_of_a_catalogue(self):
        with tempfile.TemporaryDirectory() as place:
            os.symlink(self.root, place + '/usr')
            self.accepted_by('appstreamcli', 'validate-tree', '--no-net', place)

    def test_pictures_of_the_metainfo_are_in_the_project(self):
        project = Path(__file__).resolve().parents[2]
        images = [image.text for image in ElementTree.fromstring(self.read(f'share/metainfo/{ID}.metainfo.xml')).iter('image')]
        self.assertTrue(images)
        for image in images:
            self.assertTrue((project / re.sub('^https://[^/]+/', '', image)).is_file(), image)

    def test_polkit_action_names_the_installed_helper(self):
        action = ElementTree.fromstring(self.read(f'share/polkit-1/actions/{ID}.policy')).find('action')
        helper = {note.get('key'): note.text for note in action.iter('annotate')}['org.freedesktop.policykit.exec.path']
        self.assertTrue(os.access(self.folder.name + helper, os.X_OK), helper)

    def test_icons_are_drawings_that_need_nothing_else(self):
        for icon in self.root.glob('share/icons/hicolor/*/apps/*.svg'):
            root = ElementTree.parse(icon).getroot()
            self.assertEqual(root.tag, '{http://www.w3.org/2000/svg}svg')
            self.assertFalse([node for node in root.iter() if node.tag.endswith('}image')])

    def test_pages_of_the_help_stand_for_themselves(self):
        folder = self.root / 'share/kestrune/help'
        for path in folder.iterdir():
            text = path.read_text(encoding='utf-8')
            page = Page(text)
            self.assertEqual(page.open, [], path)
            self.assertEqual(page.loaded, [], path)
            self.assertEqual(len(page.links), 3, path)
            self.assertNotRegex(text, '@[a-z_A-Z]+@|url\\(|@import')
            for link in page.links:
                self.assertTrue((folder / link).exists(), link)

    def test_what_is_new_tells_of_this_version(self):
        self.assertIn(f'<h2>{VERSION}', self.read('share/kestrune/help/whats-new.html'))

    def test_program_finds_the_same_pages_where_it_was_built(self):
        for page in ('help', 'updates', 'whats-new'):
            name = f'share/kestrune/help/{page}.html'
            self.assertEqual((Path(BUILD) / name).read_text(encoding='utf-8'), self.read(name))

    def test_manual_page_and_changelog_are_compressed_texts_of_this_version(self):
        manual = gzip.decompress((self.root / 'share/man/man1/kestrune.1.gz').read_bytes()).decode()
        self.assertIn(f'"Kestrune {VERSION}"', manual)
        self.assertIn('\n.SH NAME\nkestrune \\- ', manual)
        changelog = gzip.decompress((self.root / 'share/doc/kestrune/changelog.Debian.gz').read_bytes()).decode()
        self.assertTrue(changelog.startswith(f'kestrune ({VERSION}-1) '), changelog[:60])


if __name__ == '__main__':
    unittest.main(argv=sys.argv[:1])
