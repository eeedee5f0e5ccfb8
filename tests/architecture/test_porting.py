"""The table of docs/porting.md: a row for every contract, and every file it names is there."""
import re
import unittest
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[2]
ABSTRACT = re.compile(r'\)(?: const)? = 0;')
COLUMNS = ('Linux file', 'macOS file')


def tables(text):
    """The rows of every table, each a mapping from the heading of a column to its cell."""
    headings = None
    for line in text.splitlines():
        cells = [cell.strip() for cell in line.strip('|').split('|')] if line.startswith('|') else None
        if cells is None:
            headings = None
        elif headings is None:
            headings = cells
        elif not set(''.join(cells)) <= {'-'}:
            yield dict(zip(headings, cells, strict=True))


class Porting(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.rows = list(tables((PROJECT / 'docs/porting.md').read_text(encoding='utf-8')))

    def test_every_contract_has_one_row_and_only_contracts_have(self):
        contracts = sorted(header.stem for header in (PROJECT / 'src/platform').glob('*.h')
                           if ABSTRACT.search(header.read_text(encoding='utf-8')))
        self.assertGreater(len(contracts), 20)
        self.assertEqual([row['contract'].strip('`') for row in self.rows if 'contract' in row], contracts)

    def test_every_file_named_is_there(self):
        for row in self.rows:
            for column, folder in zip(COLUMNS, ('linux', 'macos')):
                for name in re.findall(r'`([^`]+)`', row[column]):
                    place = PROJECT / (name if '/' in name else f'src/platform/{folder}/{name}')
                    self.assertTrue(place.is_file(), f'{name} of {row}')

    def test_every_row_names_its_files_or_says_why_there_are_none(self):
        for row in self.rows:
            for column in COLUMNS:
                self.assertRegex(row[column], r'`[^`]+\.(?:cpp|mm|sh|svg|txt)`|^none(?:: .+)?$|^the same$', row)

    def test_what_only_a_mac_shows_is_said_in_every_row(self):
        for row in self.rows:
            self.assertTrue(row['how verified without a Mac'] and row['what only a Mac shows'], row)

    def test_nothing_claims_that_a_mac_has_run_it(self):
        text = (PROJECT / 'docs/porting.md').read_text(encoding='utf-8')
        self.assertIn('nobody has run it on one yet', text)


if __name__ == '__main__':
    unittest.main()
