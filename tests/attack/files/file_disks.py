#!/usr/bin/python3
"""Saves to disks that are full, out of inodes or read-only, and through links and leftovers of somebody else.

file_disks.py DRIVER WORKFOLDER: needs root and a mount namespace of its own (unshare --mount). Exit status 0 when every
save was reported as failed and the old file is whole.
"""

import json
import os
import subprocess
import sys

NOBODY = 65534
LARGE = "n" * 100_000  # below the longest argument a program may get, above what the small disk holds


class Violation(Exception):
    """A save broke a promise."""


def expect(condition, what):
    if not condition:
        raise Violation(what)
    print(f"held: {what}")


def save(driver, mode, path, content):
    return subprocess.run([driver, mode, path, content], stdout=subprocess.PIPE, timeout=20, check=False).stdout == b"ok\n"


def content_of(path):
    with open(path, encoding="ascii") as file:
        return file.read()


def mounted(folder, options):
    os.makedirs(folder, exist_ok=True)
    subprocess.run(["mount", "-t", "tmpfs", "-o", options, "tmpfs", folder], check=True)
    return os.path.join(folder, "file.json")


def full_disk(driver, work):
    path = mounted(os.path.join(work, "full"), "size=64k")
    folder = os.path.dirname(path)
    expect(save(driver, "replace", path, "old"), "a save that fits is made")
    expect(not save(driver, "replace", path, LARGE), "a save to a full disk is reported as failed")
    expect(not save(driver, "replace", os.path.join(folder, "new/file"), LARGE), "and so is one of a new file")
    expect(content_of(path) == "old" and os.listdir(folder) == ["file.json"], "the old file is whole and alone")
    settings = os.path.join(folder, "settings.json")
    expect(save(driver, "set", settings, "small"), "a preference that fits is saved")
    expect(not save(driver, "set", settings, LARGE), "one that does not is reported as not saved")
    expect(json.loads(content_of(settings)) == {"value": ["small"]}, "the old preferences are whole")


def no_inodes(driver, work):
    path = mounted(os.path.join(work, "inodes"), "size=1m,nr_inodes=2")
    expect(save(driver, "replace", path[:-5], "old") and not save(driver, "replace", path[:-5], "new"),
           "a save without a free inode is reported as failed")
    expect(content_of(path[:-5]) == "old", "the old file is whole")


def read_only(driver, work):
    path = mounted(os.path.join(work, "readonly"), "size=1m")
    save(driver, "replace", path, "old")
    subprocess.run(["mount", "-o", "remount,ro", os.path.dirname(path)], check=True)
    expect(not save(driver, "replace", path, "new"), "a save to a read-only disk is reported as failed")
    expect(content_of(path) == "old", "the old file is whole")


def others(driver, work):
    path = mounted(os.path.join(work, "others"), "size=1m")
    folder = os.path.dirname(path)
    real, link = os.path.join(folder, "real.json"), os.path.join(folder, "link.json")
    leftover = os.path.join(folder, ".file.json.kestrune-0123456789abcdef")
    for name in (real, leftover):
        with open(os.open(name, os.O_CREAT | os.O_WRONLY, 0o600), "w", encoding="ascii") as file:
            file.write("old")
    os.symlink("real.json", link)
    os.chown(link, NOBODY, NOBODY, follow_symlinks=False)
    expect(not save(driver, "replace", link, "new"), "a link of somebody else is not followed")
    os.chown(link, 0, 0, follow_symlinks=False)
    os.chown(real, NOBODY, NOBODY)
    expect(not save(driver, "replace", link, "new"), "nor one to a file of somebody else")
    expect(content_of(real) == "old" and os.path.islink(link), "both stay as they were")
    os.chown(leftover, NOBODY, NOBODY)
    expect(save(driver, "replace", path, "new") and content_of(leftover) == "old", "a leftover of somebody else stays")


def main():
    driver, work = sys.argv[1], sys.argv[2]
    try:
        for scenario in (full_disk, no_inodes, read_only, others):
            scenario(driver, work)
    except Violation as violation:
        print(f"VIOLATION: {violation}")
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
