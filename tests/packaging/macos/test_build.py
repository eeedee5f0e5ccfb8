"""The rules that CMake writes for macOS, with a compiler and packages that are only named: what would be compiled, how,
and what would lie in the bundle. Nothing is built."""
import json
import os
import plistlib
import re
import subprocess
import tempfile
import unittest
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[3]
HERE = Path(__file__).resolve().parent
SOURCES = PROJECT / 'src/platform/macos'


class Build:
    """The project configured for macOS in a folder of its own."""

    def __init__(self, folder, *settings):
        self.folder = folder
        intl, tools = folder / 'intl', folder / 'tools'
        intl.mkdir(parents=True)
        tools.mkdir()
        # CMake asks the Mac it runs on for its version before it knows of run paths.
        version = tools / 'sw_vers'
        version.write_text('#!/bin/sh\necho 14.5\n')
        version.chmod(0o755)
        self.result = subprocess.run(
            [os.environ['CMAKE'], '-S', PROJECT, '-B', folder / 'build', '-G', 'Ninja', '-Wno-dev',
             f'-DCMAKE_TOOLCHAIN_FILE={HERE}/cross/toolchain.cmake', '-DCMAKE_BUILD_TYPE=Release',
             '-DCMAKE_EXPORT_COMPILE_COMMANDS=ON', f'-DIntl_INCLUDE_DIR={intl}',
             '-DIntl_LIBRARY=/opt/homebrew/opt/gettext/lib/libintl.dylib', '-DCMAKE_HAVE_LIBC_PTHREAD=ON',
             '-DKESTRUNE_CCACHE=OFF', *settings],
            text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
            env=os.environ | {'PATH': f'{tools}:{os.environ["PATH"]}'})

    def read(self, name):
        return (self.folder / 'build' / name).read_text(encoding='utf-8')

    def commands(self):
        """The command that compiles each file, by the file's path in the project."""
        listed = json.loads(self.read('compile_commands.json'))
        return {os.path.relpath(entry['file'], PROJECT): entry['command'] for entry in listed}

    def rule(self, output):
        """What the build makes output from, with the settings of that step."""
        return re.search(rf'^build {re.escape(output)}: (.*(?:\n  .*)*)', self.read('build.ninja'), re.M)[1]


class Configured(unittest.TestCase):
    @classmethod
    def configured(cls, *settings):
        place = tempfile.TemporaryDirectory()
        cls.addClassCleanup(place.cleanup)
        build = Build(Path(place.name) / 'work', *settings)
        assert build.result.returncode == 0, build.result.stdout
        return build

    def linked(self):
        return self.build.rule('bin/Kestrune.app/Contents/MacOS/Kestrune')


class WithoutUpdater(Configured):
    @classmethod
    def setUpClass(cls):
        cls.build = cls.configured()

    def test_every_file_of_the_macos_folder_is_compiled_but_the_updater(self):
        compiled = {Path(name).name for name in self.build.commands() if name.startswith('src/platform/macos/')}
        expected = {path.name for path in SOURCES.iterdir() if path.suffix in ('.cpp', '.mm')}
        self.assertEqual(compiled, expected - {'MacUpdater.mm'})

    def test_nothing_of_linux_is_compiled_or_linked(self):
        self.assertEqual([name for name in self.build.commands() if 'linux' in name.lower()], [])
        self.assertNotRegex(self.build.read('build.ninja'), r'xcb|sodium|DBus|kestrune-fetch|clear-cache')

    def test_objective_c_is_counted_and_as_strict_as_the_rest(self):
        objective = {name: line for name, line in self.build.commands().items() if name.endswith('.mm')}
        self.assertTrue(objective)
        for name, line in objective.items():
            for flag in ('-x objective-c++', '-fobjc-arc', '-std=c++2', '-Werror', '-Wconversion',
                         '-mmacosx-version-min=13.0', '-Wunguarded-availability-new'):
                self.assertIn(flag, line, name)

    def test_plain_files_know_no_objective_c(self):
        for name, line in self.build.commands().items():
            if name.endswith('.cpp'):
                self.assertNotIn('-fobjc-arc', line, name)
                self.assertIn('-mmacosx-version-min=13.0', line, name)

    def test_what_a_newer_qt_calls_deprecated_is_no_error(self):
        for name, line in self.build.commands().items():
            if name.startswith(('src/ui/', 'src/app/', 'tests/ui/', 'packaging/')):
                self.assertIn('-DQT_DEPRECATED_WARNINGS_SINCE=0x060400', line, name)

    def test_the_program_is_linked_with_what_the_systems_linker_knows(self):
        rule = self.linked()
        for framework in ('AppKit', 'CoreFoundation', 'Foundation', 'IOKit', 'ServiceManagement', 'UserNotifications'):
            self.assertIn(f'-framework {framework}', rule)
        self.assertIn('-Wl,-dead_strip', rule)
        self.assertIn('libintl.dylib', rule)
        self.assertNotRegex(self.build.read('build.ninja'), 'gc-sections|as-needed|relro|Sparkle')

    def test_icon_catalogues_help_and_licence_lie_in_the_bundle(self):
        resources = 'bin/Kestrune.app/Contents/Resources'
        self.assertIn('packaging/macos/icon/Kestrune.icns', self.build.rule(f'{resources}/Kestrune.icns'))
        self.assertIn('LICENSE', self.build.rule(f'{resources}/LICENSE'))
        for language in PROJECT.glob('po/*.po'):
            place = f'locale/{language.stem}/LC_MESSAGES/kestrune.mo'
            self.assertIn(f'share/{place}', self.build.rule(f'{resources}/{place}'))
            place = f'{language.stem}.lproj/InfoPlist.strings'
            self.assertIn(f'packaging/macos/{place}', self.build.rule(f'{resources}/{place}'))
        for page in ('help', 'updates', 'whats-new'):
            self.assertIn(f'share/kestrune/help/{page}.html', self.build.rule(f'{resources}/help/{page}.html'))

    def test_the_bundle_is_described_by_the_projects_own_list(self):
        info = plistlib.loads((self.build.folder / 'build/bin/Kestrune.app/Contents/Info.plist').read_bytes())
        self.assertEqual(info['CFBundleIdentifier'], 'com.torvandelsyn.kestrune')
        self.assertEqual(info['LSMinimumSystemVersion'], '13.0')
        self.assertNotIn('SUFeedURL', info)

    def test_help_is_written_for_a_mac(self):
        for page in ('help', 'updates'):
            text = self.build.read(f'share/kestrune/help/{page}.html')
            self.assertNotRegex(text, r'\btray\b|\bapt\b|AppImage|~/\.config|@\w+@')

    def test_tests_of_the_core_and_of_the_system_are_built_and_those_of_linux_are_not(self):
        compiled = self.build.commands()
        folders = {name.split('/')[1] for name in compiled if name.startswith('tests/')}
        self.assertEqual(folders, {'base', 'engine', 'storage', 'update', 'explorer', 'workspace', 'ui', 'app', 'platform'})
        self.assertIn('tests/platform/system/ContractsTest.cpp', compiled)
        self.assertIn('tests/platform/ProcessTextTest.cpp', compiled)
        facts = {f'tests/platform/macos/facts/{path.name}' for path in PROJECT.glob('tests/platform/macos/facts/*.cpp')}
        self.assertLessEqual(facts, set(compiled))
        self.assertFalse([name for name in compiled if 'fake_darwin' in name])

    def test_the_disk_image_holds_what_was_signed_and_nothing_that_was_installed_anew(self):
        text = self.build.read('CPackConfig.cmake')
        setting = lambda name: re.search(rf'set\({name} "(.*)"\)', text)[1]
        self.assertEqual(setting('CPACK_GENERATOR'), 'DragNDrop')
        self.assertEqual(setting('CPACK_INSTALL_CMAKE_PROJECTS'), '')
        self.assertEqual(setting('CPACK_INSTALLED_DIRECTORIES'), f'{self.build.folder}/build/signed;.')
        self.assertEqual(setting('CPACK_STRIP_FILES'), 'OFF')
        self.assertRegex(setting('CPACK_PACKAGE_FILE_NAME'), r'^Kestrune-[\d.]+$')


class WithUpdater(Configured):
    @classmethod
    def setUpClass(cls):
        place = tempfile.TemporaryDirectory()
        cls.addClassCleanup(place.cleanup)
        cls.sparkle = Path(place.name)
        (cls.sparkle / 'Sparkle.framework').mkdir()
        cls.build = cls.configured(f'-DKESTRUNE_SPARKLE={cls.sparkle}', '-DKESTRUNE_FEED_URL=https://a.example/cast.xml',
                                   '-DKESTRUNE_FEED_KEY=a2V5')

    def test_the_updater_takes_the_place_of_its_absence(self):
        compiled = self.build.commands()
        self.assertIn('src/platform/macos/MacUpdater.mm', compiled)
        self.assertNotIn('src/platform/macos/MacWithoutUpdater.cpp', compiled)
        self.assertIn(f'-F{self.sparkle}', compiled['src/platform/macos/MacUpdater.mm'])

    def test_the_framework_is_linked_found_and_installed_into_the_bundle(self):
        self.assertIn('-framework Sparkle', self.linked())
        self.assertIn(f'-Wl,-rpath,{self.sparkle}', self.linked())
        installed = self.build.read('packaging/macos/cmake_install.cmake')
        self.assertRegex(installed, rf'Kestrune\.app/Contents/Frameworks".*"{self.sparkle}/Sparkle\.framework"')
        self.assertIn('@executable_path/../Frameworks', installed)

    def test_the_bundle_knows_feed_and_key(self):
        info = plistlib.loads((self.build.folder / 'build/bin/Kestrune.app/Contents/Info.plist').read_bytes())
        self.assertEqual((info['SUFeedURL'], info['SUPublicEDKey']), ('https://a.example/cast.xml', 'a2V5'))


class Refused(unittest.TestCase):
    def message(self, *settings):
        with tempfile.TemporaryDirectory() as place:
            build = Build(Path(place) / 'work', *settings)
            self.assertNotEqual(build.result.returncode, 0)
            return ' '.join(build.result.stdout.split())

    def test_a_feed_without_the_updater(self):
        self.assertIn('needs the updater', self.message('-DKESTRUNE_FEED_URL=https://a.example', '-DKESTRUNE_FEED_KEY=a2V5'))

    def test_a_feed_without_a_key(self):
        with tempfile.TemporaryDirectory() as sparkle:
            (Path(sparkle) / 'Sparkle.framework').mkdir()
            self.assertIn('needs the key', self.message(f'-DKESTRUNE_SPARKLE={sparkle}',
                                                        '-DKESTRUNE_FEED_URL=https://a.example'))

    def test_a_folder_without_the_framework(self):
        self.assertIn('There is no Sparkle.framework', self.message('-DKESTRUNE_SPARKLE=/usr'))

    def test_a_system_without_a_folder(self):
        with tempfile.TemporaryDirectory() as place:
            toolchain = Path(place) / 'toolchain.cmake'
            toolchain.write_text('set(CMAKE_SYSTEM_NAME Haiku)\nset(CMAKE_CXX_COMPILER_FORCED ON)\n')
            self.assertIn('No platform folder for Haiku yet', self.message(f'-DCMAKE_TOOLCHAIN_FILE={toolchain}'))


if __name__ == '__main__':
    unittest.main()
