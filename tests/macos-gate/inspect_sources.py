"""Runs clang's static analyzer and clang-tidy over what a build for macOS compiled.

inspect_sources.py analyse|tidy BUILD CACHE LLVM JOBS [FILE...]

BUILD is the build folder. Inspected are the FILEs, or else the sources of src/ but for the views, which are the same on
Linux and analysed there; clang-tidy reads those of platform/macos. A source is passed over while its command and everything it includes are as they were when it last passed: CACHE
keeps a name for each such state. Prints what was found and how many were inspected; ends with 1 when there was a finding.
"""
import concurrent.futures
import hashlib
import json
import shlex
import subprocess
import sys
from pathlib import Path

CHECKERS = 'core,cplusplus,osx,nullability,deadcode,unix'
# The analyzer loses sight of what Qt's parents own and of what lies in a std::function. LeakSanitizer does not, where the
# code runs on Linux; this check is for the rest.
ONLY_FOR_MACOS = 'cplusplus.NewDeleteLeaks'

TIDY_CONFIGURATION = Path(__file__).with_name('tidy.yaml')


def sources(stage, build, wanted):
    """{path: command words} of the wanted sources, or of all that the stage inspects."""
    found = {}
    for entry in json.loads((build / 'compile_commands.json').read_text()):
        path = entry['file']
        inspected = '/src/platform/macos/' in path or (stage == 'analyse' and '/src/' in path and '/src/ui/' not in path)
        if path in wanted or (not wanted and inspected and str(build) not in path):
            found[path] = compiler_words(entry['command'])
    return found


def compiler_words(command):
    """The command without its launcher, its output and what it writes beside it."""
    words = shlex.split(command)
    while '/clang' not in words[0]:
        words.pop(0)
    kept, skip = [], False
    for word in words:
        if skip:
            skip = False
        elif word in ('-o', '-MF', '-MT'):
            skip = True
        elif word not in ('-c', '-MD', '-MMD'):
            kept.append(word)
    return kept


def included_files(build):
    """{source: every file that its object depends on}, as ninja remembers it of the last build."""
    found = {}
    if not (build / 'build.ninja').exists():
        return found
    text = subprocess.run(['ninja', '-C', str(build), '-t', 'deps'], capture_output=True, text=True, check=True).stdout
    for block in text.split('\n\n'):
        files = [line.strip() for line in block.splitlines() if line.startswith('    ')]
        if files:
            found[str((build / files[0]).resolve())] = [build / file for file in files]
    return found


class States:
    """Names the state of a source: its command and the content of every file it depends on."""

    def __init__(self, build, salt):
        self._included = included_files(build)
        self._digests = {}
        self._salt = salt

    def _digest(self, path):
        if path not in self._digests:
            self._digests[path] = hashlib.sha256(path.read_bytes()).digest()
        return self._digests[path]

    def name(self, source, command):
        files = self._included.get(str(Path(source).resolve()))
        if not files:
            return None
        state = hashlib.sha256(repr((self._salt, command)).encode())
        for file in files:
            state.update(self._digest(file))
        return state.hexdigest()


def analysis(source, command, _llvm):
    words = command + ['--analyze', '-Xclang', '-analyzer-werror', '-Xclang', f'-analyzer-checker={CHECKERS}',
                       '-Xclang', '-analyzer-output=text', '-o', '/dev/null']
    if '/src/platform/macos/' not in source:
        words += ['-Xclang', f'-analyzer-disable-checker={ONLY_FOR_MACOS}']
    return words


def tidying(source, command, llvm):
    return [f'clang-tidy-{llvm}', '--quiet', '--experimental-custom-checks', f'--config-file={TIDY_CONFIGURATION}', source,
            '--', *(word for word in command[1:] if word != source)]


def inspect(words):
    done = subprocess.run(words, capture_output=True, text=True)
    return done.returncode == 0, done.stdout + done.stderr


def main():
    stage, build, cache, llvm, jobs = sys.argv[1], Path(sys.argv[2]), Path(sys.argv[3]), sys.argv[4], int(sys.argv[5])
    words_for = {'analyse': analysis, 'tidy': tidying}[stage]
    wanted = sources(stage, build, set(sys.argv[6:]))
    version = subprocess.run([f'clang++-{llvm}', '--version'], capture_output=True, text=True, check=True).stdout
    states = States(build, (stage, version, CHECKERS, TIDY_CONFIGURATION.read_text()))
    cache.mkdir(parents=True, exist_ok=True)

    def look(path):
        state = states.name(path, wanted[path])
        if state and (cache / state).exists():
            return True, ''
        passed, text = inspect(words_for(path, wanted[path], llvm))
        if passed and state:
            (cache / state).touch()
        return passed, text

    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        results = list(pool.map(look, sorted(wanted)))
    failures = [text for passed, text in results if not passed]
    print('\n'.join(failures), end='')
    print(f'{len(wanted)} files, {len(failures)} with findings')
    return 1 if failures or not wanted else 0


if __name__ == '__main__':
    sys.exit(main())
