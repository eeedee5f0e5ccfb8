#!/usr/bin/python3
"""Moves back from the Trash on nested, full and read-only disks, and while something changes half way.

put_back_disks.py DRIVER WORKFOLDER: needs root; starts itself again in a mount namespace of its own, so that no mount is
seen by anybody else. Prints a line a case; exit status 0 when nothing went wrong.
"""

import os

from put_back_arena import FAILURES, HALF_WAY, PutBackArena
from trash_arena import (expect, in_namespace_of_its_own, listed, mount_memory, paused, run, run_cases,
                         unmount_all)


def exchange_for_folder(path, away):
    os.rename(path, away)
    os.mkdir(path)


class Disks:
    """Every method is one case, on a home folder that is a disk of its own."""

    def __init__(self, driver, work):
        self.driver = driver
        self.work = work
        self.disk = os.path.join(work, "disk")
        self.home = os.path.join(self.disk, "home")
        self.away = os.path.join(self.disk, "away")

    def clear(self):
        unmount_all(self.disk)

    def fresh(self):
        self.clear()
        mount_memory(self.disk)
        arena = PutBackArena(self.driver, self.home)
        arena.build()
        return arena

    def refused(self, arena, failure, words=""):
        outcome = arena.put_back()
        expect(outcome.code is not None and FAILURES[outcome.code] == failure,
               f"expected {failure}, got: {outcome.text}")
        expect(words in outcome.text, f"expected \"{words}\" in: {outcome.text}")
        arena.check(outcome)
        expect(arena.is_at(arena.location), "the item left the Trash")

    def paused(self, arena, *meanwhile):
        """What a move reported that stopped before each of its renames."""
        return paused(arena.command, os.path.join(self.work, "trace"), *meanwhile)

    def exchange_record(self, arena):
        os.rename(arena.record, self.away)
        with open(arena.record, "w", encoding="ascii") as record:
            record.write("another")

    def expect_failed(self, report, failure):
        expect(report.startswith("failed ") and FAILURES[int(report.split()[1])] == failure, f"reported {report}")

    def top_trash(self):
        """An item in the Trash of another disk that is mounted in the home folder."""
        self.clear()
        mount_memory(self.disk)
        top = os.path.join(self.home, "cache")
        mount_memory(top)
        arena = PutBackArena(self.driver, self.home, os.path.join(top, f".Trash-{os.geteuid()}"))
        arena.recorded = "npm"
        for folder in ("files", "info"):
            os.makedirs(os.path.join(arena.trash, folder), 0o700)
        os.chmod(arena.trash, 0o700)
        os.mkdir(arena.location)
        arena.inode = os.lstat(arena.location).st_ino
        with open(os.path.join(arena.location, "content"), "w", encoding="ascii") as content:
            content.write("item")
        return arena

    def record_in_top_trash(self, arena, path):
        arena.recorded = path
        with open(arena.record, "w", encoding="ascii") as record:
            record.write(f"[Trash Info]\nPath={path}\nDeletionDate=2026-01-01T00:00:00\n")

    def the_trash_of_another_disk(self):
        arena = self.top_trash()
        self.record_in_top_trash(arena, "npm")
        outcome = arena.put_back()
        expect(outcome.ok, outcome.text)
        arena.check(outcome)
        expect(not listed(os.path.dirname(arena.record)), "the record stayed")

    def records_of_another_disk_that_lead_out_of_it(self):
        arena = self.top_trash()
        for path in ("../npm", "a/../../npm", "/etc/npm", arena.item, ".", "", "cache//npm"):
            with open(arena.record, "w", encoding="ascii") as record:
                record.write(f"[Trash Info]\nPath={path}\n")
            outcome = arena.put_back()
            expect(outcome.code is not None and FAILURES[outcome.code] == "no record", f"{path}: {outcome.text}")
            expect(arena.is_at(arena.location), "the item left the Trash")

    def another_disk_whose_trash_the_group_may_write(self):
        arena = self.top_trash()
        self.record_in_top_trash(arena, "npm")
        os.chmod(arena.trash, 0o770)
        self.refused(arena, "system", "isn't a folder of yours alone")

    def a_shared_trash_of_another_disk(self):
        arena = self.top_trash()
        self.record_in_top_trash(arena, "npm")
        shared = os.path.join(self.home, "cache/.Trash")
        os.mkdir(shared)
        os.rename(arena.trash, os.path.join(shared, str(os.geteuid())))
        arena = self.moved_trash(arena, os.path.join(shared, str(os.geteuid())))
        os.chmod(shared, 0o777)
        self.refused(arena, "changed")
        os.chmod(shared, 0o1777)
        outcome = arena.put_back()
        expect(outcome.ok, outcome.text)
        arena.check(outcome)

    def moved_trash(self, arena, trash):
        moved = PutBackArena(arena.driver, arena.home, trash)
        moved.inode, moved.recorded = arena.inode, arena.recorded
        return moved

    def a_disk_that_took_the_place_of_the_folder(self):
        arena = self.fresh()
        mount_memory(os.path.join(self.home, "cache"))
        self.refused(arena, "other disk")

    def a_mount_inside_the_item(self):
        arena = self.fresh()
        mount_memory(os.path.join(arena.location, "deep/inside"))
        self.refused(arena, "changed")

    def an_item_that_is_a_mount(self):
        arena = self.fresh()
        mount_memory(arena.location)
        outcome = arena.put_back()
        expect(outcome.code is not None and FAILURES[outcome.code] == "changed", outcome.text)
        expect(not os.path.lexists(arena.item), "a mount moved")

    def a_read_only_disk(self):
        arena = self.fresh()
        run("mount", "-o", "remount,ro", self.disk)
        self.refused(arena, "system", "read-only")

    def a_full_disk(self):
        arena = self.fresh()
        run("mount", "-o", "remount,size=64k", self.disk)
        with open(os.path.join(self.disk, "filler"), "wb", buffering=0) as filler:
            try:
                while True:
                    filler.write(b"x" * 4096)
            except OSError:
                pass
        outcome = arena.put_back()
        arena.check(outcome)
        expect(outcome.ok, outcome.text)

    def a_mount_that_appears_during_the_move(self):
        arena = self.fresh()
        inside = os.path.join(arena.location, "deep")
        os.mkdir(inside)
        report = self.paused(arena, lambda: mount_memory(inside))
        self.expect_failed(report, "changed")
        expect(arena.is_at(arena.location) and os.path.ismount(inside), "the item left the Trash")
        expect(os.path.exists(arena.record), "the record is gone")

    def something_that_takes_the_place_during_the_move(self):
        arena = self.fresh()
        for take in (os.mkdir, lambda path: os.symlink("/does/not/exist", path), lambda path: os.mkfifo(path, 0o600)):
            arena.build()
            report = self.paused(arena, lambda taken=take: taken(arena.item))
            self.expect_failed(report, "in the way")
            expect(arena.is_at(arena.location) and os.path.lexists(arena.item), "what took the place was replaced")
            expect(os.path.exists(arena.record), "the record is gone")

    def a_folder_that_is_exchanged_for_a_link_during_the_move(self):
        arena = self.fresh()
        victim = os.path.join(self.disk, "victim")
        os.mkdir(victim)

        def exchange():
            os.rename(os.path.dirname(arena.item), self.away)
            os.symlink(victim, os.path.dirname(arena.item))

        report = self.paused(arena, exchange)
        self.expect_failed(report, "no folder")
        expect(arena.is_at(arena.location), "the item left the Trash")
        expect(not listed(victim) and not listed(self.away), "something arrived elsewhere")

    def a_folder_that_is_removed_during_the_move(self):
        arena = self.fresh()
        report = self.paused(arena, lambda: os.rmdir(os.path.dirname(arena.item)))
        self.expect_failed(report, "no folder")
        expect(arena.is_at(arena.location) and os.path.exists(arena.record), "the item left the Trash")

    def an_item_that_leaves_during_the_move(self):
        arena = self.fresh()
        report = self.paused(arena, lambda: os.rename(arena.location, self.away))
        self.expect_failed(report, "missing")
        expect(arena.is_at(self.away) and os.path.exists(arena.record), "something else moved")

    def an_item_that_is_exchanged_in_the_trash_during_the_move(self):
        arena = self.fresh()
        beside = os.path.join(arena.trash, "files/beside")

        report = self.paused(arena, lambda: exchange_for_folder(arena.location, beside))
        self.expect_failed(report, "changed")
        expect(arena.is_at(beside) and not os.listdir(arena.location), "another item left the Trash")
        expect(not os.path.lexists(arena.item) and os.path.exists(arena.record), "another item moved")

    def an_item_that_is_exchanged_for_something_elsewhere_during_the_move(self):
        arena = self.fresh()

        report = self.paused(arena, lambda: exchange_for_folder(arena.location, self.away))
        self.expect_failed(report, "changed")
        expect(arena.is_at(self.away) and not os.listdir(arena.location), "another item left the Trash")
        expect(not os.path.lexists(arena.item) and os.path.exists(arena.record), "another item moved")

    def an_item_that_is_exchanged_after_it_arrived(self):
        arena = self.fresh()
        mount = os.path.join(arena.location, "deep")
        os.mkdir(mount)

        # The mount makes the move be undone; the second pause is before that.
        report = self.paused(arena, lambda: mount_memory(mount), lambda: exchange_for_folder(arena.item, self.away))
        expect(HALF_WAY in report, f"reported {report}")
        expect(arena.is_at(self.away), "the item moved once more")
        expect(os.path.isdir(arena.item) and not os.listdir(arena.item), "something that never was there is in the Trash")
        expect(not os.path.lexists(arena.location), "something is in the Trash")

    def a_record_that_is_exchanged_during_the_move(self):
        arena = self.fresh()

        report = self.paused(arena, lambda: self.exchange_record(arena))
        expect(report == "ok " + arena.item, f"reported {report}")
        with open(arena.record, encoding="ascii") as record:
            expect(record.read() == "another", "another record was taken away")

    def a_record_that_is_exchanged_while_it_is_taken_away(self):
        arena = self.fresh()

        report = self.paused(arena, lambda: None, lambda: self.exchange_record(arena))
        expect(report == "ok " + arena.item, f"reported {report}")
        expect(listed(os.path.dirname(arena.record)) == ["npm.trashinfo"], "another record lost its name")
        with open(arena.record, encoding="ascii") as record:
            expect(record.read() == "another", "another record was taken away")


in_namespace_of_its_own(__file__, lambda driver, work: run_cases(
    Disks(driver, work),
    ("clear", "fresh", "refused", "paused", "exchange_record", "expect_failed", "top_trash", "record_in_top_trash",
     "moved_trash")))
