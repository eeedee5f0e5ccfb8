"""The checker itself: what it must find in a planted tree, and what it must leave alone."""
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

import architecture

CHECKER = Path(architecture.__file__)

SOUND = {
    'base/Text.h': '#pragma once\n#include <string>\n',
    'platform/Clock.h': '#pragma once\n#include "base/Text.h"\n',
    'platform/AlertPresenter.h': '#pragma once\n',
    'platform/linux/LinuxClock.cpp': '#include <QFile>\n#include <sys/stat.h>\n#include "platform/Clock.h"\n'
                                     '#ifdef __linux__\n#endif\n',
    'engine/Engine.h': '#pragma once\n#include "platform/Clock.h"\n',
    'engine/TelemetryRecords.h': '#pragma once\n',
    'storage/CleanTarget.h': '#pragma once\n#include <cstdint>\n',
    'explorer/DiskExplorerResult.h': '#pragma once\n',
    'workspace/Store.h': '#pragma once\n#include <nlohmann/json.hpp>\n#include "engine/Engine.h"\n',
    'ui/Window.cpp': '#include <QWidget>\n#include "storage/CleanTarget.h"\n#include "workspace/Store.h"\n'
                     '#include "Window.moc"\n',
    'app/main.cpp': '#include <unistd.h>\n#include "platform/Clock.h"\n',
    'platform/linux/LinuxClock.h': '#pragma once\n',
}


class Checker(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.project = Path(self.folder.name)
        for name, text in SOUND.items():
            self.plant(name, text)

    def plant(self, name, text, top='src'):
        path = self.project / top / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding='utf-8')

    def assert_reported(self, name, text, sentence):
        self.plant(name, text)
        found = architecture.offences(self.project)
        self.assertEqual([line for line in found if sentence in line and f'src/{name}:' in line], found)
        self.assertEqual(len(found), 1)

    def test_a_sound_tree_has_no_offence(self):
        self.assertEqual(architecture.offences(self.project), [])

    def test_base_may_not_include_a_contract(self):
        self.assert_reported('base/Bad.cpp', '#include "platform/Clock.h"\n', 'base may not include platform')

    def test_storage_and_engine_do_not_know_each_other(self):
        self.assert_reported('storage/Bad.cpp', '#include "engine/Engine.h"\n', 'storage may not include engine')

    def test_a_contract_may_not_include_its_implementation(self):
        self.assert_reported('platform/Bad.cpp', '#include "platform/linux/LinuxClock.h"\n',
                             'platform may not include platform/linux')

    def test_the_application_knows_no_system(self):
        self.assert_reported('app/Bad.cpp', '#include "platform/linux/LinuxClock.h"\n',
                             'app may not include platform/linux')

    def test_systems_do_not_know_each_other_in_objective_c_either(self):
        self.assert_reported('platform/macos/Bad.mm', '#import "platform/linux/LinuxClock.h"\n',
                             'platform/macos may not include platform/linux')

    def test_the_core_may_not_use_qt(self):
        self.assert_reported('workspace/Bad.cpp', '#include <QString>\n', 'workspace may not use Qt')

    def test_the_core_may_not_use_system_headers(self):
        self.assert_reported('engine/Bad.cpp', '  #  include <sys/stat.h>\n', 'engine may not use <sys/stat.h>')

    def test_only_the_store_reads_json(self):
        self.assert_reported('storage/Bad.cpp', '#include <nlohmann/json.hpp>\n', 'storage may not use <nlohmann/')

    def test_a_view_may_not_reach_past_the_store(self):
        self.assert_reported('ui/Bad.cpp', '#include "engine/Engine.h"\n', 'ui may not include engine')

    def test_a_view_may_not_use_system_headers(self):
        self.assert_reported('ui/Bad.cpp', '#include <fcntl.h>\n', 'ui may not use <fcntl.h>')

    def test_only_main_may_use_system_headers_in_app(self):
        self.assert_reported('app/Bad.cpp', '#include <unistd.h>\n', 'app may not use <unistd.h>')

    def test_system_macros_belong_to_the_platform_folders(self):
        self.assert_reported('engine/Bad.cpp', '#if defined(__APPLE__)\n#endif\n', '__APPLE__ outside platform/<os>')

    def test_a_macro_in_a_comment_is_no_offence(self):
        self.plant('engine/Good.cpp', '// as on __APPLE__\n')
        self.assertEqual(architecture.offences(self.project), [])

    def test_includes_are_written_from_src_on(self):
        self.assert_reported('engine/Bad.cpp', '#include "Engine.h"\n', 'write the path from src/ on')

    def test_a_folder_outside_of_the_table_is_reported(self):
        self.assert_reported('extras/Bad.cpp', '\n', 'lies in no folder of the dependency table')

    def test_a_header_without_its_guard_is_reported(self):
        self.assert_reported('base/Bad.h', '#include <string>\n', 'no "#pragma once"')

    def test_a_file_may_have_500_lines_and_not_one_more(self):
        self.plant('base/Long.cpp', '\n' * 500)
        self.assertEqual(architecture.offences(self.project), [])
        self.assert_reported('base/Long.cpp', '\n' * 501, '501 lines')

    def test_tests_are_held_to_the_limit_too(self):
        self.plant('base/LongTest.cpp', '\n' * 501, top='tests')
        self.assertEqual(architecture.offences(self.project),
                         ['tests/base/LongTest.cpp:501: 501 lines; the limit is 500'])

    def test_the_command_fails_on_an_offence_and_on_an_empty_tree(self):
        def status(project):
            return subprocess.run([sys.executable, CHECKER, project], capture_output=True, check=False).returncode
        self.assertEqual(status(self.project), 0)
        self.plant('base/Bad.cpp', '#include <QString>\n')
        self.assertEqual(status(self.project), 1)
        with tempfile.TemporaryDirectory() as empty:
            self.assertEqual(status(empty), 1)


if __name__ == '__main__':
    unittest.main()
