#!/usr/bin/python3
"""Whether the window stays smooth while a million entries are measured: explorer.py BUILD_FOLDER [--entries N]

Makes the tree below TMPDIR and runs explorer_driver on it: on the desktop of DISPLAY, else without a screen.
"""

import argparse
import os
import subprocess
import sys
import tempfile
from pathlib import Path


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("build", type=Path)
    parser.add_argument("--entries", type=int, default=1_000_000, help="in the tree (1000000)")
    options = parser.parse_args()
    binaries = options.build.resolve() / "bin"
    environment = dict(os.environ)
    if "DISPLAY" not in environment:
        environment.setdefault("QT_QPA_PLATFORM", "offscreen")
    with tempfile.TemporaryDirectory(prefix="kestrune-explorer-") as folder:
        tree = str(Path(folder) / "projects")
        subprocess.run([binaries / "walk_trees", tree, "projects", str(options.entries)], check=True,
                       stdout=subprocess.DEVNULL)
        ended = subprocess.run([binaries / "explorer_driver", tree], env=environment).returncode
        subprocess.run(["rm", "-rf", tree], check=True)
    return ended


if __name__ == "__main__":
    sys.exit(main())
