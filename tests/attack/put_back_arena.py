"""An item in the Trash, one move back by the driver, and the look at what it left."""

import os
import shutil
import subprocess

from trash_arena import Outcome, Violation, listed, whole_record

HALF_WAY = "This move couldn't be confirmed or undone."
FAILURES = ("missing", "no record", "in the way", "no folder", "changed", "other disk", "system")


class PutBackArena:
    """An item at TRASH/files/npm that came from HOME/cache/npm; the same inode is looked for afterwards."""

    def __init__(self, driver, home, trash=None):
        self.driver = driver
        self.home = home
        self.item = os.path.join(home, "cache/npm")
        self.trash = trash or os.path.join(home, ".local/share/Trash")
        self.location = os.path.join(self.trash, "files/npm")
        self.record = os.path.join(self.trash, "info/npm.trashinfo")
        self.recorded = self.item
        self.inode = None

    def build(self):
        shutil.rmtree(self.home, ignore_errors=True)
        self.make_item()

    def make_item(self):
        os.makedirs(os.path.dirname(self.item))
        for folder in ("files", "info"):
            os.makedirs(os.path.join(self.trash, folder), 0o700)
        os.mkdir(self.location)
        with open(os.path.join(self.location, "content"), "w", encoding="ascii") as content:
            content.write("item")
        with open(self.record, "w", encoding="ascii") as record:
            record.write(f"[Trash Info]\nPath={self.recorded}\nDeletionDate=2026-01-01T00:00:00\n")
        self.inode = os.lstat(self.location).st_ino

    @property
    def command(self):
        return self.driver, self.home, self.location

    def put_back(self, *, prefix=()):
        environment = {key: value for key, value in os.environ.items() if key != "XDG_DATA_HOME"}
        process = subprocess.run([*prefix, *self.command], env=environment, timeout=20, stdin=subprocess.DEVNULL,
                                 stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=False)
        return Outcome(process)

    def is_at(self, path):
        return os.path.lexists(path) and os.lstat(path).st_ino == self.inode

    def check(self, outcome):
        """Raises Violation unless the item is in one place, whole, and the outcome says which."""
        back = self.is_at(self.item)
        if back == self.is_at(self.location):
            raise Violation(f"back: {back}, and in the Trash: {not back}")
        with open(os.path.join(self.item if back else self.location, "content"), encoding="ascii") as content:
            if content.read() != "item":
                raise Violation("the content changed")
        if not back:
            whole_record(self.record, self.recorded)
        elif os.path.exists(self.record):
            whole_record(self.record, self.recorded)
        if outcome.killed:
            return
        if any(name.startswith(".kestrune") for name in listed(os.path.dirname(self.record))) and not outcome.ok:
            raise Violation("a failed move left a temporary name")
        if outcome.ok != back and HALF_WAY not in outcome.text:
            raise Violation(f"reported {outcome.text}, and the item is {'back' if back else 'in the Trash'}")
        if outcome.ok and outcome.location != self.item:
            raise Violation(f"reported at {outcome.location}")
