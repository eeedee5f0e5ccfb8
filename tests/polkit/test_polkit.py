"""Cached memory is cleared with administrator rights exactly when the user grants them, on a real polkit.

test_polkit.py DRIVER HELPER POLICY PLACE   (as root)
DRIVER clears memory as the program does, HELPER and POLICY are what gets installed, PLACE is where HELPER belongs.
With --inside CASE it is the part that runs in the namespace, and prints what happened as JSON.
"""
import json
import os
import pathlib
import pwd
import subprocess
import sys
import threading
import unittest

HERE = pathlib.Path(__file__).resolve().parent
ACTION = 'com.torvandelsyn.kestrune.clear-cache'
GENERIC = 'org.freedesktop.policykit.exec'
CLEARED = 'Inactive memory cleared!'
DECLINED = "Couldn't purge memory · admin privileges were declined"
STAND_IN = pathlib.Path('/run/machine/drop_caches')


def as_user(command):
    user = pwd.getpwnam('polkit-tester')
    return ['setpriv', '--reuid', str(user.pw_uid), '--regid', str(user.pw_gid), '--clear-groups', '--', *command]


def purge(answer, driver, run_as):
    """Runs the driver with an agent that gives this answer, or with none."""
    from agent import Agent, GLib
    user = pwd.getpwnam('polkit-tester')
    environment = {'PATH': '/usr/bin:/bin', 'HOME': user.pw_dir, 'LANG': 'C.UTF-8'}
    app = subprocess.Popen(run_as([driver]), env=environment, text=True, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                           stderr=subprocess.STDOUT)
    agent = None
    if answer != 'none':
        agent = Agent(answer)
        agent.serve(app.pid, user.pw_uid)
    loop = GLib.MainLoop()
    said = []

    def wait():
        said.append(app.communicate('go\n')[0])
        GLib.idle_add(loop.quit)

    threading.Thread(target=wait, daemon=True).start()
    GLib.timeout_add_seconds(40, loop.quit)
    loop.run()
    return {'said': said[0].strip() if said else 'nothing within 40 s', 'asked': agent.asked if agent else [],
            'written': STAND_IN.read_text(encoding='ascii')}


def inside(case, driver):
    if case == 'root':
        return purge('none', driver, list)
    if case == 'writable':
        pathlib.Path(os.environ['KESTRUNE_HELPER_PLACE']).parent.chmod(0o777)
        return purge('accept', driver, as_user)
    if case == 'policy':
        listed = subprocess.run(['pkaction', '--verbose', '--action-id', ACTION], text=True, capture_output=True,
                                check=False)
        return {'status': listed.returncode, 'said': listed.stdout}
    if case in ('argument', 'user'):
        helper = [os.environ['KESTRUNE_HELPER_PLACE']]
        run = subprocess.run([*helper, '1'] if case == 'argument' else as_user(helper), text=True, capture_output=True,
                             check=False)
        return {'status': run.returncode, 'said': run.stderr, 'written': STAND_IN.read_text(encoding='ascii')}
    return purge(case, driver, as_user)


class Purge(unittest.TestCase):
    def case(self, name, installed=True):
        environment = {**os.environ, 'KESTRUNE_HELPER_PLACE': PLACE, 'LC_ALL': 'C.UTF-8'}
        run = subprocess.run([HERE / 'namespace.sh', HELPER if installed else 'none', POLICY, '/usr/bin/python3', '-B',
                              __file__, '--inside', name, DRIVER], env=environment, text=True, capture_output=True,
                             timeout=60, check=False)
        self.assertEqual(run.returncode, 0, run.stderr)
        return json.loads(run.stdout)

    def assert_declined(self, happened):
        self.assertEqual(happened['said'], DECLINED)
        self.assertEqual(happened['written'], '')

    def assert_asked_for_the_systems_tool(self, happened):
        [[action, message]] = happened['asked']
        self.assertEqual(action, GENERIC)
        self.assertIn('/usr/sbin/sysctl', message)

    def test_granted_rights_clear_the_memory_through_the_helper(self):
        happened = self.case('accept')
        self.assertEqual(happened['said'], CLEARED)
        self.assertEqual(happened['written'], '3\n')
        self.assertEqual(happened['asked'], [[ACTION, 'Authentication is required to clear cached memory']])

    def test_a_dialog_that_is_closed_clears_nothing(self):
        happened = self.case('cancel')
        self.assert_declined(happened)
        self.assertEqual(len(happened['asked']), 1)

    def test_a_wrong_password_clears_nothing(self):
        happened = self.case('fail')
        self.assert_declined(happened)
        self.assertGreaterEqual(len(happened['asked']), 1)

    def test_without_an_agent_nothing_is_asked_and_nothing_cleared(self):
        self.assert_declined(self.case('none'))

    def test_without_the_helper_the_systems_tool_is_what_rights_are_asked_for(self):
        happened = self.case('accept', installed=False)
        self.assertEqual(happened['said'], CLEARED)
        self.assertEqual(happened['written'], '3\n')
        self.assert_asked_for_the_systems_tool(happened)

    def test_a_helper_in_a_folder_that_others_may_write_is_not_run(self):
        happened = self.case('writable')
        self.assertEqual(happened['said'], CLEARED)
        self.assert_asked_for_the_systems_tool(happened)

    def test_without_the_helper_refused_rights_clear_nothing(self):
        self.assert_declined(self.case('cancel', installed=False))
        self.assert_declined(self.case('none', installed=False))

    def test_root_is_never_asked(self):
        happened = self.case('root')
        self.assertEqual(happened['said'], CLEARED)
        self.assertEqual(happened['written'], '3\n')
        self.assertEqual(happened['asked'], [])

    def test_the_helper_refuses_arguments(self):
        happened = self.case('argument')
        self.assertEqual(happened['status'], 2)
        self.assertEqual(happened['said'], 'kestrune-clear-cache takes no arguments.\n')
        self.assertEqual(happened['written'], '')

    def test_the_helper_gives_an_ordinary_user_nothing(self):
        happened = self.case('user')
        self.assertEqual(happened['status'], 1)
        self.assertEqual(happened['said'], 'Cached memory could not be cleared: Permission denied\n')
        self.assertEqual(happened['written'], '')

    def test_polkit_knows_the_action_and_asks_for_a_password_every_time(self):
        happened = self.case('policy')
        self.assertEqual(happened['status'], 0)
        fields = dict(line.strip().split(':', 1) for line in happened['said'].splitlines() if ':' in line)
        for kind in ('implicit any', 'implicit inactive', 'implicit active'):
            self.assertEqual(fields[kind].strip(), 'auth_admin')
        self.assertIn(f'org.freedesktop.policykit.exec.path -> {PLACE}', happened['said'])


if __name__ == '__main__':
    if sys.argv[1] == '--inside':
        print(json.dumps(inside(*sys.argv[2:])))
    else:
        DRIVER, HELPER, POLICY, PLACE = sys.argv[1:]
        unittest.main(argv=sys.argv[:1], verbosity=2)
