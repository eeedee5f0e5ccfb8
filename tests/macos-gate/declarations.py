"""Holds the declarations under stubs/ to their documentation.

declarations.py STUBS   names each declaration without a page as "file:line: text", says how many carry one, and ends
                        with 1 when one carries none

A declaration's page stands in the comment right above it: an address without its scheme, a manual page such as
"getxattr(2)", or either with "(page not seen; ADDRESS)" when somebody else's page confirmed it, "(page not seen)" when
none did. A page above an enumeration covers its cases, one above a structure its members. Forward declarations, macros
and includes need none.
"""
import re
import sys
from pathlib import Path

PAGE = re.compile(r'[a-z0-9-]+(\.[a-z0-9-]+)+/\S|\b[a-z_0-9]+\(\d\)')
NOT_SEEN = '(page not seen)'
SEEN_ELSEWHERE = re.compile(r'\(page not seen; (// *)*[a-z0-9-]+(\.[a-z0-9-]+)+/\S')
COMMENT = re.compile(r'^\s*//')
# Lines that say nothing about the system: directives, brackets, forward declarations, the end of a class.
SILENT = re.compile(r'^\s*(#|NS_ASSUME_NONNULL_|@end|@required|@optional|@class\b|@interface \w+ \(|extern "C" \{|\}|$)')


def statements(text):
    """(line, text, comments right above) for each statement of a header; a class's head is one, its members are more."""
    comments, words, start, depth = [], [], 0, 0
    continued = False
    for number, line in enumerate(text.splitlines(), 1):
        directive = continued or line.lstrip().startswith('#')
        continued = directive and line.endswith('\\')
        if directive:
            continue
        if COMMENT.match(line) and not words:
            comments.append(line)
            continue
        code = re.sub(r'//.*', '', line)
        if not words and SILENT.match(code):
            if not code.strip():
                comments = []
            continue
        if not words:
            start = number
        words.append(line if '//' in line else code.strip())
        depth += code.count('{') - code.count('}')
        head = words[0].startswith(('@interface', '@protocol'))
        attribute_only = len(words) == 1 and re.match(r'^(API_|__attribute__)\S*\(.*\)\)?$', code.strip())
        ended = depth == 0 and (code.rstrip().endswith((';', '}')) or (head and not code.rstrip().endswith(',')))
        if ended and not attribute_only:
            yield start, ' '.join(words), comments
            comments, words = [], []


def main():
    stubs = Path(sys.argv[1])
    seen, elsewhere, unseen, bare = 0, 0, 0, []
    for path in sorted(stubs.rglob('*.h')):
        for line, text, comments in statements(path.read_text(encoding='utf-8')):
            said = ' '.join(comments) + ' ' + ' '.join(re.findall(r'//.*', text))
            if NOT_SEEN in said:
                unseen += 1
            elif SEEN_ELSEWHERE.search(said):
                elsewhere += 1
            elif PAGE.search(said):
                seen += 1
            else:
                bare.append(f'{path.relative_to(stubs.parent)}:{line}: no documentation page: {text[:80]}')
    print('\n'.join(bare + [f'{seen} declarations carry their page, {elsewhere} somebody else\'s, '
                            f'{unseen} are marked "{NOT_SEEN}", {len(bare)} say nothing']))
    return 1 if bare or not seen else 0


if __name__ == '__main__':
    sys.exit(main())
