"""The system calls of a driver between its two marks, and how each of them may fail."""

import collections
import re

from trash_arena import Violation

ERRORS = {
    "openat": ("EMFILE", "EIO", "EACCES"),
    "openat2": ("ENOMEM", "EIO", "EACCES"),
    "mkdirat": ("ENOSPC", "EROFS"),
    "write": ("ENOSPC", "EIO", "EDQUOT"),
    "fsync": ("EIO", "ENOSPC"),
    "linkat": ("ENOSPC", "EPERM"),
    "renameat2": ("EXDEV", "EACCES", "EBUSY", "EINVAL", "ENOSPC"),
    "statx": ("EIO", "ENOMEM"),
    "close": ("EIO",),
    "read": ("EIO",),
    "lseek": ("EIO",),
    "fstatfs": ("EIO",),
    "readlink": ("EIO",),
    "readlinkat": ("EIO",),
    "unlinkat": ("EACCES", "EIO"),
    "newfstatat": ("EIO",),
}
CALL = re.compile(r"^(\w+)\((.*)")


def marked_calls(trace):
    """The calls that the trace has between the marks, as (name, number among the calls of that name, arguments)."""
    counts = collections.Counter()
    marks, renamed, calls = 0, False, []
    with open(trace, encoding="utf-8", errors="replace") as lines:
        for line in lines:
            match = CALL.match(line)
            if not match:
                continue
            counts[match[1]] += 1
            if match[0].startswith("read(-1"):
                marks += 1
            elif marks == 1:
                calls.append((match[1], counts[match[1]], match[2].strip() + (" after rename" if renamed else "")))
                renamed = renamed or match[1] == "renameat2"
    if marks != 2:
        raise Violation("strace saw no whole move; is tracing permitted here?")
    return calls


def faults_at(name, number):
    """What can go wrong at one call, as (kind, what strace calls it)."""
    faults = [("killed", f"inject={name}:signal=KILL:when={number}")]
    return faults + [("failed", f"inject={name}:error={error}:when={number}") for error in ERRORS.get(name, ())]
