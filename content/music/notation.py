"""The text notation of the scores.

Time is counted in steps, four to a beat: a bar of four beats has sixteen.

Melodies:  "A4:6 E5:6 ^D5:2 r:2 | A4+E5:16!"
    A4:6     a note and its length in steps; without a length the last one holds
    r:2      a rest           A4+E5    notes together
    ^D5      slides from the note before         !  loud     ?  soft      '  short
    |        must fall on a bar line, else the score is refused
Chords:    "Am7:16 | F/A:8 G:8"   symbol, length (a bar without it)
Rhythms:   "x..x ..o." one sign a step: X loud, x normal, o soft, - holds on, . silence
"""
import re

NAMES = {"C": 0, "D": 2, "E": 4, "F": 5, "G": 7, "A": 9, "B": 11}
QUALITIES = {"": (0, 4, 7), "m": (0, 3, 7), "7": (0, 4, 7, 10), "maj7": (0, 4, 7, 11), "m7": (0, 3, 7, 10),
             "9": (0, 4, 7, 10, 14), "maj9": (0, 4, 7, 11, 14), "m9": (0, 3, 7, 10, 14), "add9": (0, 4, 7, 14),
             "madd9": (0, 3, 7, 14), "sus2": (0, 2, 7), "sus4": (0, 5, 7), "7sus4": (0, 5, 7, 10), "5": (0, 7),
             "dim": (0, 3, 6), "6": (0, 4, 7, 9), "m6": (0, 3, 7, 9), "m11": (0, 3, 7, 10, 17), "aug": (0, 4, 8),
             "maj7#11": (0, 4, 7, 11, 18), "13": (0, 4, 7, 10, 21), "quart": (0, 5, 10)}
LOUD = {"X": 1.0, "x": 0.8, "o": 0.5}


class Note:
    """A note of a line: start and length in steps, pitches, loudness, the pitch it slides from."""

    def __init__(self, start, length, pitches, velocity=0.8, slide=None):
        self.start, self.length, self.pitches, self.velocity, self.slide = start, length, pitches, velocity, slide


def pitch(text):
    m = re.fullmatch(r"([A-G])([#b]*)(-?\d)", text)
    if not m:
        raise ValueError("not a note: %r" % text)
    return NAMES[m[1]] + m[2].count("#") - m[2].count("b") + 12 * (int(m[3]) + 1)


def melody(text, bar=16, shift=0):
    """Notes of a line; shift transposes by semitones."""
    out, at, length, last = [], 0, 4, None
    for token in text.split():
        if token == "|":
            if at % bar:
                raise ValueError("bar line at step %d (bars of %d) in %r" % (at, bar, text))
            continue
        m = re.fullmatch(r"(\^?)([A-G#b0-9+-]+|r)(?::(\d+))?([!?']*)", token)
        if not m:
            raise ValueError("cannot read %r in %r" % (token, text))
        length = int(m[3]) if m[3] else length
        if m[2] != "r":
            notes = [pitch(p) + shift for p in m[2].split("+")]
            velocity = 1.0 if "!" in m[4] else 0.55 if "?" in m[4] else 0.8
            sounding = length * 0.5 if "'" in m[4] else length
            out.append(Note(at, sounding, notes, velocity, last if m[1] else None))
            last = notes[-1]
        at += length
    return out, at


class Chord:
    def __init__(self, start, length, root, tones, bass):
        self.start, self.length, self.root, self.tones, self.bass = start, length, root, tones, bass
        self.voicing = []


def chords(text, bar=16, low=55, shift=0):
    """Chords with voicings that move as little as possible from one to the next, from the note low upwards."""
    out, at, before = [], 0, None
    for token in text.split():
        if token == "|":
            if at % bar:
                raise ValueError("bar line at step %d in %r" % (at, text))
            continue
        m = re.fullmatch(r"([A-G][#b]?)([a-z0-9#]*)(?:/([A-G][#b]?))?(?::(\d+))?", token)
        if not m or m[2] not in QUALITIES:
            raise ValueError("cannot read chord %r" % token)
        length = int(m[4]) if m[4] else bar
        root = (pitch(m[1] + "0") + shift) % 12
        bass = (pitch(m[3] + "0") + shift) % 12 if m[3] else root
        tones = [(root + q) % 12 for q in QUALITIES[m[2]]]
        chord = Chord(at, length, root, tones, bass)
        if len(tones) > 4:
            tones = tones[1:]                      # the bass has the root
        choices = []
        for floor in range(low - 3, low + 9):
            voicing = sorted(floor + (t - floor) % 12 for t in tones)
            center = sum(voicing) / len(voicing)
            cost = abs(center - (low + 6.5)) * 0.5
            if before:
                cost += sum(min(abs(v - b) for b in before) for v in voicing) + 1.5 * abs(voicing[-1] - before[-1])
            if voicing[0] < 60 and any(b - a < 3 for a, b in zip(voicing, voicing[1:])):
                cost += 3.0                        # seconds in the depth only mud
            choices.append((cost, voicing))
        chord.voicing = min(choices)[1]
        before = chord.voicing
        out.append(chord)
        at += length
    return out, at


def chord_at(progression, step):
    for c in progression:
        if c.start <= step < c.start + c.length:
            return c
    return progression[-1]


def rhythm(text):
    """(start, length, loudness, sign) of the strokes of a rhythm."""
    text = re.sub(r"[\s|]", "", text)
    out = []
    for i, sign in enumerate(text):
        if sign in ".-":
            continue
        length = 1
        while i + length < len(text) and text[i + length] == "-":
            length += 1
        out.append((i, length, LOUD.get(sign, 0.8), sign))
    return out, len(text)


def held(progression):
    """The chords held through, as one would lay them on a pad."""
    return [Note(c.start, c.length, c.voicing, 0.8) for c in progression]


def strummed(progression, pattern, upward=0):
    """The chords struck in a rhythm that repeats."""
    strokes, length = rhythm(pattern)
    total = progression[-1].start + progression[-1].length
    out = []
    for base in range(0, total, length):
        for at, hold, velocity, _ in strokes:
            if base + at < total:
                out.append(Note(base + at, hold, [p + upward for p in chord_at(progression, base + at).voicing], velocity))
    return out


def arpeggio(progression, pattern, step=1, octave=0, gate=1.0, accent=4):
    """Broken chords: the pattern counts chord tones from 0 and goes on into the next octave; "." rests."""
    signs = pattern.split()
    total = progression[-1].start + progression[-1].length
    out, k = [], 0
    for at in range(0, total, step):
        sign = signs[k % len(signs)]
        k += 1
        if sign == ".":
            continue
        v = chord_at(progression, at).voicing
        i = int(sign)
        tone = v[i % len(v)] + 12 * (i // len(v)) + 12 * octave
        out.append(Note(at, step * gate, [tone], 0.95 if (at // step) % accent == 0 else 0.72))
    return out


def bass(progression, pattern, low=28, gate=0.92):
    """A bass under the chords. R root, O octave, F fifth, T third, S seventh or second below the root, - holds, . rests.
    Small letters play softly. low: the lowest note it uses."""
    text = re.sub(r"[\s|]", "", pattern)
    total = progression[-1].start + progression[-1].length
    out = []
    for at in range(total):
        sign = text[at % len(text)]
        if sign in ".-":
            continue
        length = 1
        while at + length < total and text[(at + length) % len(text)] == "-":
            length += 1
        c = chord_at(progression, at)
        root = low + (c.bass - low) % 12
        third = (c.tones[1] - c.root) % 12
        move = {"R": 0, "O": 12, "F": 7, "T": third, "S": -2, "D": -5, "L": -1}[sign.upper()]
        if sign.upper() == "F" and (c.root + 6) % 12 in c.tones and (c.root + 7) % 12 not in c.tones:
            move = 6
        out.append(Note(at, length * gate, [root + move], 0.9 if sign.isupper() else 0.6))
    return out
