#!/usr/bin/python3
"""Draws every path shape as its level makers see it: plot_paths.py FILE.png [VIEW]

The frame is the picture of the view (1 when none is given), the rows of dots the formation, the
green end the start. Grey lines fly above or below the field.
"""
import pathlib
import sys

from PIL import Image, ImageDraw

import pathshapes

CELL, COLUMNS = 230, 9


def screen(view, point):
    x, y, z = point
    depth, right, up = {1: (50 - y, x, -z), 2: (50 + x, z, y), 3: (50 - x, -z, y),
                        4: (50 - z, x, y)}[view]
    if depth < 5:
        return None
    half = depth * pathshapes.HALF_ANGLE
    return right / half, up / half


def main():
    view = int(sys.argv[2]) if len(sys.argv) > 2 else 1
    shapes = pathshapes.read_shapes(pathlib.Path(__file__).with_name("paths.txt"))
    rows = -(-len(shapes) // COLUMNS)
    image = Image.new("RGB", (COLUMNS * CELL, rows * CELL), "black")
    draw = ImageDraw.Draw(image)
    for i, shape in enumerate(shapes.values()):
        left, top = i % COLUMNS * CELL, i // COLUMNS * CELL
        middle = (left + CELL / 2, top + CELL / 2 + 6)

        def at(point):
            place = screen(view, point)
            return place and (middle[0] + place[0] * CELL * 0.32, middle[1] - place[1] * CELL * 0.32)
        draw.rectangle([left, top, left + CELL - 1, top + CELL - 1], outline=(40, 40, 60))
        width, height = CELL * 0.32 * 4 / 3, CELL * 0.32
        draw.rectangle([middle[0] - width, middle[1] - height, middle[0] + width,
                        middle[1] + height], outline=(70, 70, 110))
        for row in range(4):
            for column in range(8):
                spot = at(pathshapes.to_world(view, 0, 0, 0))
                slot = {1: ((column - 3.5) * 5, 0, row * 5 - 14)}.get(
                    view, (0, (column - 3.5) * 5, row * 5 - 22) if view < 4 else
                    ((column - 3.5) * 5, 13 - 5 * row, -34))
                spot = at(slot)
                draw.point(spot, fill=(120, 60, 60))
        points = pathshapes.world_path(shape, False, view, 3.0)
        for first, last in zip(points, points[1:]):
            a, b = at(first), at(last)
            if a and b:
                flat = abs(first[{1: 1, 2: 0, 3: 0, 4: 1}[view]]) < 0.01 or view == 4
                draw.line([a, b], fill=(255, 220, 80) if flat else (130, 130, 130))
        for point, colour in ((points[0], "lime"), (points[-1], "red")):
            spot = at(point)
            if spot:
                draw.ellipse([spot[0] - 3, spot[1] - 3, spot[0] + 3, spot[1] + 3], fill=colour)
        flown = sum(sum((a - b) ** 2 for a, b in zip(p, q)) ** 0.5
                    for p, q in zip(points, points[1:]))
        draw.text((left + 4, top + 3), f"{shape.name}  {flown:.0f}/{len(points)}", fill="white")
    image.save(sys.argv[1])


if __name__ == "__main__":
    main()
