"""A song: buses with a voice each, notes placed by bar, and the mix-down."""
import numpy as np

import notation as N
import synth as S


class Bus:
    """One instrument and its channel strip.

    level: dB; place: -1 to 1; room: how much goes to the reverb, kind: room, hall, space; echo: how much to the echo;
    duck: how deep the kick pushes it down; wide: stereo width; low: cut below; insert: effects of its own.
    """

    def __init__(self, song, voice, level, place=0.0, room=0.15, kind="hall", echo=0.0, duck=0.0, wide=1.0, low=0.0,
                 insert=()):
        self.song, self.voice, self.level, self.place = song, voice, level, place
        self.room, self.kind, self.echo, self.duck, self.wide, self.low = room, kind, echo, duck, wide, low
        self.insert = insert
        self.events = []          # (step, length, pitch, velocity, slide)
        self.fades = []           # (bar, dB)
        self.cutoffs = []         # (bar, Hz)

    def put(self, bar, notes, shift=0, velocity=1.0, until=None):
        """Places notes at a bar; until cuts a repeating pattern off."""
        base = bar * self.song.bar
        for n in notes:
            if until is not None and base + n.start >= until * self.song.bar:
                continue
            for p in n.pitches:
                slide = None if n.slide is None else n.slide + shift
                self.events.append((base + n.start, n.length, p + shift, min(1.0, n.velocity * velocity), slide))
        return self

    def line(self, bar, text, shift=0, velocity=1.0, times=1):
        """Places a melody, so many times in a row; returns the bar after it."""
        for _ in range(times):
            notes, length = N.melody(text, self.song.bar)
            self.put(bar, notes, shift, velocity)
            bar += length / self.song.bar
        return bar

    def fade(self, *points):
        self.fades += points
        return self

    def filter(self, *points):
        self.cutoffs += points
        return self


class Song:
    def __init__(self, title, bpm, bars, bar=16, swing=0.0, tail=6.0, target=-14.5, ceiling=-2.2):
        self.title, self.bpm, self.bars, self.bar, self.swing, self.target = title, bpm, bars, bar, swing, target
        self.step = 60.0 / bpm / 4.0
        self.length = S.samples(bars * bar * self.step + tail)
        self.ceiling = ceiling          # low enough that the coded file stays below full scale too
        self.buses, self.strokes = [], []
        self.kit_level, self.kit_room = -6.0, 0.10
        self.drum_fades, self.effects = [], []
        self.echo_steps = 3

    def bus(self, voice, level, **more):
        b = Bus(self, voice, level, **more)
        self.buses.append(b)
        return b

    def sample(self, step):
        late = self.swing if int(step) % 2 == 1 else 0.0
        return S.samples((step + late) * self.step)

    def drums(self, bar, times=1, level=0.0, **lines):
        """Places a bar or more of drum rhythms, so many times; a name's underscores read as blanks."""
        length = 0
        for name, text in lines.items():
            strokes, n = N.rhythm(text)
            length = max(length, n)
        for name, text in lines.items():
            strokes, n = N.rhythm(text)
            for rep in range(times):
                for again in range(0, length, n):
                    for at, _, velocity, _ in strokes:
                        self.strokes.append((bar * self.bar + rep * length + again + at, name.replace("_", " "), velocity * S.db(level)))
        return bar + times * length / self.bar

    def fill(self, bar, **lines):
        """Drums that replace what was placed on their kit pieces in that bar (a fill)."""
        first = bar * self.bar
        span = max(N.rhythm(t)[1] for t in lines.values())
        start = first + self.bar - span if span <= self.bar else first
        keep = ("kick", "crash", "boom", "swell", "shaker")
        self.strokes = [s for s in self.strokes if not (start <= s[0] < start + span and s[1].split()[0] not in keep)]
        self.drums(start / self.bar, **lines)

    def rise(self, bar, bars, level=-14.0):
        """Noise that climbs through the bars before a bar."""
        self.effects.append((bar - bars, S.riser(bars * self.bar * self.step), level))

    def swell(self, bar, level=-10.0):
        """A reversed cymbal that ends at a bar."""
        x = S.drum("swell")
        self.effects.append((bar - x.shape[-1] / S.RATE / (self.step * self.bar), x, level))

    def hit(self, bar, level=-9.0):
        self.effects.append((bar, S.drum("boom"), level))

    # ------------------------------------------------------------ rendering

    def ramp(self, points, convert):
        """Break points (bar, value) as one value a sample."""
        points = sorted(points)
        at = [S.samples(b * self.bar * self.step) for b, _ in points]
        return np.interp(np.arange(self.length), at, [convert(v) for _, v in points])

    def render_bus(self, b):
        out = np.zeros((2, self.length))
        cache = {}
        for step, length, pitch, velocity, slide in b.events:
            velocity = round(velocity * 12) / 12
            key = (length, pitch, velocity, slide)
            if key not in cache:
                cache[key] = b.voice(pitch, length * self.step, velocity, slide).astype(np.float32)
            x = cache[key]
            s = max(0, self.sample(step))
            e = min(self.length, s + x.shape[-1])
            if e > s:
                out[:, s:e] += x[:, :e - s]
        for effect in b.insert:
            out = effect(out)
        if b.low:
            out = S.lowcut(out, b.low)
        if b.cutoffs:
            out = S.swept(out, np.exp(self.ramp(b.cutoffs, np.log)), 0.8, 2, block=256)
        if b.wide != 1.0:
            out = S.width(out, b.wide)
        if b.place:
            angle = (b.place + 1.0) * np.pi / 4.0
            out *= np.array([[np.cos(angle) * 1.4142], [np.sin(angle) * 1.4142]])
        if b.fades:
            out *= self.ramp(b.fades, lambda v: S.db(v) if v > -60 else 0.0)
        return out

    def render(self, log=None):
        """The finished track, mastered, with an end faded to silence."""
        mix = np.zeros((2, self.length))
        rooms = {}
        echoes = np.zeros((2, self.length))
        kit = np.zeros((2, self.length))
        kicks = []
        for i, (step, name, velocity) in enumerate(sorted(self.strokes)):
            x = S.drum(name, int(step) % 3 if name in ("hat", "shaker", "snare tight", "brush") else 0)
            s = max(0, self.sample(step))
            e = min(self.length, s + x.shape[-1])
            if e > s:
                kit[:, s:e] += x[:, :e - s] * velocity
            if name.startswith("kick"):
                kicks.append(s)
        if self.drum_fades:
            kit *= self.ramp(self.drum_fades, S.db)
        kit = S.compress(kit * S.db(self.kit_level), -20.0, 1.8, 0.03)
        mix += kit
        rooms["room"] = kit * self.kit_room
        for bar, x, level in self.effects:
            s = S.samples(bar * self.bar * self.step)
            x = x[:, max(0, -s):]
            s = max(0, s)
            e = min(self.length, s + x.shape[-1])
            mix[:, s:e] += x[:, :e - s] * S.db(level)
            rooms.setdefault("hall", np.zeros((2, self.length)))[:, s:e] += x[:, :e - s] * S.db(level) * 0.3
        for b in self.buses:
            x = self.render_bus(b) * S.db(b.level)
            if log:
                active = np.abs(x).max(axis=0) > 1e-3
                rms = 10 * np.log10((x[:, active] ** 2).mean() + 1e-12) if active.any() else -120.0
                log("    %-14s peak %6.1f dB, rms %6.1f dB, active %4.0f s"
                    % (getattr(b, "name", b.voice.__qualname__.split(".")[0]), 20 * np.log10(np.abs(x).max() + 1e-12), rms, active.sum() / S.RATE))
            if b.duck and kicks:
                x *= S.ducking(self.length, kicks, b.duck)
            mix += x
            if b.room:
                rooms.setdefault(b.kind, np.zeros((2, self.length)))
                rooms[b.kind] += x * b.room
            if b.echo:
                echoes += x * b.echo
        if echoes.any():
            wet = S.echo(echoes, self.echo_steps * self.step)
            mix += wet
            rooms.setdefault("hall", np.zeros((2, self.length)))
            rooms["hall"] += wet * 0.25
        for kind, send in rooms.items():
            mix += S.lowcut(S.reverb(send, kind), 160.0)
        y = S.master(mix, self.target, self.ceiling)
        # Trim the silent end, then let the last second fall to nothing.
        loud = np.abs(y).max(axis=0) > 0.0015
        end = min(self.length, len(loud) - int(np.argmax(loud[::-1])) + S.samples(0.1)) if loud.any() else self.length
        y = S.edges(y[:, :end], 0.004, 1.2)
        return np.concatenate([np.zeros((2, S.samples(0.06))), y], axis=1)     # a breath before the first stroke
