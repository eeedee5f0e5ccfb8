"""The program speaks the language that the environment asks for, where it has a catalogue, and else English."""

import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

PROGRAM = pathlib.Path(os.environ["KESTRUNE"])
LOCALE = pathlib.Path(os.environ["KESTRUNE_LOCALE"])

ENGLISH = "Quit Kestrune"
GERMAN = "Kestrune beenden"


def menu(program=PROGRAM, **language):
    kept = {name: value for name, value in os.environ.items() if name != "LANGUAGE" and name[:3] not in ("LC_", "LAN")}
    done = subprocess.run([program, "--dump-menu"], env=kept | language, capture_output=True, text=True, check=True)
    return done.stdout


class Program(unittest.TestCase):
    def assert_german(self, text):
        self.assertIn(GERMAN, text)
        self.assertNotIn(ENGLISH, text)

    def test_without_a_language_it_is_english(self):
        self.assertIn(ENGLISH, menu())
        self.assertEqual(menu(), menu(LANG="C.UTF-8"))
        self.assertEqual(menu(), menu(LANG="en_US.UTF-8"))

    def test_a_wanted_language_is_spoken(self):
        self.assert_german(menu(LANGUAGE="de", LANG="C.UTF-8"))
        self.assert_german(menu(LANGUAGE="de"))

    def test_a_locale_that_is_not_generated_here_is_spoken_all_the_same(self):
        self.assert_german(menu(LANG="de_DE.UTF-8"))
        self.assert_german(menu(LC_ALL="de_AT.UTF-8"))
        self.assert_german(menu(LC_MESSAGES="de_CH.UTF-8", LANG="C.UTF-8"))

    def test_the_locale_c_is_english(self):
        self.assertEqual(menu(), menu(LANGUAGE="de", LC_ALL="C"))

    def test_a_language_without_catalogue_is_english(self):
        self.assertEqual(menu(), menu(LANGUAGE="tlh", LANG="C.UTF-8"))

    def test_a_language_never_leads_to_a_catalogue_elsewhere(self):
        with tempfile.TemporaryDirectory() as place:
            catalogue = pathlib.Path(place) / "LC_MESSAGES/kestrune.mo"
            catalogue.parent.mkdir()
            content = (LOCALE / "de/LC_MESSAGES/kestrune.mo").read_bytes()
            catalogue.write_bytes(content.replace(GERMAN.encode(), GERMAN.upper().encode()))
            elsewhere = "../" * 32 + place.lstrip("/")
            self.assert_german(menu(LANGUAGE=f"{elsewhere}:de", LANG="C.UTF-8"))

    def test_the_menu_has_the_same_shape_in_every_language(self):
        def shape(text):
            return [line == "---" for line in text.splitlines()]

        self.assertEqual(shape(menu()), shape(menu(LANGUAGE="de")))

    def test_a_program_that_was_moved_brings_its_catalogues(self):
        with tempfile.TemporaryDirectory() as place:
            moved = pathlib.Path(place) / "anywhere"
            (moved / "bin").mkdir(parents=True)
            shutil.copy2(PROGRAM, moved / "bin" / "kestrune")
            self.assertIn(ENGLISH, menu(moved / "bin" / "kestrune", LANGUAGE="de"))
            shutil.copytree(LOCALE, moved / "share" / "locale")
            self.assert_german(menu(moved / "bin" / "kestrune", LANGUAGE="de"))

    def test_a_damaged_catalogue_leaves_it_english(self):
        with tempfile.TemporaryDirectory() as place:
            moved = pathlib.Path(place)
            (moved / "bin").mkdir()
            shutil.copy2(PROGRAM, moved / "bin" / "kestrune")
            catalogue = moved / "share/locale/de/LC_MESSAGES/kestrune.mo"
            catalogue.parent.mkdir(parents=True)
            for damaged in (b"", b"\xde\x12\x04\x95", bytes(4096)):
                catalogue.write_bytes(damaged)
                self.assertIn(ENGLISH, menu(moved / "bin" / "kestrune", LANGUAGE="de"))


if __name__ == "__main__":
    unittest.main()
