"""The icon file that the build makes from the project's drawing, read back block by block."""
import os
import struct
import subprocess
import tempfile
import unittest
import zlib
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[3]
DRAWING = PROJECT / 'src/ui/icons/kestrune.svg'
SIZES = {b'icp4': 16, b'ic11': 32, b'icp5': 32, b'ic12': 64, b'ic07': 128, b'ic13': 256, b'ic08': 256, b'ic14': 512,
         b'ic09': 512, b'ic10': 1024}


def blocks(content):
    """(type, data) of each block of an icon file; everything has to fit exactly."""
    kind, length = struct.unpack('>4sI', content[:8])
    assert kind == b'icns' and length == len(content), (kind, length, len(content))
    at = 8
    while at < len(content):
        kind, length = struct.unpack('>4sI', content[at:at + 8])
        assert 8 < length <= len(content) - at, (kind, length)
        yield kind, content[at + 8:at + length]
        at += length


def unfiltered(scanlines, stride, width):
    """The pixels of a PNG's scanlines: each begins with the number of the filter that made it (RFC 2083, 6)."""
    before = bytearray(stride)
    for start in range(0, len(scanlines), stride + 1):
        rule, line = scanlines[start], bytearray(scanlines[start + 1:start + 1 + stride])
        for i in range(stride):
            left = line[i - 4] if i >= 4 else 0
            up = before[i]
            corner = before[i - 4] if i >= 4 else 0
            nearest = min((left, up, corner), key=lambda value: abs(left + up - corner - value))
            line[i] = (line[i] + (0, left, up, (left + up) // 2, nearest)[rule]) & 255
        yield line
        before = line


class Picture:
    """A PNG with four channels of eight bits."""

    def __init__(self, data):
        assert data[:8] == b'\x89PNG\r\n\x1a\n', data[:8]
        at, packed = 8, b''
        while at < len(data):
            length, kind = struct.unpack('>I4s', data[at:at + 8])
            body = data[at + 8:at + 8 + length]
            assert struct.unpack('>I', data[at + 8 + length:at + 12 + length])[0] == zlib.crc32(kind + body)
            if kind == b'IHDR':
                self.width, self.height, depth, colours = struct.unpack('>IIBB', body[:10])
                assert (depth, colours) == (8, 6), (depth, colours)
            elif kind == b'IDAT':
                packed += body
            at += 12 + length
        self.lines = list(unfiltered(zlib.decompress(packed), self.width * 4, self.width))

    def alpha(self, x, y):
        return self.lines[y][x * 4 + 3]

    def colour(self, x, y):
        return tuple(self.lines[y][x * 4:x * 4 + 3])


class Icon(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.file = Path(folder.name) / 'Kestrune.icns'
        subprocess.run([os.environ['KESTRUNE_ICNS'], DRAWING, cls.file], check=True)
        cls.blocks = dict(blocks(cls.file.read_bytes()))

    def test_every_size_is_there_once_as_a_picture_of_that_size(self):
        self.assertEqual([kind for kind, _ in blocks(self.file.read_bytes())], list(SIZES))
        for kind, size in SIZES.items():
            width, height = struct.unpack('>II', self.blocks[kind][16:24])
            self.assertEqual((width, height), (size, size), kind)

    def test_square_lies_on_the_grid_for_application_icons(self):
        picture = Picture(self.blocks[b'ic10'])
        row = [x for x in range(1024) if picture.alpha(x, 512) > 127]
        column = [y for y in range(1024) if picture.alpha(512, y) > 127]
        self.assertEqual((row[0], row[-1], column[0], column[-1]), (100, 923, 100, 923))

    def test_corners_are_round_and_around_the_square_is_nothing(self):
        picture = Picture(self.blocks[b'ic10'])
        for x, y in ((0, 0), (1023, 1023), (50, 512), (104, 104), (919, 104), (104, 919), (919, 919)):
            self.assertEqual(picture.alpha(x, y), 0, (x, y))
        self.assertEqual(picture.alpha(200, 200), 255)

    def test_smallest_picture_shows_the_broom_on_its_ground(self):
        picture = Picture(self.blocks[b'icp4'])
        colours = [picture.colour(x, y) for x in range(16) for y in range(16) if picture.alpha(x, y) > 200]
        self.assertGreater(len(colours), 100)
        self.assertTrue([c for c in colours if c[0] > 180 and c[2] < 130], 'nothing of the warm broom')
        self.assertTrue([c for c in colours if c[0] < 80 and c[1] > 90], 'nothing of the green ground')

    def test_pictures_of_one_size_are_the_same(self):
        self.assertEqual(self.blocks[b'ic13'], self.blocks[b'ic08'])
        self.assertEqual(self.blocks[b'ic14'], self.blocks[b'ic09'])

    def test_what_is_no_drawing_makes_no_icon(self):
        made = self.file.with_name('none.icns')
        result = subprocess.run([os.environ['KESTRUNE_ICNS'], PROJECT / 'LICENSE', made], stderr=subprocess.PIPE)
        self.assertEqual(result.returncode, 1)
        self.assertFalse(made.exists())


if __name__ == '__main__':
    unittest.main()
