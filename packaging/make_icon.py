"""Draws the application's icon: a rounded screen with a bar of tiles along its bottom.

make_icon.py Morvel.icns         all sizes in the file that macOS wants
make_icon.py morvel.png 48       one picture, 48 pixels wide
"""
import struct
import sys
import zlib

# The icon's types that hold a PNG, by the size in pixels.
TYPES = {16: b"icp4", 32: b"icp5", 64: b"icp6", 128: b"ic07", 256: b"ic08", 512: b"ic09", 1024: b"ic10"}
SAMPLES = 3  # per axis and pixel, for smooth edges
SCREEN_TOP, SCREEN_BOTTOM = (46, 60, 92), (24, 30, 52)
BAR, TILE, ACTIVE = (224, 230, 242), (120, 136, 170), (10, 132, 255)


def inside_rounded(x, y, left, top, right, bottom, radius):
    if not (left <= x <= right and top <= y <= bottom):
        return False
    dx = max(left + radius - x, x - (right - radius), 0)
    dy = max(top + radius - y, y - (bottom - radius), 0)
    return dx * dx + dy * dy <= radius * radius


def colour_at(x, y):
    """The colour at a point of the unit square, origin at the top left, or None outside the icon's shape."""
    if not inside_rounded(x, y, 0.08, 0.08, 0.92, 0.92, 0.19):
        return None
    if inside_rounded(x, y, 0.17, 0.66, 0.83, 0.81, 0.04):
        for index in range(4):
            left = 0.20 + 0.155 * index
            if inside_rounded(x, y, left, 0.69, left + 0.125, 0.78, 0.025):
                return ACTIVE if index == 1 else TILE
        return BAR
    return tuple(round(a + (b - a) * y) for a, b in zip(SCREEN_TOP, SCREEN_BOTTOM))


def pixel(column, row, size):
    hits = [colour_at((column + (i + 0.5) / SAMPLES) / size, (row + (j + 0.5) / SAMPLES) / size)
            for j in range(SAMPLES) for i in range(SAMPLES)]
    solid = [c for c in hits if c is not None]
    if not solid:
        return (0, 0, 0, 0)
    return tuple(sum(c[i] for c in solid) // len(solid) for i in range(3)) + (255 * len(solid) // len(hits),)


def png(size):
    rows = b"".join(b"\0" + bytes(v for column in range(size) for v in pixel(column, row, size)) for row in range(size))

    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    header = struct.pack(">2I5B", size, size, 8, 6, 0, 0, 0)
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b"")


def icns():
    entries = b""
    for size in (16, 32, 64, 128, 256, 512):
        image = png(size)
        entries += TYPES[size] + struct.pack(">I", 8 + len(image)) + image
    return b"icns" + struct.pack(">I", 8 + len(entries)) + entries


def main():
    target = sys.argv[1]
    content = png(int(sys.argv[2])) if target.endswith(".png") else icns()
    with open(target, "wb") as out:
        out.write(content)


if __name__ == "__main__":
    main()
