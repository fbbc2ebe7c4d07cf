"""Flight paths: reads the moves of paths.txt, flies them, and lays them into a camera view."""
import math
import re

TILT = 0.5  # seen from behind: how much nearer to the player a way lies for each unit further down
EYE = 50.0  # units from the eye to the middle of the field, in every view
HALF_ANGLE = math.tan(math.radians(30.0))  # of the picture, upwards
ASPECT = 4.0 / 3.0  # the window's
MOVE = re.compile(r"""(?P<kind>[FLRCJH@])(?P<args>-?[\d.>x,-]+)$""")
STEP = 0.5  # units between two points before thinning
TOLERANCE = 0.25  # how far a thinned path may stray from the curve

# How the flat field lies in each view: rows run along "across", the player is "down".
VIEWS = {
    # view: (scale across, scale down, shift down)
    1: (1.0, 1.0, 0.0),
    2: (0.75, 1.0, -8.0),
    3: (0.75, 1.0, -8.0),
    4: (1.15, 1.15, 0.0),
}


class Shape:
    def __init__(self, name, start, heading, moves, where):
        self.name, self.start, self.heading = name, start, heading
        self.moves, self.where = moves, where


def read_shapes(path):
    shapes = {}
    for number, line in enumerate(path.read_text("ascii").splitlines(), 1):
        words = line.split("#")[0].split()
        if not words:
            continue
        where = f"{path.name}, line {number}"
        if len(words) < 4:
            raise ValueError(f"{where}: a name, a start, a heading and moves are needed")
        name, start, heading, *moves = words
        if name in shapes:
            raise ValueError(f"{where}: there is a path {name} already")
        try:
            across, down = (float(value) for value in start.split(","))
            shapes[name] = Shape(name, (across, down), float(heading), moves, where)
            fly(shapes[name])
        except ValueError as fault:
            raise ValueError(f"{where}: {fault}") from fault
    return shapes


class Pen:
    """A ship that draws its track: across, down, height and heading."""

    def __init__(self, start, heading):
        self.across, self.down = start
        self.height = 0.0
        self.heading = heading
        self.climb = 0.0  # height to gain during the next move
        self.track = []

    def mark(self):
        self.track.append((self.across, self.down, self.height))

    def run(self, positions):
        """Goes through the positions of one move, gaining height evenly."""
        base, count = self.height, len(positions)
        for i, (self.across, self.down) in enumerate(positions, 1):
            self.height = base + self.climb * i / count
            self.mark()
        self.climb = 0.0

    def ahead(self, length):
        turn = math.radians(self.heading)
        steps = max(1, round(length / STEP))
        self.run([(self.across + math.sin(turn) * length * i / steps,
                   self.down - math.cos(turn) * length * i / steps) for i in range(1, steps + 1)])

    def arc(self, side, radius, end_radius, degrees):
        steps = max(2, round(math.radians(degrees) * max(radius, end_radius) / STEP))
        across, down, positions = self.across, self.down, []
        for i in range(steps):
            length = math.radians(degrees) / steps * (
                radius + (end_radius - radius) * (i + 0.5) / steps)
            self.heading += side * degrees / steps / 2
            turn = math.radians(self.heading)
            across += math.sin(turn) * length
            down -= math.cos(turn) * length
            self.heading += side * degrees / steps / 2
            positions.append((across, down))
        self.run(positions)

    def line(self, across, down):
        if (across, down) == (self.across, self.down):
            return
        self.heading = math.degrees(math.atan2(across - self.across, self.down - down))
        self.ahead(math.hypot(across - self.across, down - self.down))

    def curve(self, across, down, heading):
        length = math.hypot(across - self.across, down - self.down)
        out, into = math.radians(self.heading), math.radians(heading)
        steps = max(4, round(1.3 * length / STEP))
        points = ((self.across, self.down),
                  (self.across + math.sin(out) * length / 2.5,
                   self.down - math.cos(out) * length / 2.5),
                  (across - math.sin(into) * length / 2.5, down + math.cos(into) * length / 2.5),
                  (across, down))
        positions = []
        for i in range(1, steps + 1):
            t = i / steps
            weights = ((1 - t) ** 3, 3 * t * (1 - t) ** 2, 3 * t * t * (1 - t), t ** 3)
            positions.append(tuple(sum(w * p[axis] for w, p in zip(weights, points))
                                   for axis in (0, 1)))
        self.run(positions)
        self.heading = heading


def fly(shape):
    """The track of a shape on the flat field: (across, down, height)."""
    pen = Pen(shape.start, shape.heading)
    for position, move in enumerate(shape.moves):
        match = MOVE.match(move)
        if not match:
            raise ValueError(f"the move {move} is none")
        kind, args = match["kind"], match["args"]
        if kind == "@":
            if position:
                raise ValueError("@ belongs at the start")
            pen.height = float(args)
            continue
        if not pen.track:
            pen.mark()
        if kind == "F":
            pen.ahead(float(args))
        elif kind in "LR":
            radii, degrees = args.split("x")
            radius = [float(value) for value in radii.split(">")]
            pen.arc(-1 if kind == "L" else 1, radius[0], radius[-1], float(degrees))
        elif kind == "H":
            pen.climb = float(args)
        else:
            values = [float(value) for value in args.split(",")]
            (pen.line if kind == "J" else pen.curve)(*values)
    return pen.track


def to_world(view, across, down, height):
    """A point of the flat field as the game's x, y, z in that view."""
    scale_across, scale_down, shift = VIEWS[view]
    across, down = across * scale_across, down * scale_down + shift
    if view == 1:
        return across, height, down
    if view == 2:
        return -height, across, down
    if view == 3:
        return height, -across, down
    # Seen from behind, the rows hang in the picture, 34 units ahead. What flies lower flies nearer:
    # otherwise all ways would lie at the back of the picture, where ships are small.
    return across, -1.0 - down, height - 34.0 + TILT * max(0.0, down + 20.0)


def outside(view, point, margin):
    """Whether a point lies outside the picture of its view, by that many units at its depth."""
    x, y, z = point
    depth, right, up = {1: (EYE - y, x, -z), 2: (EYE + x, z, y),
                        3: (EYE - x, -z, y), 4: (EYE - z, x, y)}[view]
    if depth <= 0.0:
        return True
    half = depth * HALF_ANGLE
    return abs(up) > half + margin or abs(right) > half * ASPECT + margin


def thin(points):
    """Leaves out points that a straight flight passes closer than the tolerance anyway."""
    if len(points) < 3:
        return points
    first, last = points[0], points[-1]
    line = [b - a for a, b in zip(first, last)]
    length = sum(d * d for d in line)
    worst, worst_distance = 0, -1.0
    for i in range(1, len(points) - 1):
        offset = [b - a for a, b in zip(first, points[i])]
        t = min(1.0, max(0.0, sum(a * b for a, b in zip(offset, line)) / length)) if length else 0.0
        distance = math.dist(points[i], [a + t * d for a, d in zip(first, line)])
        if distance > worst_distance:
            worst, worst_distance = i, distance
    if worst_distance <= TOLERANCE:
        return [first, last]
    return thin(points[:worst + 1]) + thin(points[worst:])[1:]


def world_path(shape, mirrored, view, margin):
    """The points of a shape in a view, with the run-in from outside the picture."""
    track = fly(shape)
    if mirrored:
        track = [(-across, down, height) for across, down, height in track]
    points = [to_world(view, *point) for point in track]
    ahead = [b - a for a, b in zip(points[0], points[1])]
    length = math.hypot(*ahead)
    start = points[0]
    for _ in range(400):
        if outside(view, start, margin):
            break
        start = tuple(value - step / length for value, step in zip(start, ahead))
    else:
        raise ValueError(f"path {shape.name} comes from nowhere in view {view}")
    return thin([start] + points if start != points[0] else points)
