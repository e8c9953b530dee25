#!/usr/bin/env python3
"""Saves the screen of an Xvfb server started with -fbdir as a PNG.

Xvfb keeps its screen in <fbdir>/Xvfb_screen0 as an XWD image; this reads
the 24- or 32-bit form it writes and writes an 8-bit RGB PNG, optionally cut
to a rectangle: xvfb-shot.py FBDIR OUT.png [X Y WIDTH HEIGHT]
"""
import struct
import sys
import zlib


def read_xwd(path):
    with open(path, "rb") as f:
        data = f.read()
    (header_size, _version, _format, _depth, width, height, _xoffset, byte_order, _unit, _bit_order,
     _pad, bits_per_pixel, bytes_per_line, _visual, red_mask, green_mask, blue_mask, _bits_rgb,
     _entries, ncolors, _ww, _wh, _wx, _wy, _border) = struct.unpack(">25I", data[:100])
    if bits_per_pixel != 32:
        sys.exit(f"xvfb-shot: {bits_per_pixel} bits per pixel; start Xvfb with a depth of 24")
    start = header_size + ncolors * 12
    pixels = data[start:start + bytes_per_line * height]
    order = "<" if byte_order == 0 else ">"
    shifts = [mask.bit_length() - 8 for mask in (red_mask, green_mask, blue_mask)]
    return width, height, bytes_per_line, pixels, order, shifts


def to_png(width, height, rows):
    raw = b"".join(b"\x00" + row for row in rows)
    def chunk(kind, body):
        return struct.pack(">I", len(body)) + kind + body + struct.pack(">I", zlib.crc32(kind + body))
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0))
            + chunk(b"IDAT", zlib.compress(raw, 9)) + chunk(b"IEND", b""))


def main():
    fbdir, out = sys.argv[1], sys.argv[2]
    width, height, stride, pixels, order, shifts = read_xwd(fbdir + "/Xvfb_screen0")
    x, y, w, h = (int(v) for v in sys.argv[3:7]) if len(sys.argv) >= 7 else (0, 0, width, height)
    x, y = max(0, x), max(0, y)
    w, h = min(w, width - x), min(h, height - y)
    rows = []
    for row in range(y, y + h):
        line = pixels[row * stride + x * 4: row * stride + (x + w) * 4]
        values = struct.unpack(f"{order}{w}I", line)
        rows.append(bytes(b for v in values for b in ((v >> shifts[0]) & 255, (v >> shifts[1]) & 255,
                                                       (v >> shifts[2]) & 255)))
    with open(out, "wb") as f:
        f.write(to_png(w, h, rows))


if __name__ == "__main__":
    main()
