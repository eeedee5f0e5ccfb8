"""What stands in the bundle's Info.plist, its entitlements, its translated texts and the Homebrew cask."""
import hashlib
import os
import plistlib
import re
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[3]
FOLDER = PROJECT / 'packaging/macos'
VERSION = re.search(r'project\(kestrune VERSION ([\d.]+)', (PROJECT / 'CMakeLists.txt').read_text())[1]
OLDEST = re.search(r'CMAKE_OSX_DEPLOYMENT_TARGET ([\d.]+)', (PROJECT / 'CMakeLists.txt').read_text())[1]
ID = 'com.torvandelsyn.kestrune'

CONFIGURE = '''
set(PROJECT_SOURCE_DIR "{project}")
set(PROJECT_VERSION "{version}")
set(CMAKE_OSX_DEPLOYMENT_TARGET "{oldest}")
set(KESTRUNE_FEED_URL "{feed}")
set(KESTRUNE_FEED_KEY "{key}")
include("{project}/packaging/macos/InfoPlist.cmake")
kestrune_info_plist("{output}")
'''


def cmake(*arguments):
    return subprocess.run([os.environ['CMAKE'], *map(str, arguments)], text=True, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT)


class InFolder(unittest.TestCase):
    def setUp(self):
        place = tempfile.TemporaryDirectory()
        self.addCleanup(place.cleanup)
        self.folder = Path(place.name)

    def info(self, feed='', key='', version=VERSION):
        output, script = self.folder / 'Info.plist', self.folder / 'configure.cmake'
        script.write_text(CONFIGURE.format(project=PROJECT, version=version, oldest=OLDEST, feed=feed, key=key,
                                           output=output))
        result = cmake('-P', script)
        self.assertEqual(result.returncode, 0, result.stdout)
        return plistlib.loads(output.read_bytes())


class InfoPlist(InFolder):
    def test_it_is_kestrune_in_the_menu_bar_of_a_mac_that_is_new_enough(self):
        info = self.info()
        self.assertEqual(info['CFBundleIdentifier'], ID)
        self.assertEqual(info['CFBundleName'], 'Kestrune')
        self.assertEqual(info['CFBundleDisplayName'], 'Kestrune')
        self.assertEqual(info['CFBundlePackageType'], 'APPL')
        self.assertEqual(info['LSMinimumSystemVersion'], '13.0')
        self.assertEqual(info['LSApplicationCategoryType'], 'public.app-category.developer-tools')
        self.assertIs(info['LSUIElement'], True)
        self.assertIs(info['NSHighResolutionCapable'], True)
        self.assertIn('The Kestrune authors', info['NSHumanReadableCopyright'])

    def test_both_versions_are_the_projects(self):
        for version in (VERSION, '3.4.5'):
            info = self.info(version=version)
            self.assertEqual((info['CFBundleShortVersionString'], info['CFBundleVersion']), (version, version))

    def test_a_second_user_of_the_mac_may_start_it_too(self):
        self.assertNotIn('LSMultipleInstancesProhibited', self.info())

    def test_languages_are_those_of_the_catalogues(self):
        info = self.info()
        self.assertEqual(info['CFBundleDevelopmentRegion'], 'en')
        self.assertEqual(info['CFBundleLocalizations'], ['en', *sorted(p.stem for p in PROJECT.glob('po/*.po'))])

    def test_without_a_feed_the_updater_is_told_nothing(self):
        self.assertEqual([key for key in self.info() if key.startswith('SU')], [])
        self.assertEqual([key for key in self.info(key='c2VjcmV0') if key.startswith('SU')], [])

    def test_with_a_feed_the_updater_knows_feed_and_key_and_looks_by_itself(self):
        info = self.info('https://kestrune.example/appcast.xml?a=1&b=<2>', 'pfIShU4dEXqPd5ObYNfDBiQWcXozk7estwzTnF9BamQ=')
        self.assertEqual(info['SUFeedURL'], 'https://kestrune.example/appcast.xml?a=1&b=<2>')
        self.assertEqual(info['SUPublicEDKey'], 'pfIShU4dEXqPd5ObYNfDBiQWcXozk7estwzTnF9BamQ=')
        self.assertIs(info['SUEnableAutomaticChecks'], True)

    def test_every_question_of_the_system_has_a_reason_in_every_language(self):
        asked = {key: text for key, text in self.info().items() if key.endswith('UsageDescription')}
        self.assertIn('Finder', asked['NSAppleEventsUsageDescription'])
        for place in ('DesktopFolder', 'DocumentsFolder', 'DownloadsFolder', 'RemovableVolumes', 'NetworkVolumes',
                      'FileProviderDomain', 'AppData'):
            self.assertTrue(asked[f'NS{place}UsageDescription'])
        for language in PROJECT.glob('po/*.po'):
            lines = (FOLDER / f'{language.stem}.lproj/InfoPlist.strings').read_text(encoding='utf-8').splitlines()
            texts = dict(re.fullmatch(r'"(\w+)" = "([^"]+)";', line).groups() for line in lines[1:])
            self.assertEqual(set(texts), set(asked), language)
            self.assertFalse(set(texts.values()) & set(asked.values()), language)


class Entitlements(unittest.TestCase):
    def test_it_may_ask_to_send_apple_events_and_nothing_else(self):
        with open(FOLDER / 'Kestrune.entitlements', 'rb') as file:
            self.assertEqual(plistlib.load(file), {'com.apple.security.automation.apple-events': True})


class Cask(InFolder):
    def rendered(self, *settings):
        image, output = self.folder / 'Kestrune-3.4.5.dmg', self.folder / 'kestrune.rb'
        image.write_bytes(b'an image')
        result = cmake(f'-DIMAGE={image}', f'-DOUTPUT={output}', '-DHOMEPAGE=https://kestrune.example', *settings, '-P',
                       FOLDER / 'cask.cmake')
        self.assertEqual(result.returncode, 0, result.stdout)
        return output.read_text()

    def stanza(self, text, name):
        return re.search(rf'^  {name} (.*?)$(?=\n\n|\n  \w|\nend)', text, re.M | re.S)[1]

    def test_it_names_the_image_by_version_and_checksum(self):
        text = self.rendered()
        self.assertEqual(self.stanza(text, 'version'), '"3.4.5"')
        self.assertEqual(self.stanza(text, 'sha256'), f'"{hashlib.sha256(b"an image").hexdigest()}"')
        self.assertEqual(self.stanza(text, 'url'), '"https://kestrune.example/downloads/Kestrune-#{version}.dmg"')
        self.assertNotRegex(text, r'@\w+@')

    def test_zapping_takes_settings_and_the_launch_agent_and_nothing_of_the_users(self):
        zapped = re.findall(r'"(~[^"]+)"', self.stanza(self.rendered(), 'zap'))
        self.assertEqual(zapped, [f'~/Library/LaunchAgents/{ID}.plist', f'~/Library/Preferences/{ID}.plist'])

    def test_updates_are_left_to_the_program_where_it_has_a_feed(self):
        self.assertNotRegex(self.rendered(), 'auto_updates|livecheck')
        text = self.rendered('-DFEED=https://kestrune.example/appcast.xml')
        self.assertIn('auto_updates true', text)
        self.assertIn('url "https://kestrune.example/appcast.xml"\n    strategy :sparkle', text)

    def test_it_is_ruby(self):
        for text in (self.rendered(), self.rendered('-DFEED=https://kestrune.example/appcast.xml')):
            if shutil.which('ruby'):
                subprocess.run(['ruby', '-c'], input=text, text=True, check=True, stdout=subprocess.DEVNULL)
            # By its shape alone, where there is no Ruby: every block is closed, and so is every bracket and quote.
            lines = text.splitlines()
            self.assertEqual(lines[0], 'cask "kestrune" do')
            self.assertEqual(lines[-1], 'end')
            self.assertEqual(sum(line.endswith(' do') for line in lines), sum(line.strip() == 'end' for line in lines))
            self.assertEqual(text.count('['), text.count(']'))
            for line in lines:
                self.assertEqual(line.count('"') % 2, 0, line)

    def test_an_image_without_a_version_in_its_name_is_refused(self):
        image = self.folder / 'Kestrune.dmg'
        image.write_bytes(b'an image')
        result = cmake(f'-DIMAGE={image}', f'-DOUTPUT={self.folder}/kestrune.rb', '-DHOMEPAGE=https://kestrune.example',
                       '-P', FOLDER / 'cask.cmake')
        self.assertNotEqual(result.returncode, 0)
        self.assertIn('is not named', result.stdout)


if __name__ == '__main__':
    unittest.main()
