"""What the gate says when its packages cannot be had, and what the check of the declarations must find."""
import os
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

HERE = Path(__file__).parent
SKIPPED = 77

# What the scripts call of any system; nothing else is to be found while they run here.
BASICS = ('basename', 'bash', 'cat', 'chmod', 'cp', 'dirname', 'find', 'flock', 'ln', 'mkdir', 'mv', 'nproc', 'readlink', 'rm',
          'sed', 'sha256sum', 'tail', 'tee', 'touch', 'tr', 'uname')
TOOLS = ('clang++-22', 'clang-tidy-22', 'ld64.lld-22', 'llvm-ar-22', 'llvm-ranlib-22', 'llvm-nm-22')


class GateWithoutPackages(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        self.programs = self.folder / 'bin'
        self.work = self.folder / 'work'
        self.programs.mkdir()
        self.place('project')
        for name in BASICS:
            self.programs.joinpath(name).symlink_to(shutil.which(name))

    def place(self, project):
        """Wherever this project lies, the gate's own scripts are started from a folder of this name."""
        self.scripts = self.folder / project / 'tests' / 'macos-gate'
        self.scripts.mkdir(parents=True)
        for name in ('gate.sh', 'prepare.sh'):
            shutil.copy(HERE / name, self.scripts)

    def program(self, name, script=''):
        path = self.programs / name
        path.write_text(f'#!{shutil.which("bash")}\n{script}\n')
        path.chmod(0o755)

    def gate(self):
        done = subprocess.run([self.scripts / 'gate.sh', self.work], capture_output=True, text=True,
                              env={'PATH': str(self.programs), 'HOME': os.environ.get('HOME', '/')})
        return done.returncode, done.stdout

    def tools(self):
        for name in TOOLS:
            self.program(name)

    def test_without_the_compiler_it_is_skipped_and_says_so(self):
        self.assertEqual((SKIPPED, 'SKIPPED: MACOS GATE: CLANG++-22 IS NOT INSTALLED\n'), self.gate())
        self.assertEqual('SKIPPED: MACOS GATE: CLANG++-22 IS NOT INSTALLED\n', (self.work / 'skipped').read_text())

    def test_below_a_name_with_a_space_it_is_skipped(self):
        self.place('my project')
        self.assertEqual((SKIPPED, 'SKIPPED: MACOS GATE: THE PATH OF THE PROJECT HAS A SPACE IN IT\n'), self.gate())

    def test_without_npm_it_is_skipped(self):
        self.tools()
        self.assertEqual((SKIPPED, 'SKIPPED: MACOS GATE: NPM IS NOT INSTALLED\n'), self.gate())

    def test_when_the_package_cannot_be_fetched_it_is_skipped(self):
        self.tools()
        self.program('npm', 'exit 1')
        code, said = self.gate()
        self.assertEqual(SKIPPED, code)
        self.assertRegex(said, '^SKIPPED: MACOS GATE: NPM CANNOT FETCH ')

    def test_a_wrong_checksum_is_a_failure(self):
        self.tools()
        self.program('npm', 'echo other >archive.tgz; echo archive.tgz')
        code, said = self.gate()
        self.assertEqual(1, code)
        self.assertRegex(said, 'has the wrong checksum')
        self.assertFalse((self.work / 'darwin').exists())


class Declarations(unittest.TestCase):
    def check(self, text):
        with tempfile.TemporaryDirectory() as folder:
            Path(folder, 'Class.h').write_text(text)
            done = subprocess.run([sys.executable, '-B', HERE / 'declarations.py', folder], capture_output=True, text=True)
        return done.returncode, done.stdout.splitlines()

    def counted(self, seen, elsewhere, unseen):
        return (f'{seen} declarations carry their page, {elsewhere} somebody else\'s, '
                f'{unseen} are marked "(page not seen)", 0 say nothing')

    def test_a_declaration_with_its_page_passes(self):
        code, said = self.check('#pragma once\n// example.org/documentation/class\n@interface Class : NSObject\n'
                                '// example.org/documentation/class/name (page not seen)\n@property NSString* name;\n@end\n')
        self.assertEqual((0, [self.counted(1, 0, 1)]), (code, said))

    def test_a_page_that_only_somebody_else_has_is_counted_apart(self):
        code, said = self.check('// example.org/documentation/one (page not seen; example.net/binding/one)\nlong one(void);\n'
                                '// example.org/documentation/two\n//   (page not seen; example.net/binding/two)\nlong two(void);\n'
                                '// example.org/documentation/three\nlong three(void);\n')
        self.assertEqual((0, [self.counted(1, 2, 0)]), (code, said))

    def test_a_method_below_another_ones_page_is_named(self):
        code, said = self.check('// example.org/documentation/class\n@interface Class\n'
                                '// example.org/documentation/class/one\n- (void)one;\n- (void)two:(int)a\n        three:(int)b;\n@end\n')
        self.assertEqual(1, code)
        self.assertRegex(said[0], r':5: no documentation page: - \(void\)two:\(int\)a three:\(int\)b;')

    def test_a_page_covers_the_cases_of_an_enumeration_and_no_more(self):
        code, said = self.check('// example.org/documentation/kind\ntypedef NS_ENUM(long, Kind) {\n    One,\n    Two,\n};\n'
                                'extern long kindOf(void);\n')
        self.assertEqual(1, code)
        self.assertEqual(1, sum('no documentation page' in line for line in said))

    def test_macros_and_forward_declarations_need_none(self):
        code, said = self.check('#define A(b) \\\n    b;\n@class Other;\n// function(3)\nint function(void);\n')
        self.assertEqual((0, [self.counted(1, 0, 0)]), (code, said))

    def test_an_empty_folder_does_not_pass(self):
        self.assertEqual(1, self.check('#pragma once\n')[0])


if __name__ == '__main__':
    unittest.main()
