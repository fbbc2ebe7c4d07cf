"""Levels: reads the tables in sectors/ and writes the text that the game reads."""
import re

import pathshapes

LEVEL = re.compile(r"level (\d+), (.+), by (.+), view ([1-4])$")
NUMBERS = re.compile(r"fire (\d+)\s+dive (\d+)\s+bonus (\d+)$")
WAVE = re.compile(r"wave (\d+)$")
SHIP_MARGIN = 3.0  # units: half a ship, so that none pops up at the edge of the picture
BOSS_MARGIN = 11.0
FIRST_BOSS = 500


class Level:
    """One level; fire, dive and bonus are what its groups have unless they say otherwise."""

    def __init__(self, number, title, author, view):
        self.number, self.title, self.author, self.view = number, title, author, view
        self.fire = self.dive = self.bonus = 0
        self.waves = []


class Wave:
    def __init__(self, bonus):
        self.bonus = bonus
        self.groups = []

    def layout(self):
        return tuple((group.path, group.kind, group.ships) for group in self.groups)


class Group:
    def __init__(self, words, level):
        self.path, *numbers, dives = words[:6]
        self.kind, self.ships, self.every, self.start = (int(value) for value in numbers)
        self.fire, self.bonus = level.fire, level.bonus
        self.dive = 0 if dives == "-" else 1 if dives.endswith("!") else level.dive
        self.dives = [0] if dives == "-" else [int(kind) for kind in dives.rstrip("!").split(",")]
        for word in words[6:]:
            name, value = word.split("=")
            if name not in ("fire", "dive", "bonus"):
                raise ValueError(f"{name} is no property of a group")
            setattr(self, name, int(value))

    @property
    def shape(self):
        return self.path.rstrip("*")

    @property
    def mirrored(self):
        return self.path.endswith("*")

    @property
    def margin(self):
        return BOSS_MARGIN if self.kind >= FIRST_BOSS else SHIP_MARGIN


def read_levels(table, shapes):
    found = []
    for number, line in enumerate(table.read_text("ascii").splitlines(), 1):
        line = line.split("#")[0].strip()
        try:
            if line:
                read_line(line, found, shapes)
        except (ValueError, IndexError) as fault:
            raise ValueError(f"{table.name}, line {number}: {fault}") from fault
    return found


def read_line(line, found, shapes):
    if match := LEVEL.match(line):
        found.append(Level(int(match[1]), match[2], match[3], int(match[4])))
    elif match := NUMBERS.match(line):
        level = found[-1]
        level.fire, level.dive, level.bonus = (int(value) for value in match.groups())
    elif match := WAVE.match(line):
        found[-1].waves.append(Wave(int(match[1])))
    else:
        words = line.split()
        if len(words) < 6:
            raise ValueError("a group has six columns at least")
        group = Group(words, found[-1])
        if group.shape not in shapes:
            raise ValueError(f"there is no path {group.shape}")
        found[-1].waves[-1].groups.append(group)


def number_text(value):
    text = f"{value:.2f}".rstrip("0").rstrip(".")
    return "0" if text == "-0" else text


def level_text(level, shapes):
    paths = {}  # (name, margin) -> index
    for wave in level.waves:
        for group in wave.groups:
            paths.setdefault((group.path, group.margin), len(paths))
    lines = [f"Title:{level.title}", f"Author:{level.author}", f"View:{level.view}", "",
             f"Number of paths:{len(paths)}", ""]
    for (name, margin), index in paths.items():
        points = pathshapes.world_path(shapes[name.rstrip("*")], name.endswith("*"), level.view,
                                       margin)
        label = name.replace("*", " (mirrored)")
        lines += [f"Path {index}, {label}, number of points:{len(points)}", "Points:"]
        lines += ["  " + " ".join(number_text(value) for value in point) for point in points]
        lines.append("")
    lines.append(f"Number of waves:{len(level.waves)}")
    for number, wave in enumerate(level.waves, 1):
        lines += ["", f"Wave {number}, bonus:{wave.bonus}",
                  f"Number of groups:{len(wave.groups)}"]
        for group in wave.groups:
            dives = ",".join(str(kind) for kind in group.dives)
            lines.append(f"  Bonus:{group.bonus} Path:{paths[group.path, group.margin]}"
                         f" Type:{group.kind} Ships:{group.ships} Interval:{group.every}"
                         f" Start:{group.start} Fire:{group.fire} Dive:{group.dive}"
                         f" Dives:{dives}")
    return "\n".join(lines) + "\n"
