// Makes one of the trees that benchmarks/walk.py measures on and prints its manifest as one line of JSON: what was
// counted while it was made.
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <map>
#include <optional>
#include <string>

#include "base/WholeNumber.h"
#include "benchmarks/walk/TreeMaker.h"

namespace {

using namespace kestrune;
using Folder = TreeMaker::Folder;

std::string numbered(const std::string& name, std::int64_t number, const std::string& suffix = {}) {
    const std::string digits = std::to_string(number);
    return std::string(name).append(digits.size() < 6 ? 6 - digits.size() : 0, '0').append(digits).append(suffix);
}

void files(TreeMaker& tree, const Folder& folder, int count, const std::string& name, const std::string& suffix) {
    for (int i = 0; i < count; ++i) {
        tree.file(folder, name + std::to_string(i) + suffix);
    }
}

/// Content-addressed files below hash folders, as package managers keep them.
void cache(TreeMaker& tree, std::int64_t until) {
    const Folder home = tree.folder(tree.root(), ".npm");
    const Folder contents = tree.folder(tree.folder(home, "_cacache"), "content-v2");
    while (tree.entries() < until) {
        const std::string digest = tree.digest(40);
        tree.file(tree.sharedFolder(contents, digest.substr(0, 2)), digest.substr(2));
    }
}

void repository(TreeMaker& tree, const Folder& project) {
    const Folder git = tree.folder(project, ".git");
    for (const char* const name : {"HEAD", "config", "description", "index", "packed-refs"}) {
        tree.file(git, name);
    }
    const Folder objects = tree.folder(git, "objects");
    for (int i = tree.number(20, 120); i > 0; --i) {
        tree.file(tree.sharedFolder(objects, tree.digest(2)), tree.digest(38));
    }
    files(tree, tree.folder(tree.folder(git, "refs"), "heads"), tree.number(1, 6), "topic-", "");
}

void packages(TreeMaker& tree, const Folder& project) {
    const Folder modules = tree.folder(project, "node_modules");
    const Folder commands = tree.folder(modules, ".bin");
    for (int i = tree.number(15, 60); i > 0; --i) {
        const std::string name = numbered("package-", i);
        const Folder package = tree.folder(modules, name);
        tree.file(package, "package.json");
        tree.symbolicLink(commands, name, "../" + name + "/dist/module_0.js");
        for (const char* const part : {"lib", "dist", "src"}) {
            files(tree, tree.folder(package, part), tree.number(3, 24), "module_", ".js");
        }
    }
}

/// A build folder: one very full folder, the results linked to a second place.
void build(TreeMaker& tree, const Folder& project) {
    const Folder debug = tree.folder(tree.folder(project, "target"), "debug");
    const Folder dependencies = tree.folder(debug, "deps");
    const int count = tree.number(600, 3'000);
    files(tree, dependencies, count, "object-", ".o");
    for (int i = 0; i < count; i += 20) {
        tree.hardLink(dependencies, "object-" + std::to_string(i) + ".o", debug, "linked-" + std::to_string(i));
    }
}

void environment(TreeMaker& tree, const Folder& project) {
    const Folder home = tree.folder(project, ".venv");
    tree.symbolicLink(home, "lib64", "lib");
    const Folder packages = tree.folder(tree.folder(tree.folder(home, "lib"), "python3.11"), "site-packages");
    for (int i = tree.number(8, 30); i > 0; --i) {
        const Folder package = tree.folder(packages, numbered("library_", i));
        files(tree, package, tree.number(3, 40), "part_", ".py");
        files(tree, tree.folder(package, "__pycache__"), tree.number(3, 40), "part_", ".cpython-311.pyc");
    }
}

void project(TreeMaker& tree, const Folder& projects, int number) {
    const Folder folder = tree.folder(projects, numbered("project-", number));
    for (const char* const name : {"README.md", ".gitignore", ".editorconfig", "notes with spaces.txt"}) {
        tree.file(folder, name);
    }
    repository(tree, folder);
    const Folder sources = tree.folder(folder, "src");
    for (int i = tree.number(3, 8); i > 0; --i) {
        files(tree, tree.folder(sources, numbered("area-", i)), tree.number(5, 25), "source_", ".cpp");
    }
    packages(tree, folder);
    if (number % 3 == 0) {
        build(tree, folder);
    }
    if (number % 4 == 0) {
        environment(tree, folder);
    }
}

/// What walkers stumble over: names that are no text, a pipe that nobody writes to, links that lead nowhere or up.
void oddities(TreeMaker& tree) {
    const Folder odd = tree.folder(tree.root(), "odd");
    for (const char* const name : {"\xff", "\xfe", "new\nline", "tab\t", "ünïcode", "-rf", "*"}) {
        tree.file(odd, name);
    }
    tree.file(tree.folder(tree.root(), "\xff"), "inside");
    tree.file(tree.folder(tree.root(), "\xfe"), "inside");
    tree.fifo(odd, "pipe");
    tree.symbolicLink(odd, "nowhere", "does/not/exist");
    tree.symbolicLink(odd, "up", "..");
}

/// A home folder with projects, entry for entry as large as asked for.
void projects(TreeMaker& tree, std::int64_t entries) {
    constexpr std::int64_t largestProject = 12'000;
    oddities(tree);
    cache(tree, entries / 4);
    const Folder folder = tree.folder(tree.root(), "projects");
    for (int number = 1; tree.entries() + largestProject < entries; ++number) {
        project(tree, folder, number);
    }
    const Folder downloads = tree.folder(tree.root(), "Downloads");
    for (int i = 0; tree.entries() < entries; ++i) {
        tree.file(downloads, numbered("download-", i, ".zip"));
    }
}

void oneFolder(TreeMaker& tree, std::int64_t entries) {
    for (int i = 0; tree.entries() < entries; ++i) {
        tree.file(tree.root(), numbered("object-", i, ".o"));
    }
}

/// Folders inside each other, as many as asked for, with a file in every hundredth.
void chain(TreeMaker& tree, std::int64_t levels) {
    Folder folder = tree.folder(tree.root(), numbered("level-", 1));
    for (std::int64_t level = 2; level <= levels; ++level) {
        folder = tree.folder(folder, numbered("level-", level));
        if (level % 100 == 0) {
            tree.file(folder, "file");
        }
    }
}

/// Files that claim a gigabyte each and own none, the end or three pieces of it.
void sparse(TreeMaker& tree, std::int64_t entries) {
    constexpr std::int64_t length = std::int64_t{1} << 30;
    constexpr std::int64_t piece = 65'536;
    const Folder images = tree.folder(tree.root(), "images");
    for (int i = 0; tree.entries() < entries; ++i) {
        const std::string name = numbered("disk-", i, ".img");
        if (i % 3 == 0) {
            tree.sparseFile(images, name, length, {});
        } else if (i % 3 == 1) {
            tree.sparseFile(images, name, length, {{length - piece, piece}});
        } else {
            tree.sparseFile(images, name, length, {{0, piece}, {length / 2, 3 * piece}, {length - piece, piece}});
        }
    }
}

const std::map<std::string, std::function<void(TreeMaker&, std::int64_t)>>& shapes() {
    static const std::map<std::string, std::function<void(TreeMaker&, std::int64_t)>> known{
        {"projects", projects}, {"one-folder", oneFolder}, {"chain", chain}, {"sparse", sparse}};
    return known;
}

}  // namespace

int main(int count, char** arguments) {
    const auto shape = count == 4 ? shapes().find(arguments[2]) : shapes().end();
    const auto size = count == 4 ? wholeNumber<std::int64_t>(arguments[3]) : std::nullopt;
    if (shape == shapes().end() || !size) {
        std::cerr << "usage: walk_trees NEW-FOLDER projects|one-folder|chain|sparse ENTRIES-OR-LEVELS\n";
        return EXIT_FAILURE;
    }
    TreeMaker tree(arguments[1]);
    shape->second(tree, *size);
    std::cout << tree.finish().line() << '\n';
    return EXIT_SUCCESS;
}
