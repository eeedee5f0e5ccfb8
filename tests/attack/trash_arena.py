"""A home folder to attack, one move by the driver, and the look at what it left."""

import os
import re
import shutil
import subprocess
import sys
import time
import urllib.parse

RECORD = re.compile(rb"\[Trash Info\]\nPath=([^\n]+)\nDeletionDate=\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\n")
LEFT_IN_TRASH = "This item is in the Trash"
INSIDE = "--inside-namespace"


class Violation(Exception):
    """The move broke a promise."""


class Outcome:
    def __init__(self, process):
        self.killed = process.returncode < 0 or process.returncode > 128
        self.text = os.fsdecode(process.stdout).strip()
        self.ok = self.text.startswith("ok ")
        self.code = int(self.text.split()[1]) if self.text.startswith("failed ") else None
        self.location = self.text[3:] if self.ok else None
        if not self.killed and not self.ok and self.code is None:
            raise Violation(f"the driver ended with {process.returncode}: {self.text} {os.fsdecode(process.stderr)}")


class Arena:
    """An item at HOME/cache/npm; the same inode is looked for afterwards, so that nothing else passes for it."""

    def __init__(self, driver, home, relative="cache/npm"):
        self.driver = driver
        self.home = home
        self.relative = relative
        self.item = os.path.join(home, relative)
        self.trash = os.path.join(home, ".local/share/Trash")
        self.inode = None

    def build(self, *, collide=False):
        shutil.rmtree(self.home, ignore_errors=True)
        self.make_item()
        if collide:
            os.makedirs(os.path.join(self.trash, "files/npm"), 0o700)
            os.makedirs(os.path.join(self.trash, "info"), 0o700)

    def make_item(self):
        os.makedirs(self.item)
        with open(os.path.join(self.item, "content"), "w", encoding="ascii") as content:
            content.write("item")
        self.inode = os.lstat(self.item).st_ino

    def move(self, *, prefix=(), **options):
        environment = {key: value for key, value in os.environ.items() if key != "XDG_DATA_HOME"}
        process = subprocess.run([*prefix, self.driver, self.home, self.relative], env=environment, timeout=20,
                                 stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                 check=False, **options)
        return Outcome(process)

    def in_place(self):
        return os.path.lexists(self.item) and os.lstat(self.item).st_ino == self.inode

    def check(self, outcome, *, trash=None, recorded=None, stray_record_allowed=False):
        """Raises Violation unless the item is in one place, whole, and the outcome says which."""
        trash = trash or self.trash
        recorded = recorded or self.item
        files, info = os.path.join(trash, "files"), os.path.join(trash, "info")
        records = {name for name in listed(info) if name.endswith(".trashinfo")}
        for name in records:
            whole_record(os.path.join(info, name), recorded)
        trashed = [name for name in listed(files) if os.lstat(os.path.join(files, name)).st_ino == self.inode]
        if self.in_place() == bool(trashed):
            raise Violation(f"in place: {self.in_place()}, in the Trash: {trashed}")
        here = trashed[0] if trashed else None
        if here and here + ".trashinfo" not in records:
            raise Violation("in the Trash without a record")
        content = os.path.join(files, here) if here else self.item
        with open(os.path.join(content, "content"), encoding="ascii") as file:
            if file.read() != "item":
                raise Violation("the content changed")
        if outcome.killed:
            return
        if outcome.ok and (not here or outcome.location != os.path.join(files, here)):
            raise Violation(f"reported at {outcome.location}, lies at {here}")
        if not outcome.ok and here and LEFT_IN_TRASH not in outcome.text:
            raise Violation("a failure that does not say the item is in the Trash: " + outcome.text)
        if not outcome.ok and not here and LEFT_IN_TRASH in outcome.text:
            raise Violation("a failure that says the item is in the Trash, and it is in place")
        if not outcome.ok and not here and records and not stray_record_allowed:
            raise Violation(f"a failed move left {records}")
        if outcome.code == 4 and not re.search(r"\. [A-Z][^.]*\.( |$)", outcome.text):
            raise Violation("no next step in: " + outcome.text)


def listed(folder):
    return os.listdir(folder) if os.path.isdir(folder) else []


def whole_record(path, recorded):
    with open(path, "rb") as file:
        text = file.read()
    match = RECORD.fullmatch(text)
    if not match or os.fsdecode(urllib.parse.unquote_to_bytes(match[1])) != recorded:
        raise Violation(f"a record that is not whole or not of {recorded}: {text!r}")


def run(*command):
    subprocess.run(command, check=True)


def mount_memory(folder, options="mode=755"):
    os.makedirs(folder, exist_ok=True)
    run("mount", "-t", "tmpfs", "-o", options, "tmpfs", folder)


def expect(condition, what):
    if not condition:
        raise Violation(what)


def unmount_all(folder):
    """Takes away what is mounted at folder and below it."""
    with open("/proc/self/mountinfo", encoding="utf-8") as mounts:
        points = [line.split()[4] for line in mounts]
    for point in reversed(points):
        if point == folder or point.startswith(folder + "/"):
            run("umount", point)


def begun_renames(trace):
    with open(trace, encoding="utf-8", errors="replace") as calls:
        return calls.read().count("renameat2(")


def paused(command, trace, *meanwhile):
    """Runs a driver that stops before each of its renames, for as many steps as given; what it reported."""
    with open(trace, "wb"):
        pass
    pause = ("-e", "trace=renameat2", "-e", "inject=renameat2:delay_enter=700000")
    with subprocess.Popen(("strace", "-o", trace, *pause, *command), stdout=subprocess.PIPE) as move:
        for number, step in enumerate(meanwhile, 1):
            while begun_renames(trace) < number and move.poll() is None:
                time.sleep(0.01)
            step()
        return os.fsdecode(move.communicate(timeout=20)[0]).strip()


def run_cases(suite, helpers):
    """Runs every method of suite that is no helper as one case; the exit status."""
    names = [name for name, case in vars(type(suite)).items()
             if callable(case) and not name.startswith("_") and not isinstance(case, staticmethod) and name not in helpers]
    wrong = 0
    for name in names:
        try:
            getattr(suite, name)()
            print(f"{name}: as promised", flush=True)
        except Violation as violation:
            wrong += 1
            print(f"WRONG ({name}): {violation}", flush=True)
    suite.clear()
    print(f"cases: {len(names)}, wrong: {wrong}")
    return 1 if wrong or not names else 0


def in_namespace_of_its_own(script, run_suite):
    """The main program SCRIPT DRIVER WORKFOLDER: starts itself again where nobody else sees its mounts."""
    driver, work = os.path.abspath(sys.argv[1]), os.path.abspath(sys.argv[2])
    os.makedirs(work, exist_ok=True)
    if INSIDE in sys.argv:
        sys.exit(run_suite(driver, work))
    namespace = ("unshare", "-m", "--propagation", "private")
    try:
        subprocess.run((*namespace, "true"), check=True, stderr=subprocess.PIPE)
    except (OSError, subprocess.CalledProcessError) as error:
        sys.exit(f"no mount namespace permitted here, so nothing could be tested: {error}")
    sys.exit(subprocess.run((*namespace, sys.executable, script, driver, work, INSIDE), check=False).returncode)
