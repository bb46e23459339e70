#!/usr/bin/env python3
"""Writes the program's small pictures into data/: the icon (1), the help
cursor ("HelpCursor") and the tick bitmap (2222, a tick on pure green).
The files are committed; run this only to change them."""
import os
import struct

HERE = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "data")


def bmp_rows(pixels, w, h, bpp):
    """Bottom-up rows of BGR(A) pixels, padded to 4 bytes."""
    out = b""
    for y in range(h - 1, -1, -1):
        row = b""
        for x in range(w):
            r, g, b, a = pixels[y][x]
            row += bytes([b, g, r]) + (bytes([a]) if bpp == 32 else b"")
        row += b"\0" * ((4 - len(row) % 4) % 4)
        out += row
    return out


def and_mask(pixels, w, h):
    out = b""
    for y in range(h - 1, -1, -1):
        bits = 0
        row = b""
        for x in range(w):
            bits = (bits << 1) | (1 if pixels[y][x][3] == 0 else 0)
            if x % 8 == 7:
                row += bytes([bits])
                bits = 0
        if w % 8:
            row += bytes([bits << (8 - w % 8)])
        row += b"\0" * ((4 - len(row) % 4) % 4)
        out += row
    return out


def icon_image(pixels, w, h):
    header = struct.pack("<IiiHHIIiiII", 40, w, h * 2, 1, 32, 0, 0, 0, 0, 0, 0)
    return header + bmp_rows(pixels, w, h, 32) + and_mask(pixels, w, h)


def write_icon_file(path, images, kind, hotspot=(0, 0)):
    data = struct.pack("<HHH", 0, kind, len(images))
    offset = 6 + 16 * len(images)
    blobs = []
    for pixels, w, h in images:
        blob = icon_image(pixels, w, h)
        planes, bpp = (1, 32) if kind == 1 else hotspot
        data += struct.pack("<BBBBHHII", w, h, 0, 0, planes, bpp, len(blob), offset)
        offset += len(blob)
        blobs.append(blob)
    with open(path, "wb") as f:
        f.write(data + b"".join(blobs))


def canvas(w, h, colour=(0, 0, 0, 0)):
    return [[colour for _ in range(w)] for _ in range(h)]


def tick_points(size):
    """A check mark scaled to a square of the given size."""
    pts = []
    s = size / 11.0
    for i in range(int(4 * s)):
        pts.append((int(1 * s) + i, int(5 * s) + i))
    for i in range(int(7 * s)):
        pts.append((int(1 * s) + int(4 * s) - 1 + i, int(5 * s) + int(4 * s) - 1 - i))
    return pts


def draw_thick(img, pts, colour, width):
    h, w = len(img), len(img[0])
    for x, y in pts:
        for dy in range(width):
            for dx in range(width):
                if 0 <= x + dx < w and 0 <= y + dy < h:
                    img[y + dy][x + dx] = colour


def ferry_icon(size):
    img = canvas(size, size)
    c = (size - 1) / 2.0
    for y in range(size):
        for x in range(size):
            if (x - c) ** 2 + (y - c) ** 2 <= (size / 2.0) ** 2:
                img[y][x] = (20, 30, 80, 255)
    # a ferry's hull on the water line and a star above it
    for x in range(size // 5, size - size // 5):
        for y in range(size * 11 // 20, size * 13 // 20):
            inset = (y - size * 11 // 20)
            if size // 5 + inset <= x < size - size // 5 - inset:
                img[y][x] = (230, 230, 240, 255)
    sx, sy = size // 2, size // 4
    for d in range(-(size // 8), size // 8 + 1):
        img[sy][sx + d] = (255, 220, 80, 255)
        img[sy + d][sx] = (255, 220, 80, 255)
    return img


def help_cursor():
    img = canvas(32, 32)
    # an arrow with a question mark beside it
    for y in range(16):
        for x in range(y // 2 + 1):
            img[y][x] = (0, 0, 0, 255) if x in (0, y // 2) or y == 15 else (255, 255, 255, 255)
    q = ["0110", "1001", "0001", "0010", "0100", "0000", "0100"]
    for y, row in enumerate(q):
        for x, ch in enumerate(row):
            if ch == "1":
                draw_thick(img, [(14 + 2 * x, 4 + 2 * y)], (0, 0, 160, 255), 2)
    return img


def write_tick_bitmap(path, size=11):
    img = canvas(size, size, (0, 255, 0, 255))
    draw_thick(img, tick_points(size), (0, 0, 0, 255), 2)
    pixels = bmp_rows(img, size, size, 24)
    info = struct.pack("<IiiHHIIiiII", 40, size, size, 1, 24, 0, len(pixels), 2835, 2835, 0, 0)
    head = struct.pack("<2sIHHI", b"BM", 14 + len(info) + len(pixels), 0, 0, 14 + len(info))
    with open(path, "wb") as f:
        f.write(head + info + pixels)


if __name__ == "__main__":
    write_icon_file(os.path.join(HERE, "ferry2.ico"),
                    [(ferry_icon(32), 32, 32), (ferry_icon(16), 16, 16)], 1)
    write_icon_file(os.path.join(HERE, "help.cur"), [(help_cursor(), 32, 32)], 2, hotspot=(0, 0))
    write_tick_bitmap(os.path.join(HERE, "tick.bmp"))
