#!/usr/bin/python3
"""Writes assets/levels/Level1.lvl to Level36.lvl from the tables in this folder.

paths.txt has the shapes of the flight paths, sectors/*.txt the levels. Run without arguments; it
writes the same files every time and stops with file, line and reason at a slip.
"""
import pathlib
import sys

import levels
import pathshapes

HERE = pathlib.Path(__file__).resolve().parent
OUT = HERE.parent.parent / "assets" / "levels"


def refuse_repeats(found):
    """A wave that a player has met before is no news."""
    seen = {}
    for level in found:
        for layout in (wave.layout() for wave in level.waves):
            if layout in seen:
                raise ValueError(f"levels {seen[layout]} and {level.number} share a wave")
            seen[layout] = level.number


def main():
    try:
        shapes = pathshapes.read_shapes(HERE / "paths.txt")
        found = {}
        for table in sorted((HERE / "sectors").glob("*.txt")):
            for level in levels.read_levels(table, shapes):
                if level.number in found:
                    raise ValueError(f"{table.name}: level {level.number} stands there twice")
                found[level.number] = level
        refuse_repeats(found.values())
    except ValueError as fault:
        print(f"build.py: {fault}", file=sys.stderr)
        return 1
    OUT.mkdir(parents=True, exist_ok=True)
    for number, level in sorted(found.items()):
        (OUT / f"Level{number}.lvl").write_text(levels.level_text(level, shapes), "ascii")
    print(f"{len(found)} levels, {len(shapes)} path shapes")
    return 0


if __name__ == "__main__":
    sys.exit(main())
