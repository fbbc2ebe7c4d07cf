"""The instruments of the game's music: presets of the synthesiser's voices, all brought to one loudness."""
import functools

import numpy as np

import synth as S


def even(voice, midi, seconds=0.6):
    """Scales a voice so that its test note is as loud as every other instrument's."""
    x = voice(midi, seconds, 0.8, None)
    power = sum(10.0 ** (S.loudest(side) / 10.0) for side in x)
    gain = S.db(-20.0 - 10.0 * np.log10(power))

    def level(pitch, length, velocity=0.8, slide=None):
        return voice(pitch, length, velocity, slide) * gain
    return level


def named(make):
    @functools.wraps(make)
    def wrapper(*a, **k):
        v = make(*a, **k)
        v.__qualname__ = make.__name__
        return v
    return wrapper


# ---- leads

@named
def saw_lead():
    return even(S.subtractive([("saw", 0.5, 0, -8, -0.35), ("saw", 0.5, 0, 8, 0.35), ("square", 0.22, -12, 0, 0)],
                              (0.008, 0.5, 0.72, 0.16), 2300, 0.55, 1.3, (0.004, 0.30, 0.25, 0.2), q=1.1, vibrato=0.16), 72)


@named
def soft_lead():
    return even(S.subtractive([("hollow", 0.7, 0, 0, 0), ("hollow", 0.25, 12, 4, 0.4), ("triangle", 0.3, 0, -5, -0.4)],
                              (0.045, 0.6, 0.8, 0.30), 2600, 0.5, 0.6, (0.06, 0.6, 0.5, 0.3), q=0.7, poles=2, vibrato=0.17,
                              hiss=0.006, slide=0.09), 72)


@named
def pulse_lead():
    return even(S.subtractive([("pwm", 0.6, 0, -5, -0.3), ("pwm", 0.6, 0, 6, 0.3)], (0.006, 0.5, 0.7, 0.14), 3200, 0.5, 0.9,
                              (0.004, 0.25, 0.3, 0.2), q=0.9, vibrato=0.14), 72)


@named
def cello_lead():
    return even(S.subtractive([("saw", 0.5, 0, -4, -0.2), ("saw", 0.4, 0, 5, 0.2), ("reed", 0.4, 0, 0, 0)],
                              (0.09, 0.6, 0.85, 0.28), 1500, 0.4, 0.7, (0.12, 0.7, 0.6, 0.3), q=0.8, vibrato=0.20, slide=0.10), 62)


@named
def brass():
    return even(S.subtractive([("saw", 0.45, 0, -9, -0.5), ("saw", 0.45, 0, 9, 0.5), ("saw", 0.4, 0, 0, 0), ("saw", 0.25, -12, 3, 0)],
                              (0.025, 0.6, 0.78, 0.20), 620, 0.5, 2.3, (0.07, 0.5, 0.55, 0.2), q=0.9, touch=1.0, vibrato=0.08), 62)


# ---- chords

SEVEN = [(-21, -0.9), (-13, 0.6), (-6, -0.3), (0, 0.0), (7, 0.35), (14, -0.6), (22, 0.9)]


@named
def pad(bright=1300, attack=0.5, release=1.1):
    return even(S.subtractive([("saw", 0.3, 0, c, p) for c, p in SEVEN] + [("triangle", 0.3, -12, 0, 0)],
                              (attack, 1.0, 0.88, release), bright, 0.3, 0.7, (attack * 1.6, 1.5, 0.5, 1.0), q=0.7), 60, 1.5)


@named
def warm_pad():
    return even(S.subtractive([("pwm", 0.5, 0, -6, -0.7), ("pwm", 0.5, 0, 7, 0.7), ("saw", 0.25, 12, 3, 0.2), ("triangle", 0.5, -12, 0, 0)],
                              (0.8, 1.0, 0.9, 1.6), 900, 0.3, 0.9, (1.2, 2.0, 0.5, 1.0), q=0.7), 60, 2.0)


@named
def strings(bright=2600):
    return even(S.subtractive([("saw", 0.3, 0, c, p) for c, p in SEVEN], (0.10, 0.8, 0.85, 0.35), bright, 0.4, 0.5,
                              (0.1, 0.8, 0.5, 0.3), q=0.7, vibrato=0.05), 64, 1.0)


@named
def supersaw(bright=3800):
    return even(S.subtractive([("saw", 0.3, 0, c, p) for c, p in SEVEN] + [("saw", 0.2, 12, 5, -0.4), ("saw", 0.2, 12, -5, 0.4)],
                              (0.004, 0.5, 0.75, 0.14), bright, 0.3, 1.0, (0.003, 0.25, 0.2, 0.2), q=0.8), 64)


@named
def singers(vowel="ah", attack=0.35):
    return even(S.choir(vowel, attack), 62, 1.5)


@named
def epiano():
    return even(S.fm([(1, 1, 1.5, 0.5, 0.15, 1.0, 2.4), (1, 14, 0.45, 0.10, 0.0, 0.35, 0.6), (2, 1, 0.5, 0.4, 0.0, 0.15, 1.5)],
                     (0.002, 1.8, 0.25, 0.22)), 60)


@named
def organ():
    return even(S.subtractive([("organ", 0.6, 0, -3, -0.4), ("organ", 0.6, 0, 3, 0.4)], (0.006, 0.3, 0.9, 0.08), 4200, 0.2, 0.4,
                              (0.002, 0.1, 0.2, 0.1), q=0.6, poles=2), 60)


# ---- plucked and struck

@named
def pluck(bright=900, decay=0.16):
    return even(S.subtractive([("saw", 0.5, 0, -6, -0.4), ("square", 0.4, 0, 6, 0.4)], (0.002, 0.45, 0.0, 0.16), bright, 0.5, 2.8,
                              (0.001, decay, 0.0, 0.1), q=1.4, touch=1.0), 67, 0.2)


@named
def soft_pluck():
    return even(S.subtractive([("triangle", 0.7, 0, -4, -0.3), ("hollow", 0.4, 0, 5, 0.3), ("sine", 0.2, 12, 0, 0)],
                              (0.003, 0.6, 0.0, 0.4), 1300, 0.5, 2.0, (0.001, 0.25, 0.0, 0.2), q=0.8, poles=2), 67, 0.3)


@named
def bell():
    return even(S.fm([(1, 3.5, 1.5, 0.7, 0.08, 0.8, 2.2), (2, 7.02, 0.8, 0.2, 0.0, 0.25, 1.0), (1, 1, 0.2, 1.0, 0.1, 0.5, 2.6)],
                     (0.002, 2.2, 0.12, 0.9)), 76)


@named
def glass():
    return even(S.fm([(1, 2.0, 0.9, 1.2, 0.1, 0.8, 3.0), (3.01, 5.0, 0.5, 0.5, 0.0, 0.16, 1.2)], (0.012, 1.6, 0.3, 1.0), vibrato=0.06), 72)


@named
def clav():
    return even(S.subtractive([("pwm", 0.6, 0, 0, -0.1), ("square", 0.4, 12, 3, 0.15)], (0.001, 0.30, 0.12, 0.06), 1500, 0.5, 2.2,
                              (0.001, 0.10, 0.0, 0.1), q=1.6, touch=1.3), 64, 0.2)


# ---- basses

@named
def saw_bass():
    return even(S.subtractive([("saw", 0.6, 0, -4, 0), ("square", 0.35, 0, 4, 0), ("sine", 0.8, 0, 0, 0)], (0.003, 0.5, 0.7, 0.07),
                              330, 0.4, 2.7, (0.001, 0.16, 0.12, 0.1), q=1.2, saturation=1.3), 36, 0.4)


@named
def round_bass():
    return even(S.subtractive([("triangle", 0.8, 0, 0, 0), ("sine", 0.6, 0, 0, 0), ("saw", 0.16, 0, 3, 0)], (0.006, 0.8, 0.75, 0.12),
                              420, 0.4, 1.4, (0.002, 0.25, 0.1, 0.1), q=0.8, saturation=1.0), 36, 0.5)


@named
def reese():
    return even(S.subtractive([("saw", 0.45, 0, -17, -0.7), ("saw", 0.45, 0, 16, 0.7), ("saw", 0.4, 0, 2, 0), ("sine", 0.9, 0, 0, 0)],
                              (0.006, 0.8, 0.9, 0.08), 520, 0.3, 1.3, (0.15, 0.6, 0.4, 0.1), q=1.3, saturation=1.5), 36, 0.6)


@named
def slap_bass():
    return even(S.fm([(1, 1, 3.2, 0.16, 0.5, 1.0, 1.6), (1, 4, 1.2, 0.05, 0.0, 0.3, 0.3), (2, 2, 0.8, 0.10, 0.0, 0.25, 0.7)],
                     (0.002, 1.0, 0.5, 0.05), touch=1.0, spread=1.0), 36, 0.35)


@named
def pulse_tone():
    """A low, clocklike FM tick for tension."""
    return even(S.fm([(1, 2.01, 2.6, 0.10, 0.25, 1.0, 0.5), (1, 0.5, 0.9, 0.3, 0.2, 0.5, 0.9)], (0.002, 0.4, 0.15, 0.10)), 45, 0.25)


# ---- guitars (the pair is distorted and sent through a cabinet by its bus)

def cabinet(x):
    x = S.fixed(x, "high", 90.0)
    x = S.fixed(x, "peak", 420.0, 0.9, -4.0)
    x = S.fixed(x, "peak", 2400.0, 0.9, 4.0)
    return S.fixed(S.fixed(x, "low", 4600.0, 0.8), "low", 6200.0, 0.7)


def amplifier(x):
    """Distortion after the strings are summed, as in a real amplifier: chords growl."""
    x = S.fixed(S.fixed(x, "high", 130.0), "peak", 800.0, 0.7, 5.0)
    peak = max(1e-6, float(abs(x).max()))
    return S.width(cabinet(S.oversampled_drive(x / peak, 14.0, 0.12)) * 0.20, 1.25)


@named
def guitar():
    return S.string(0.32, 0.9975)


@named
def chug():
    return S.string(0.46, 0.93, gain=1.3, mute=True, seed=8)
