#!/usr/bin/python3
"""Makes a folder shaped like developer caches: cache_tree.py FOLDER [ENTRIES]

Four kinds of trees share the entries: content-addressed files under two levels of hash folders (npm), unpacked packages
(node_modules, cargo), a few very full folders (build outputs, pip wheels) and deep module paths (Go, Maven). The same
arguments make the same tree. Prints the manifest: the number of entries as they were made, and the allocated bytes of
all regular files once they are on disk.
"""

import os
import random
import sys


class Tree:
    def __init__(self, root, limit, seed=1):
        self.root, self.limit, self.entries = root, limit, 0
        self.random = random.Random(seed)
        os.makedirs(root)

    def folder(self, *parts):
        path = self.root
        for part in parts:
            path = os.path.join(path, part)
            if not os.path.isdir(path):
                os.mkdir(path)
                self.entries += 1
        return path

    def file(self, folder, name):
        descriptor = os.open(os.path.join(folder, name), os.O_CREAT | os.O_EXCL | os.O_WRONLY, 0o644)
        size = min(int(self.random.lognormvariate(6.5, 1.6)), 200_000)
        os.write(descriptor, b"x" * size)
        os.close(descriptor)
        self.entries += 1

    def full(self, share):
        return self.entries >= self.limit * share

    def content_addressed(self, share):
        while not self.full(share):
            digest = f"{self.random.getrandbits(160):040x}"
            self.file(self.folder("npm", "content-v2", "sha512", digest[:2]), digest[2:])

    def packages(self, share):
        number = 0
        while not self.full(share):
            number += 1
            for part in ("", "lib", "src", "dist"):
                folder = self.folder("registry", f"package-{number}", *([part] if part else []))
                for name in range(self.random.randint(3, 24)):
                    self.file(folder, f"module_{name}.js")

    def full_folders(self, share):
        number = 0
        while not self.full(share):
            number += 1
            folder = self.folder("build", f"target-{number}", "deps")
            for name in range(12_000):
                self.file(folder, f"object-{name:06d}.o")

    def deep_modules(self, share):
        number = 0
        while not self.full(share):
            number += 1
            folder = self.folder("modules", "example.com", f"org{number % 40}", f"module@v1.{number}", "internal", "impl")
            for name in range(self.random.randint(5, 40)):
                self.file(folder, f"file_{name}.go")
            os.symlink("..", os.path.join(folder, "up"))
            self.entries += 1


def allocated(root):
    """A plain listing of the finished tree: another road than any walker under test takes."""
    paths = (os.path.join(folder, name) for folder, _, names in os.walk(root) for name in names)
    return sum(os.lstat(path).st_blocks * 512 for path in paths if not os.path.islink(path))


def main():
    root, limit = sys.argv[1], int(sys.argv[2]) if len(sys.argv) > 2 else 250_000
    tree = Tree(root, limit)
    tree.content_addressed(0.3)
    tree.packages(0.65)
    tree.full_folders(0.85)
    tree.deep_modules(1.0)
    os.sync()
    print(tree.entries, allocated(root))


if __name__ == "__main__":
    main()
