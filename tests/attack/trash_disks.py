#!/usr/bin/python3
"""Moves to the Trash on small, full, read-only and nested disks, and without free descriptors.

trash_disks.py DRIVER WORKFOLDER: needs root; starts itself again in a mount namespace of its own, so that no mount is
seen by anybody else. Prints a line a case; exit status 0 when nothing went wrong.
"""

import errno
import os
import resource
import shutil
import stat
import subprocess
import sys

from trash_arena import (Arena, Violation, expect, in_namespace_of_its_own, listed, mount_memory, paused, run, run_cases,
                         unmount_all, whole_record)

ORDINARY_USER = 12345


def fill(folder):
    """Takes every byte that is left."""
    with open(os.path.join(folder, "filler"), "wb", buffering=0) as filler:
        for size in (4096, 1):
            try:
                while True:
                    filler.write(b"x" * size)
            except OSError as error:
                if error.errno != errno.ENOSPC:
                    raise


class Disks:
    """Every method is one case, on a home folder that is a disk of its own."""

    def __init__(self, driver, work):
        self.driver = driver
        self.work = work
        self.disk = os.path.join(work, "disk")
        self.home = os.path.join(self.disk, "home")

    def fresh(self, options="mode=755", relative="cache/npm"):
        self.clear()
        mount_memory(self.disk, options)
        arena = Arena(self.driver, self.home, relative)
        arena.build()
        return arena

    def clear(self):
        unmount_all(self.disk)

    def nested(self, relative="other/cache/npm"):
        """An item on another disk that is mounted in the home folder."""
        self.clear()
        mount_memory(self.disk)
        other = os.path.join(self.home, "other")
        mount_memory(other)
        arena = Arena(self.driver, self.home, relative)
        arena.make_item()
        return arena, other

    @staticmethod
    def refused(arena, code, words=""):
        outcome = arena.move()
        expect(outcome.code == code, f"expected failure {code}, got: {outcome.text}")
        expect(words in outcome.text, f"expected \"{words}\" in: {outcome.text}")
        expect(arena.in_place(), "the item left its place")
        return outcome

    @staticmethod
    def moved_to(arena, trash, recorded):
        outcome = arena.move()
        expect(outcome.ok, outcome.text)
        arena.check(outcome, trash=trash, recorded=recorded)

    def a_full_disk(self):
        arena = self.fresh("mode=755,size=256k")
        os.makedirs(os.path.join(arena.trash, "files"), 0o700)
        os.makedirs(os.path.join(arena.trash, "info"), 0o700)
        fill(self.disk)
        arena.check(self.refused(arena, 4, "No space left on device. Free some space, then try again."))
        os.remove(os.path.join(self.disk, "filler"))
        self.moved_to(arena, arena.trash, arena.item)

    def no_inodes(self):
        for free in range(0, 8):
            arena = self.fresh("mode=755,nr_inodes=40")
            fillers = []
            try:
                while True:
                    fillers.append(os.path.join(self.disk, f"filler{len(fillers)}"))
                    os.close(os.open(fillers[-1], os.O_CREAT | os.O_EXCL, 0o600))
            except OSError as error:
                expect(error.errno == errno.ENOSPC, str(error))
                fillers.pop()
            for filler in fillers[:free]:
                os.remove(filler)
            outcome = arena.move()
            arena.check(outcome)
            expect(outcome.ok == (free >= 6), f"{free} free inodes: {outcome.text}")

    def a_read_only_disk(self):
        arena = self.fresh()
        run("mount", "-o", "remount,ro", self.disk)
        arena.check(self.refused(arena, 4, "read-only"))

    def a_read_only_trash(self):
        arena = self.fresh()
        run("chown", "-R", str(ORDINARY_USER), self.home)
        for folder in ("files", "info"):
            os.makedirs(os.path.join(arena.trash, folder), 0o700)
        run("chown", "-R", str(ORDINARY_USER), self.home)
        for folder in ("files", "info"):
            closed = os.path.join(arena.trash, folder)
            os.chmod(closed, 0o500)
            outcome = arena.move(user=ORDINARY_USER, group=ORDINARY_USER, extra_groups=[])
            arena.check(outcome)
            expect(outcome.code == 4 and "Permission denied" in outcome.text, outcome.text)
            os.chmod(closed, 0o700)
        arena.check(arena.move(user=ORDINARY_USER, group=ORDINARY_USER, extra_groups=[]))
        expect(not arena.in_place(), "the item did not move")

    def a_folder_the_user_may_not_write(self):
        arena = self.fresh()
        run("chown", "-R", str(ORDINARY_USER), self.home)
        os.chmod(os.path.dirname(arena.item), 0o555)
        outcome = arena.move(user=ORDINARY_USER, group=ORDINARY_USER, extra_groups=[])
        arena.check(outcome)
        expect(outcome.code == 4 and "Permission denied" in outcome.text, outcome.text)

    def an_item_on_another_disk(self):
        arena, other = self.nested()
        self.moved_to(arena, os.path.join(other, ".Trash-0"), "cache/npm")
        expect(stat.S_IMODE(os.lstat(os.path.join(other, ".Trash-0")).st_mode) == 0o700, "not private")
        expect(not os.path.exists(arena.trash), "a second Trash was made")

    def a_shared_trash_on_another_disk(self):
        arena, other = self.nested()
        os.mkdir(os.path.join(other, ".Trash"))
        os.chmod(os.path.join(other, ".Trash"), 0o1777)
        self.moved_to(arena, os.path.join(other, ".Trash/0"), "cache/npm")

    def a_shared_trash_that_is_not_sticky_a_link_or_foreign(self):
        for kind in ("open", "link", "foreign", "file"):
            arena, other = self.nested()
            shared = os.path.join(other, ".Trash")
            os.mkdir(os.path.join(other, "real"))
            if kind == "link":
                os.chmod(os.path.join(other, "real"), 0o1777)
                os.symlink("real", shared)
            elif kind == "file":
                os.close(os.open(shared, os.O_CREAT, 0o600))
            else:
                os.mkdir(shared)
                os.chmod(shared, 0o777 if kind == "open" else 0o1777)
                os.chown(shared, 0 if kind == "open" else ORDINARY_USER, 0)
            self.moved_to(arena, os.path.join(other, ".Trash-0"), "cache/npm")
            expect(not listed(os.path.join(other, "real")), "the link was followed")

    def another_disks_trash_that_is_a_link_foreign_or_open(self):
        for kind in ("link", "foreign", "open", "file"):
            arena, other = self.nested()
            own = os.path.join(other, ".Trash-0")
            os.mkdir(os.path.join(other, "real"), 0o700)
            if kind == "link":
                os.symlink("real", own)
            elif kind == "file":
                os.close(os.open(own, os.O_CREAT, 0o600))
            else:
                os.mkdir(own, 0o700)
                os.chown(own, ORDINARY_USER if kind == "foreign" else 0, 0)
                os.chmod(own, 0o770 if kind == "open" else 0o700)
            self.refused(arena, 4, "isn't a folder of yours alone")
            expect(not listed(os.path.join(other, "real")), "the link was followed")

    def another_disk_where_the_user_may_make_no_trash(self):
        arena, other = self.nested()
        run("chown", "-R", str(ORDINARY_USER), os.path.join(other, "cache"), self.home)
        os.chown(other, 0, 0)
        outcome = arena.move(user=ORDINARY_USER, group=ORDINARY_USER, extra_groups=[])
        expect(outcome.code == 4 and "Permission denied" in outcome.text, outcome.text)
        expect(arena.in_place(), "the item left its place")

    def the_same_disk_mounted_twice(self):
        arena = self.fresh(relative="bound/npm")
        os.makedirs(os.path.join(self.disk, "source"))
        shutil.rmtree(arena.item)
        run("mount", "--bind", os.path.join(self.disk, "source"), os.path.dirname(arena.item))
        arena.make_item()
        self.moved_to(arena, os.path.join(self.home, "bound/.Trash-0"), "npm")

    def a_mount_inside_the_item(self):
        arena = self.fresh()
        mount_memory(os.path.join(arena.item, "deep/in it"))
        self.refused(arena, 1)
        run("umount", os.path.join(arena.item, "deep/in it"))
        self.moved_to(arena, arena.trash, arena.item)

    def a_mount_inside_the_item_through_another_mount(self):
        arena = self.fresh()
        alias = os.path.join(self.disk, "alias")
        os.mkdir(alias)
        run("mount", "--bind", self.home, alias)
        run("mount", "--make-private", alias)
        os.mkdir(os.path.join(arena.item, "deep"))
        mount_memory(os.path.join(alias, arena.relative, "deep"))
        self.refused(arena, 1)

    def an_item_that_is_a_mount(self):
        arena = self.fresh()
        mount_memory(arena.item)
        arena.inode = os.lstat(arena.item).st_ino
        self.refused(arena, 1)
        expect(not os.path.exists(arena.trash), "a Trash was made for nothing")

    def a_trash_whose_folders_are_other_disks(self):
        for folder in ("files", "info"):
            arena = self.fresh()
            mount_memory(os.path.join(arena.trash, folder), "mode=700")
            self.refused(arena, 4, "isn't a folder of yours alone")

    def a_home_on_layers(self):
        self.clear()
        mount_memory(self.disk)
        folders = {name: os.path.join(self.disk, name) for name in ("lower", "upper", "work", "merged")}
        os.makedirs(os.path.join(folders["lower"], "cache/npm"))
        for name in ("upper", "work", "merged"):
            os.mkdir(folders[name])
        with open(os.path.join(folders["lower"], "cache/npm/content"), "w", encoding="ascii") as content:
            content.write("item")
        run("mount", "-t", "overlay", "-o", ",".join(f"{name}dir={folders[name]}" for name in
                                                    ("lower", "upper", "work")), "overlay", folders["merged"])
        arena = Arena(self.driver, folders["merged"])
        arena.inode = os.lstat(arena.item).st_ino
        outcome = arena.move()
        expect(outcome.ok or "another disk" in outcome.text, outcome.text)
        arena.check(outcome)

    def no_free_descriptors(self):
        succeeded = 0
        for limit in range(4, 32):
            arena = self.fresh()
            outcome = arena.move(preexec_fn=lambda most=limit: resource.setrlimit(resource.RLIMIT_NOFILE, (most, most)))
            arena.check(outcome)
            expect(outcome.ok or "Too many open files" in outcome.text or outcome.code == 4, outcome.text)
            succeeded += 1 if outcome.ok else 0
        expect(0 < succeeded < 28, f"{succeeded} of 28 runs had enough descriptors")

    def paused_move(self, arena, *meanwhile):
        """A move that stops before each of its renames, for as many steps as given; what the driver reported."""
        return paused((self.driver, arena.home, arena.relative), os.path.join(self.work, "trace"), *meanwhile)

    def a_mount_that_appears_during_the_move(self):
        arena = self.fresh()
        inside = os.path.join(arena.item, "deep")
        os.mkdir(inside)
        report = self.paused_move(arena, lambda: mount_memory(inside))
        expect(report == "failed 1", f"reported {report}")
        expect(arena.in_place() and os.path.ismount(inside), "the item left its place")
        expect(not listed(os.path.join(arena.trash, "info")), "a record stayed behind")

    def a_trash_that_is_renamed_during_the_move(self):
        for renamed in ("", "/files", "/info"):
            arena = self.fresh()
            away = os.path.join(self.disk, "away")
            report = self.paused_move(arena, lambda place=arena.trash + renamed: os.rename(place, away))
            expect("The Trash folder changed meanwhile" in report, f"reported {report}")
            expect(arena.in_place(), "the item left its place")
            expect(not any(names for _, _, names in os.walk(away)), "a record stayed behind")

    def an_item_that_is_exchanged_during_the_move(self):
        arena = self.fresh()
        away = os.path.join(self.disk, "away")

        def exchange():
            os.rename(arena.item, away)
            os.mkdir(arena.item)

        report = self.paused_move(arena, exchange)
        expect(report == "failed 1", f"reported {report}")
        expect(os.path.isdir(arena.item) and not os.listdir(arena.item), "the other item left its place")
        expect(os.path.exists(os.path.join(away, "content")), "the item left the place it was moved to")
        expect(not listed(os.path.join(arena.trash, "info")), "a record stayed behind")

    def a_name_that_is_taken_during_the_move(self):
        arena = self.fresh()
        taken = os.path.join(arena.trash, "files/npm")
        report = self.paused_move(arena, lambda: os.mkdir(taken), lambda: None)
        expect(report == "ok " + taken + ".2", f"reported {report}")
        expect(os.path.isdir(taken) and not os.listdir(taken), "what took the name was replaced")
        expect(listed(os.path.join(arena.trash, "info")) == ["npm.2.trashinfo"], "a wrong record stayed behind")

    def an_exchanged_item_whose_place_is_taken_again(self):
        arena = self.fresh()
        away = os.path.join(self.disk, "away")

        def exchange():
            os.rename(arena.item, away)
            os.mkdir(arena.item)

        report = self.paused_move(arena, exchange, lambda: os.mkdir(arena.item))
        expect(report.startswith("failed 4 This item is in the Trash"), f"reported {report}")
        expect(os.path.isdir(os.path.join(arena.trash, "files/npm")), "what moved is gone")
        whole_record(os.path.join(arena.trash, "info/npm.trashinfo"), arena.item)


in_namespace_of_its_own(__file__, lambda driver, work: run_cases(
    Disks(driver, work), ("fresh", "clear", "nested", "paused_move")))
