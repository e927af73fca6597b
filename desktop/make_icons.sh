#!/usr/bin/env bash
# Renders the program's icon at the sizes of the desktop's icon theme (rsvg-convert, from
# Debian's librsvg2-bin). The PNGs are committed beside the SVG they are made from.
set -euo pipefail
cd "$(dirname "$0")/icons"
for size in 16 32 48 64 128 256; do
    rsvg-convert -w "$size" -h "$size" org.kelmoran.Kelmoran.svg -o "kelmoran-$size.png"
done
