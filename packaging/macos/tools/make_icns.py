#!/usr/bin/env python3
"""make_icns.py SVG ICNS: draws the icon (with rsvg-convert) in all sizes that macOS asks for and packs the pictures."""

import struct
import subprocess
import sys

# The kinds (four letters) of each size in pixels. The smallest are 16 and 32 points at double resolution. From these
# the system makes the pictures for displays of single resolution, whose own kinds cannot hold PNG.
KINDS = {32: ["ic11"], 64: ["ic12"], 128: ["ic07"], 256: ["ic08", "ic13"], 512: ["ic09", "ic14"], 1024: ["ic10"]}


def main():
    source, target = sys.argv[1:]
    body = b""
    for pixels, kinds in KINDS.items():
        picture = subprocess.run(["rsvg-convert", "--width", str(pixels), "--height", str(pixels), source], check=True,
                                 capture_output=True).stdout
        for kind in kinds:
            body += kind.encode() + struct.pack(">I", len(picture) + 8) + picture
    with open(target, "wb") as file:
        file.write(b"icns" + struct.pack(">I", len(body) + 8) + body)


main()
