"""Holds the sources to the dependency table of docs/architecture.md.

architecture.py PROJECT   prints each offence as "file:line: sentence" and ends with 1 when there is one.
"""
import re
import sys
from pathlib import Path

MAX_LINES = 500

# Folder of src/ -> the other folders it may include from. A sub-folder is a folder of its own.
MAY_INCLUDE = {
    'base': set(),
    'platform': {'base'},
    'platform/linux': {'platform', 'base'},
    'platform/linux/fetch': {'platform/linux', 'platform', 'base'},
    'platform/macos': {'platform', 'base'},
    'update': {'platform', 'base'},
    'engine': {'platform', 'base'},
    'explorer': {'platform', 'base'},
    'storage': {'platform', 'base'},
    'workspace': {'engine', 'storage', 'explorer', 'platform', 'base'},
    'ui': {'workspace', 'base'},
    'app': {'base', 'platform', 'engine', 'explorer', 'storage', 'update', 'workspace', 'ui'},
}

# Records of deeper folders that the store publishes and the views therefore read.
UI_RECORDS = {
    'storage/CleanTarget.h',
    'engine/TelemetryRecords.h',
    'explorer/DiskExplorerProgress.h',
    'explorer/DiskExplorerResult.h',
    'platform/AlertPresenter.h',
    'platform/FolderChooser.h',
    'platform/UpdatePresenter.h',
    'platform/Updater.h',
}

MAY_USE_QT = {'ui', 'app', 'platform/linux', 'platform/linux/fetch'}
MAY_USE_SYSTEM = {'platform/linux', 'platform/linux/fetch', 'platform/macos'}
SYSTEM_FILES = {'app/main.cpp'}
LIBRARIES = {'workspace': re.compile(r'nlohmann/')}

INCLUDE = re.compile(r'^\s*#\s*(?:include|import)\s*([<"])([^>"]+)[>"]')
STANDARD_HEADER = re.compile(r'^[a-z_0-9]+$')
QT_HEADER = re.compile(r'^(Q[A-Z]|Qt[A-Z]|q[a-z]+\.h$)')
SYSTEM_MACRO = re.compile(r'\b(__APPLE__|__linux__|__linux|__unix__|_WIN32|TARGET_OS_\w+|Q_OS_\w+)\b')
COMMENT = re.compile(r'//.*')


def folder_of(path):
    """The folder of the table that a path below src/ belongs to, or None."""
    parent = path.rpartition('/')[0]
    return parent if parent in MAY_INCLUDE else None


def own_include_offence(source, folder, header, src):
    target = folder_of(header)
    if target is None or not (src / header).is_file():
        return f'"{header}" is no file of src/; write the path from src/ on'
    if target == folder or target in MAY_INCLUDE[folder]:
        return None
    if folder == 'ui' and header in UI_RECORDS:
        return None
    return f'{folder} may not include {target} ("{header}")'


def foreign_include_offence(source, folder, header):
    if STANDARD_HEADER.match(header):
        return None
    if QT_HEADER.match(header):
        return None if folder in MAY_USE_QT else f'{folder} may not use Qt (<{header}>)'
    if folder in LIBRARIES and LIBRARIES[folder].match(header):
        return None
    if folder in MAY_USE_SYSTEM or source in SYSTEM_FILES:
        return None
    return f'{folder} may not use <{header}>'


def source_offences(source, text, src):
    """(line, sentence) for each offence of the file src/<source>."""
    folder = folder_of(source)
    if folder is None:
        yield 1, f'{source} lies in no folder of the dependency table'
        return
    for number, line in enumerate(text.splitlines(), 1):
        include = INCLUDE.match(line)
        if include:
            quote, header = include.groups()
            if header.endswith('.moc'):
                continue
            offence = (own_include_offence(source, folder, header, src) if quote == '"'
                       else foreign_include_offence(source, folder, header))
            if offence:
                yield number, offence
        macro = SYSTEM_MACRO.search(COMMENT.sub('', line))
        if macro and folder not in MAY_USE_SYSTEM:
            yield number, f'{macro.group()} outside platform/<os>'


def shape_offences(path, text):
    lines = text.count('\n')
    if lines > MAX_LINES:
        yield lines, f'{lines} lines; the limit is {MAX_LINES}'
    if path.suffix == '.h' and not re.search(r'^#pragma once$', text, re.M):
        yield 1, 'no "#pragma once"'


def sources_below(folder):
    return sorted(p for p in folder.rglob('*') if p.suffix in ('.cpp', '.mm', '.h') and p.is_file())


def offences(project):
    """Every offence of the project as one line of text, in the order of the files."""
    src = project / 'src'
    found = []
    for top in ('src', 'tests', 'benchmarks'):
        for path in sources_below(project / top):
            text = path.read_text(encoding='utf-8')
            lines = list(shape_offences(path, text))
            if top == 'src':
                lines += source_offences(path.relative_to(src).as_posix(), text, src)
            found += [f'{path.relative_to(project)}:{line}: {sentence}' for line, sentence in lines]
    return found


def main():
    project = Path(sys.argv[1])
    count = len(sources_below(project / 'src'))
    found = offences(project)
    print('\n'.join(found) if found else f'{count} files of src/ keep to the table')
    return 1 if found or count == 0 else 0


if __name__ == '__main__':
    sys.exit(main())
