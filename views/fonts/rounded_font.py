#!/usr/bin/python3
"""Derives Kelo Rounded from a Quicksand face: the same glyphs, with the ten digits on one
advance width so that counts and times do not jitter as they change, centred in it. Qt 6.4 has no
way to switch on a font's tabular figures, so the figures are made tabular here.

The SIL Open Font License asks a modified font to carry a name of its own; the family is renamed.

Usage: rounded_font.py SOURCE.ttf OUTPUT.ttf
"""

import sys

from fontTools.ttLib import TTFont

FAMILY = "Kelo Rounded"


def make_digits_tabular(font):
    cmap = font.getBestCmap()
    digits = [cmap[ord(c)] for c in "0123456789"]
    metrics = font["hmtx"].metrics
    glyphs = font["glyf"]
    advance = max(metrics[name][0] for name in digits)
    for name in digits:
        old_advance, _ = metrics[name]
        shift = (advance - old_advance) // 2
        glyph = glyphs[name]
        if glyph.isComposite():
            for component in glyph.components:
                component.x += shift
        elif glyph.numberOfContours > 0:
            glyph.coordinates.translate((shift, 0))
        glyph.recalcBounds(glyphs)
        metrics[name] = (advance, getattr(glyph, "xMin", 0))
    # Kerning would move digits against each other again.
    if "GPOS" in font:
        del font["GPOS"]


def rename(font, style):
    names = font["name"]
    for record in list(names.names):
        if record.nameID in (1, 3, 4, 6, 16, 17):
            names.removeNames(nameID=record.nameID)
    names.setName(FAMILY, 1, 3, 1, 0x409)
    names.setName(style, 2, 3, 1, 0x409)
    names.setName("%s %s; derived from Quicksand" % (FAMILY, style), 3, 3, 1, 0x409)
    names.setName("%s %s" % (FAMILY, style), 4, 3, 1, 0x409)
    names.setName("%s-%s" % (FAMILY.replace(" ", ""), style), 6, 3, 1, 0x409)


def main(source, output):
    font = TTFont(source)
    style = font["name"].getDebugName(2) or "Regular"
    make_digits_tabular(font)
    rename(font, style)
    font.save(output)


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    main(sys.argv[1], sys.argv[2])
