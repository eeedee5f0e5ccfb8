"""The scripts for macOS, run with stand-ins for the tools of a Mac: what they ask Homebrew for and what they start.

That the tools themselves do what their manuals say only a Mac shows. So does bash 3.2; what it lacks is looked for here.
"""
import os
import re
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[3]
SCRIPTS = PROJECT / 'packaging/macos'
BUILD = ['ccache', 'cmake', 'gettext', 'ninja', 'nlohmann-json', 'qt']
TEST = ['googletest', 'python3']

# Each stand-in notes its name and arguments, one line a call, and then does the little that the scripts rely on.
NOTE = '#!/bin/bash\n{ printf "%s" "${0##*/}"; printf " <%s>" "$@"; echo; } >>"$STAND_IN_LOG"\n'
STAND_INS = {
    'uname': 'echo Darwin',
    'sysctl': 'echo 8',
    'nproc': 'exit 97',
    'xcode-select': 'exit ${STAND_IN_COMPILER:-0}',
    'brew': '''case $1 in
  --prefix) echo "$STAND_IN_PREFIX${2:+/opt/$2}" ;;
  list) [[ " $STAND_IN_MISSING " != *" ${!#} "* ]] ;;
  install) exit ${STAND_IN_INSTALL:-0} ;;
esac''',
    'cmake': '''case $1 in
  --build)
    mkdir -p "$STAND_IN_APP/Contents/MacOS"
    printf '#!/bin/bash\\necho "menu for $*"\\n' >"$STAND_IN_APP/Contents/MacOS/Kestrune"
    chmod +x "$STAND_IN_APP/Contents/MacOS/Kestrune" ;;
  --install) mkdir -p "$4/Kestrune.app/Contents" ;;
  -S)
    mkdir -p "$4"
    printf 'Qt6_DIR:PATH=%s/lib/cmake/Qt6\\n' "$STAND_IN_QT" >"$4/CMakeCache.txt" ;;
esac''',
    'ctest': 'echo "100% tests passed"; exit ${STAND_IN_CTEST:-0}',
    'cpack': 'touch Kestrune-2.1.0.dmg',
    'codesign': ':',
    'xcrun': ':',
    'open': ':',
    'macdeployqt': ':',
}


class OnAMac(unittest.TestCase):
    def setUp(self):
        place = tempfile.TemporaryDirectory()
        self.addCleanup(place.cleanup)
        self.root = Path(place.name).resolve() / 'a project'
        (self.root / 'packaging').mkdir(parents=True)
        shutil.copytree(SCRIPTS, self.root / 'packaging/macos')
        for script in ('run', 'check'):
            shutil.copy(PROJECT / script, self.root)
        self.tools = self.root.parent / 'tools'
        self.tools.mkdir()
        self.app = self.root / 'build/release/bin/Kestrune.app'
        prefix = self.root.parent / 'brew'
        qt = self.root.parent / 'another Qt'  # what the build was told to take instead of Homebrew's
        (qt / 'bin').mkdir(parents=True)
        (qt / 'lib/cmake/Qt6').mkdir(parents=True)
        for name, body in STAND_INS.items():
            tool = (qt / 'bin' if name == 'macdeployqt' else self.tools) / name
            tool.write_text(NOTE + body + '\n')
            tool.chmod(0o755)
        self.log = self.root.parent / 'log'
        self.settings = {'PATH': f'{self.tools}:/usr/bin:/bin', 'STAND_IN_LOG': str(self.log), 'STAND_IN_MISSING': '',
                         'STAND_IN_APP': str(self.app), 'STAND_IN_PREFIX': str(prefix), 'STAND_IN_QT': str(qt)}
        self.prefixes = f'-DCMAKE_PREFIX_PATH={prefix};{prefix}/opt/qt;{prefix}/opt/gettext'

    def start(self, *command, **settings):
        self.log.write_text('')
        return subprocess.run([str(self.root / command[0]), *command[1:]], text=True, capture_output=True,
                              stdin=subprocess.DEVNULL, env=self.settings | settings)

    def calls(self, *names):
        """The calls of the tools with these names, as lists of words."""
        lines = [(line.split(' ', 1)[0], re.findall(r'<([^>]*)>', line)) for line in self.log.read_text().splitlines()]
        return [[name, *words] for name, words in lines if name in names]

    def installed(self):
        return [call[2:] for call in self.calls('brew') if call[1] == 'install']


class Run(OnAMac):
    def test_nothing_is_installed_where_everything_is_there(self):
        result = self.start('run')
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual([call[-1] for call in self.calls('brew') if call[1] == 'list'], BUILD)
        self.assertEqual(self.installed(), [])

    def test_what_is_missing_is_installed_at_once(self):
        self.start('run', STAND_IN_MISSING='qt ninja')
        self.assertEqual(self.installed(), [['--quiet', 'ninja', 'qt']])

    def test_the_program_is_built_signed_and_opened_with_its_arguments(self):
        result = self.start('run', '--one', 'two words')
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual(self.calls('cmake', 'codesign', 'open'), [
            ['cmake', '--preset', 'release', '-DKESTRUNE_TESTS=OFF', self.prefixes, '--log-level=NOTICE'],
            ['cmake', '--build', '--preset', 'release', '--target', 'kestrune', '-j8'],
            ['codesign', '--force', '--sign', '-', '--entitlements',
             f'{self.root}/packaging/macos/Kestrune.entitlements', str(self.app)],
            ['codesign', '--verify', '--strict', '--deep', str(self.app)],
            ['open', '-W', str(self.app), '--args', '--one', 'two words'],
        ])

    def test_the_menu_is_printed_by_the_program_itself(self):
        result = self.start('run', '--dump-menu')
        self.assertEqual((result.returncode, result.stdout), (0, 'menu for --dump-menu\n'))
        self.assertEqual(self.calls('open'), [])

    def test_tests_stay_part_of_a_build_that_has_them(self):
        (self.root / 'build/release').mkdir(parents=True)
        (self.root / 'build/release/CMakeCache.txt').write_text('KESTRUNE_TESTS:BOOL=ON\n')
        self.start('run')
        self.assertIn('-DKESTRUNE_TESTS=ON', self.calls('cmake')[0])

    def test_without_a_compiler_it_says_how_to_get_one(self):
        result = self.start('run', STAND_IN_COMPILER='2')
        self.assertEqual(result.returncode, 1)
        self.assertIn('xcode-select --install', result.stderr)
        self.assertEqual(self.calls('brew', 'cmake'), [])

    def test_without_homebrew_it_says_what_is_needed(self):
        (self.tools / 'brew').unlink()
        result = self.start('run')
        self.assertEqual(result.returncode, 1)
        self.assertRegex(result.stderr, 'There is no Homebrew here.*equivalents of these packages: .*cmake')

    def test_a_package_that_cannot_be_installed_ends_it(self):
        result = self.start('run', STAND_IN_MISSING='qt', STAND_IN_INSTALL='1')
        self.assertEqual(result.returncode, 1)
        self.assertIn('could not install these packages: qt', result.stderr)
        self.assertEqual(self.calls('cmake'), [])


class Check(OnAMac):
    def test_everything_is_built_and_every_test_run(self):
        result = self.start('check')
        self.assertEqual((result.returncode, result.stdout), (0, '100% tests passed\n'), result.stderr)
        self.assertEqual([call[-1] for call in self.calls('brew') if call[1] == 'list'], BUILD + TEST)
        self.assertEqual(self.calls('cmake', 'ctest'), [
            ['cmake', '--preset', 'release', '-DKESTRUNE_TESTS=ON', self.prefixes],
            ['cmake', '--build', '--preset', 'release', '-j8'],
            ['ctest', '--preset', 'release', '--no-tests=error', '--timeout', '120', '-j8'],
        ])

    def test_its_result_is_that_of_the_tests(self):
        self.assertEqual(self.start('check', STAND_IN_CTEST='8').returncode, 8)

    def test_the_deep_stages_are_refused(self):
        result = self.start('check', '--deep')
        self.assertEqual(result.returncode, 2)
        self.assertIn('--deep belongs to Linux', result.stderr)
        self.assertEqual(self.calls('cmake'), [])


class Sign(OnAMac):
    def setUp(self):
        super().setUp()
        self.bundle = self.root / 'Kestrune.app'
        framework = self.bundle / 'Contents/Frameworks/Sparkle.framework'
        for folder in ('Versions/B/XPCServices/Installer.xpc', 'Versions/B/XPCServices/Downloader.xpc',
                       'Versions/B/Updater.app/Contents'):
            (framework / folder).mkdir(parents=True)
        (framework / 'Versions/B/Autoupdate').touch()
        os.symlink('B', framework / 'Versions/Current')
        os.symlink('Versions/Current/Updater.app', framework / 'Updater.app')
        (self.bundle / 'Contents/PlugIns/platforms').mkdir(parents=True)
        (self.bundle / 'Contents/PlugIns/platforms/libqcocoa.dylib').touch()
        (self.bundle / 'Contents/Frameworks/libintl.8.dylib').touch()

    def signed(self, *identity):
        result = self.start('packaging/macos/sign.sh', str(self.bundle), *identity)
        self.assertEqual(result.returncode, 0, result.stderr)
        return [call for call in self.calls('codesign') if '--sign' in call]

    def test_each_piece_is_signed_once_and_before_what_holds_it(self):
        pieces = [Path(call[-1]) for call in self.signed()]
        self.assertEqual(len(pieces), len(set(pieces)))
        self.assertEqual(pieces[-1], self.bundle)
        names = [piece.name for piece in pieces]
        self.assertEqual(sorted(names), ['Autoupdate', 'Downloader.xpc', 'Installer.xpc', 'Kestrune.app',
                                         'Sparkle.framework', 'Updater.app', 'libintl.8.dylib', 'libqcocoa.dylib'])
        for place, piece in enumerate(pieces):
            self.assertFalse([inner for inner in pieces[place + 1:] if piece in inner.parents], piece)

    def test_signing_never_goes_deep_by_itself(self):
        for call in self.signed('Developer ID Application: A B (C1)'):
            self.assertNotIn('--deep', call)

    def test_only_the_program_gets_its_entitlements_and_helpers_keep_theirs(self):
        *pieces, program = self.signed()
        self.assertIn('--entitlements', program)
        for call in pieces:
            self.assertIn('--preserve-metadata=entitlements', call)
            self.assertNotIn('--entitlements', call)

    def test_for_everybody_means_the_hardened_runtime_and_a_time_stamp(self):
        for call in self.signed('Developer ID Application: A B (C1)'):
            self.assertEqual(call[1:7], ['--force', '--sign', 'Developer ID Application: A B (C1)', '--options',
                                         'runtime', '--timestamp'])

    def test_for_this_mac_alone_means_neither(self):
        for call in self.signed():
            self.assertEqual(call[1:4], ['--force', '--sign', '-'])
            self.assertFalse({'--options', '--timestamp'} & set(call))

    def test_the_result_is_verified(self):
        self.signed()
        self.assertEqual(self.calls('codesign')[-1],
                         ['codesign', '--verify', '--strict', '--deep', str(self.bundle)])


class DiskImage(OnAMac):
    def made(self, *arguments):
        result = self.start('packaging/macos/dmg.sh', str(self.root / 'out'), *arguments)
        self.assertEqual(result.returncode, 0, result.stderr)
        return [' '.join(call[:2]) for call in self.calls('cmake', 'macdeployqt', 'codesign', 'cpack', 'xcrun')]

    def test_libraries_of_the_qt_built_with_go_in_before_the_signature_and_the_image_is_made_after_it(self):
        app = f'{self.root}/out/signed/Kestrune.app'
        self.assertEqual(self.made(), ['cmake -S', 'cmake --build', 'cmake -E', 'cmake --install',
                                       f'macdeployqt {app}', 'codesign --force', 'codesign --verify', 'cpack --config'])

    def test_a_published_image_is_signed_notarized_and_stapled(self):
        image = f'{self.root}/out/Kestrune-2.1.0.dmg'
        self.made('Developer ID Application: A B (C1)', 'kestrune-notary', '-DKESTRUNE_FEED_URL=https://a.example')
        self.assertEqual(self.calls('codesign', 'xcrun')[-3:], [
            ['codesign', '--force', '--sign', 'Developer ID Application: A B (C1)', '--timestamp', image],
            ['xcrun', 'notarytool', 'submit', image, '--keychain-profile', 'kestrune-notary', '--wait'],
            ['xcrun', 'stapler', 'staple', image],
        ])
        self.assertEqual(self.calls('cmake')[0][-1], '-DKESTRUNE_FEED_URL=https://a.example')


class Bash(unittest.TestCase):
    # Newer than 3.2, or broken there: maps, reading whole files, negative places, case conversion, both streams at once
    # in a pipe, names of variables in variables, and descriptors that bash picks.
    NEWER = re.compile(r'declare -A|local -A|local -n|\b(?:mapfile|readarray|coproc)\b|\$\{\w+(?:\^|,)|\|&|&>>'
                       r'|\[-\d+\]|\{\w+\}[<>]|\$\{\w+@|wait -n|printf -v \w+\[|;;&|EPOCHSECONDS|BASHPID|globstar')

    def scripts(self):
        return sorted(SCRIPTS.glob('*.sh'))

    def test_scripts_for_macos_are_shell_scripts(self):
        self.assertEqual(len(self.scripts()), 5)
        for script in (*self.scripts(), PROJECT / 'run', PROJECT / 'check'):
            subprocess.run(['bash', '-n', script], check=True)

    def test_scripts_for_macos_use_nothing_newer_than_bash_3_2(self):
        for script in self.scripts():
            code = re.sub(r'(?m)^\s*#.*$', '', script.read_text())
            self.assertIsNone(self.NEWER.search(code), script)

    def test_no_array_that_may_be_empty_is_expanded(self):
        for script in self.scripts():
            for name in re.findall(r'\$\{(\w+)\[@\]\}', script.read_text()):
                self.assertIn(name, ('build', 'test'), script)

    def test_nothing_is_asked_that_only_linux_answers(self):
        for script in self.scripts():
            code = re.sub(r'(?m)^\s*#.*$', '', script.read_text())
            self.assertNotRegex(code, r'\bnproc\b|apt-get|dpkg|\bsed -i\b|readlink|/proc/|^ *timeout ')

    def test_both_commands_hand_over_to_macos_before_anything_of_linux(self):
        for name in ('run', 'check'):
            lines = [line for line in (PROJECT / name).read_text().splitlines() if not line.startswith('#')]
            self.assertEqual(lines[:5], [
                'set -euo pipefail', '',
                'here=$(cd -- "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")" && pwd)',
                'if [[ $(uname -s) == Darwin ]]; then',
                f'  exec "$here/packaging/macos/{name}.sh" ${{1+"$@"}}'])


if __name__ == '__main__':
    unittest.main()
