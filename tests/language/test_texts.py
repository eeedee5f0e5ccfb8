"""Every text of the sources is in the template, and every catalogue translates all of them, marks included."""

import os
import pathlib
import re
import subprocess
import tempfile
import unittest

TEXTS = pathlib.Path(os.environ["KESTRUNE_TEXTS"])


def run(*command):
    return subprocess.run([str(part) for part in command], capture_output=True, text=True, check=False)


def entries(catalogue):
    """The blocks of a catalogue without its header, each text on one line."""
    plain = run("msgcat", "--no-wrap", "--no-location", catalogue).stdout
    return plain.split("\n\n")[1:]


def texts(entry, name):
    return re.findall(rf'^{name}(?:\[\d\])? "(.*)"$', entry, re.MULTILINE)


def marks(text):
    return sorted(set(re.findall(r"%[1-9]", text)))


class Texts(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.collected = pathlib.Path(self.folder.name) / "collected.pot"
        self.assertEqual(run(TEXTS / "collect", self.collected).returncode, 0)

    def tearDown(self):
        self.folder.cleanup()

    def test_the_template_holds_every_text_of_the_sources(self):
        kept = {tuple(texts(entry, "msgid")) for entry in entries(TEXTS / "kestrune.pot")}
        found = {tuple(texts(entry, "msgid")) for entry in entries(self.collected)}
        self.assertGreater(len(found), 300)
        self.assertEqual(found - kept, set(), "new texts: run po/refresh and translate them")
        self.assertEqual(kept - found, set(), "texts that are gone: run po/refresh")

    def test_every_catalogue_is_complete(self):
        catalogues = sorted(TEXTS.glob("*.po"))
        self.assertIn(TEXTS / "de.po", catalogues)
        for catalogue in catalogues:
            with self.subTest(catalogue=catalogue.name):
                compared = run("msgcmp", catalogue, self.collected)
                self.assertEqual(compared.returncode, 0, compared.stderr)
                checked = run("msgfmt", "--check", "--statistics", "--output-file=/dev/null", catalogue)
                self.assertEqual(checked.returncode, 0, checked.stderr)
                self.assertNotIn("fuzzy", checked.stderr)
                self.assertNotIn("untranslated", checked.stderr)

    def test_translations_have_the_marks_of_their_texts(self):
        for catalogue in TEXTS.glob("*.po"):
            for entry in entries(catalogue):
                wanted = marks("".join(texts(entry, "msgid") + texts(entry, "msgid_plural")))
                for translation in texts(entry, "msgstr"):
                    with self.subTest(catalogue=catalogue.name, translation=translation):
                        self.assertEqual(marks(translation), wanted)

    def test_translations_keep_line_ends_and_ellipses_apart_from_dots(self):
        for catalogue in TEXTS.glob("*.po"):
            for entry in entries(catalogue):
                for translation in texts(entry, "msgstr"):
                    self.assertNotIn("...", translation)
                    self.assertEqual(translation, translation.strip())

    def test_a_missing_translation_is_noticed(self):
        cut = pathlib.Path(self.folder.name) / "cut.po"
        kept = [entry for entry in (TEXTS / "de.po").read_text().split("\n\n") if 'msgid "Quit Kestrune"' not in entry]
        cut.write_text("\n\n".join(kept) + "\n")
        self.assertNotEqual(run("msgcmp", cut, self.collected).returncode, 0)


if __name__ == "__main__":
    unittest.main()
