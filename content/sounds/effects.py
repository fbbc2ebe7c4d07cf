"""The game's sound effects, each a function that returns a mono signal without its final level.

The four that the game turns down by 9.3 dB itself are marked; the others play at full volume, so their
level in the file is their level in the mix.
"""
import numpy as np

import synth as S


def tone(frequency, n, shape="sine", start=0.0):
    return S.oscillator(shape, frequency, n, start)


def ring(n, partials):
    """Struck metal or glass: (frequency, level, seconds to fade) each."""
    return sum(level * np.sin(2 * np.pi * f * S.times(n)) * S.fall(n, fade) for f, level, fade in partials)


def blast(n, seed, start, end, seconds, q=0.7):
    """Noise through a filter that closes: the body of an explosion."""
    return S.swept(S.noise(n, seed), S.sweep(n, start, end, seconds), q, 4, block=64)


def crackle(n, seed, density, fade):
    """Single sparks of differing strength, thinning out."""
    rng = np.random.default_rng(seed)
    x = np.zeros(n)
    for at in rng.exponential(fade, int(density)):
        s = S.samples(at)
        if s < n - 400:
            m = S.samples(rng.uniform(0.002, 0.008))
            f = rng.uniform(900.0, 4200.0)
            x[s:s + m] += rng.uniform(0.2, 1.0) * np.sin(2 * np.pi * f * S.times(m)) * S.fall(m, m / S.RATE) * np.exp(-at / fade)
    return x


# ---------------------------------------------------------------- weapons

def fire():
    """A light bolt: a soft pluck that falls two octaves, gone before the next one."""
    n = S.samples(0.17)
    f = S.sweep(n, 1450.0, 330.0, 0.038)
    phase = S.phase_of(f, n)
    body = np.sin(2 * np.pi * phase + 1.1 * S.fall(n, 0.09) * np.sin(2 * np.pi * phase * 2.0))
    body += 0.35 * tone(f * 0.5, n, "triangle")
    spark = S.fixed(S.noise(n, 101), "band", 3600.0, 1.2) * S.fall(n, 0.018) * 0.5
    x = S.fixed(body * S.fall(n, 0.17), "low", 3800.0) + spark
    return S.edges(x, 0.003, 0.02)


def quad_shot():
    """Four bolts one after another in a breath, lower and wider than one."""
    layers = []
    for i, (at, shift) in enumerate(((0.0, 1.0), (0.024, 0.84), (0.047, 1.12), (0.071, 0.75))):
        n = S.samples(0.22)
        f = S.sweep(n, 980.0 * shift, 150.0 * shift, 0.055)
        body = tone(f, n, "saw", 0.25 * i) * 0.6 + tone(f * 1.007, n, "saw", 0.1 * i) * 0.5 + tone(f * 0.5, n) * 0.6
        body = S.swept(body, S.sweep(n, 5200.0, 500.0, 0.06), 1.5, 4)
        layers.append((at, body * S.fall(n, 0.22) * (1.0 - 0.08 * i)))
    return S.edges(S.drive(S.mix(*layers), 0.9), 0.003, 0.04)


def cannon():
    """A heavy gun: a thump in the chest, a bark of gas, a short ring of the barrel."""
    n = S.samples(0.55)
    thump = tone(S.sweep(n, 210.0, 52.0, 0.045), n) * S.fall(n, 0.5)
    bark = blast(n, 111, 4200.0, 260.0, 0.05, 1.0) * S.fall(n, 0.26) * 1.5
    barrel = ring(n, ((412.0, 0.20, 0.30), (655.0, 0.14, 0.22), (1130.0, 0.08, 0.14)))
    return S.edges(S.drive(thump * 1.2 + bark + barrel, 1.8), 0.002, 0.08)


# ---------------------------------------------------------------- explosions and hits

def missile_explosion():
    """A warhead: a bright crack, a tearing middle, sparks; little depth, so that it never hides the big ones."""
    n = S.samples(0.95)
    crack = S.fixed(S.noise(n, 121), "high", 1400.0) * S.fall(n, 0.07) * 1.1
    tear = S.swept(S.noise(n, 122), S.sweep(n, 3200.0, 520.0, 0.16), 1.6, 2, "band", block=64) * S.fall(n, 0.75) * 1.7
    flutter = 1.0 + 0.35 * np.sin(2 * np.pi * S.phase_of(S.sweep(n, 46.0, 14.0, 0.3), n))
    thud = tone(S.sweep(n, 260.0, 88.0, 0.05), n) * S.fall(n, 0.32) * 0.8
    return S.edges(S.drive(crack + tear * flutter + thud + crackle(n, 123, 60, 0.22) * 0.7, 1.3), 0.002, 0.12)


def explosion():
    """An enemy bursts: round and deep, a second puff, a tail of debris."""
    n = S.samples(1.25)
    thump = tone(S.sweep(n, 150.0, 44.0, 0.09), n) * S.fall(n, 0.85) * 1.1
    body = blast(n, 131, 2400.0, 150.0, 0.16) * S.fall(n, 1.0) * 2.1
    puff = np.zeros(n)
    s = S.samples(0.085)
    puff[s:] = (blast(n, 132, 1500.0, 120.0, 0.2) * S.fall(n, 0.8))[:n - s] * 1.5
    snap = S.fixed(S.noise(n, 133), "band", 1900.0, 0.8) * S.fall(n, 0.04) * 0.8
    return S.edges(S.drive(thump + body + puff + snap + crackle(n, 134, 40, 0.3) * 0.35, 1.3), 0.002, 0.2)


def player_explosion():
    """The ship is lost: a crack, three bursts, a floor that drops away, and a power-down that falls an octave and a half."""
    n = S.samples(3.2)
    crack = S.fixed(S.noise(n, 141), "high", 900.0) * S.fall(n, 0.10) * 1.2
    floor = tone(S.sweep(n, 118.0, 29.0, 0.42), n) * S.fall(n, 2.8) * 1.3
    rumble = blast(n, 142, 3400.0, 90.0, 0.38) * S.fall(n, 2.9, 0.85) * 2.2
    bursts = np.zeros(n)
    for at, seed, loud in ((0.14, 143, 1.3), (0.36, 144, 1.1), (0.74, 145, 0.9)):
        s = S.samples(at)
        part = blast(n, seed, 2600.0 - at * 1400.0, 110.0, 0.22) * S.fall(n, 1.1) * 1.7
        part += tone(S.sweep(n, 130.0, 40.0, 0.1), n) * S.fall(n, 0.7)
        part *= np.minimum(S.times(n) / 0.004, 1.0)
        bursts[s:] += part[:n - s] * loud
    f = S.glide(n, 520.0, 92.0, 1.9, 0.8)
    down = (tone(f, n, "saw") + tone(f * 1.498, n, "saw") * 0.5) * np.clip(S.times(n) / 0.25, 0, 1) * S.fall(n, 2.3)
    down = S.swept(down, np.maximum(f * 3.0, 200.0), 1.2, 2, block=64) * 0.42
    x = S.drive(crack + floor + rumble + bursts + down + crackle(n, 146, 90, 0.6) * 0.5, 1.5)
    return S.edges(x, 0.002, 0.7)


def hit():
    """Metal on shield: a clang of clashing partials with a zap across it."""
    n = S.samples(0.42)
    clang = ring(n, ((587.0, 0.9, 0.38), (934.0, 0.7, 0.30), (1411.0, 0.55, 0.26), (2217.0, 0.40, 0.18), (3172.0, 0.25, 0.12)))
    f = S.sweep(n, 2600.0, 700.0, 0.03)
    zap = np.sin(2 * np.pi * S.phase_of(f, n) + 2.0 * np.sin(2 * np.pi * 173.0 * S.times(n))) * S.fall(n, 0.12) * 0.7
    knock = tone(S.sweep(n, 340.0, 120.0, 0.02), n) * S.fall(n, 0.14) * 0.9
    tick = S.fixed(S.noise(n, 151), "high", 2500.0) * S.fall(n, 0.02) * 0.4
    return S.edges(S.drive(clang * 0.8 + zap + knock + tick, 1.5), 0.0025, 0.08)


def suck():
    """Everything is drawn inwards: air and a hollow tone climb, then shut."""
    n = S.samples(0.95)
    u = S.times(n) / 0.95
    f = 140.0 * 9.0 ** (u ** 1.6)
    air = S.swept(S.noise(n, 161), f * 2.2, 3.0, 2, "band", block=64) * 1.8
    voice = S.swept(tone(f, n, "saw") + tone(f * 1.01, n, "saw"), f * 4.0, 1.0, 2, block=64) * 0.30
    flutter = 1.0 + 0.30 * np.sin(2 * np.pi * S.phase_of(8.0 + 26.0 * u, n))
    swell = (0.06 + 0.94 * u ** 1.8) * np.clip((1.0 - u) / 0.05, 0.0, 1.0)
    return S.edges((air + voice) * flutter * swell, 0.02, 0.02)


# ---------------------------------------------------------------- pickups

PICKUP = S.fm([(1, 3.0, 1.1, 0.30, 0.05, 0.8, 0.9), (2, 5.0, 0.5, 0.12, 0.0, 0.22, 0.4), (1, 1, 0.3, 0.5, 0.1, 0.5, 1.2)],
              (0.003, 0.8, 0.2, 0.25), spread=0.0)


def chime(steps, gap, length=0.16, last=0.34):
    """Notes of the family's bell, one after another."""
    layers = []
    for i, notes in enumerate(steps):
        held = last if i == len(steps) - 1 else length
        for note in (notes if isinstance(notes, tuple) else (notes,)):
            layers.append((i * gap, PICKUP(note, held, 0.9)[0]))
    return S.mix(*layers)


def whoosh(seconds, low, high, seed, q=1.6):
    """Air that climbs: the thing is a rocket or an engine."""
    n = S.samples(seconds)
    u = S.times(n) / seconds
    return S.swept(S.noise(n, seed), low * (high / low) ** u, q, 2, "band", block=64) * np.sin(np.pi * u) ** 1.3


def pickup_single():
    """One gun: two notes, a fifth up."""
    return S.edges(chime((69, 76), 0.085), 0.003, 0.05)


def pickup_engine():
    """Engine: a turbine that winds up under two notes an octave apart."""
    n = S.samples(0.72)
    f = S.glide(n, 110.0, 440.0, 0.55, 1.3)
    turbine = S.swept(tone(f, n, "saw") + tone(f * 1.006, n, "saw"), f * 3.2, 1.2, 4, block=64)
    turbine *= np.clip(S.times(n) / 0.12, 0, 1) * np.clip((0.72 - S.times(n)) / 0.2, 0, 1)
    x = S.mix((0.0, turbine * 0.42), (0.0, whoosh(0.7, 300.0, 3200.0, 171) * 0.30), (0.10, chime((71, 83), 0.24, 0.22)))
    return S.edges(x, 0.006, 0.06)


def pickup_bullets():
    """More bullets: the same note three times, quickly, then the one above."""
    return S.edges(chime((74, 74, 74, 81), 0.062, 0.07), 0.003, 0.05)


def pickup_double():
    """Two guns: two voices climb side by side."""
    return S.edges(chime(((69, 76), (73, 80), (76, 83)), 0.085), 0.003, 0.05)


def pickup_missile():
    """A missile: a low note, then the rocket leaves upwards."""
    x = S.mix((0.0, chime((64, 71), 0.10)), (0.06, whoosh(0.62, 420.0, 5200.0, 172, 1.1) * 1.15))
    return S.edges(x, 0.003, 0.06)


def pickup_fast_missile():
    """A fast missile: a run up the chord and a rocket twice as quick."""
    x = S.mix((0.0, chime((76, 80, 83, 88, 92), 0.048, 0.06, 0.30)), (0.05, whoosh(0.34, 900.0, 9000.0, 173, 1.1) * 0.8))
    return S.edges(x, 0.003, 0.05)


# name: (maker, peak in dB below full scale, volume the game plays it at in dB, role)
EFFECTS = {
    "FIRE": (fire, -6.0, -9.3, "shots of one, two and three guns; up to ten a second"),
    "QUAD_SHOT": (quad_shot, -17.0, 0.0, "the four-gun shot"),
    "CANNON_SOUND": (cannon, -14.0, 0.0, "the cannon"),
    "MIS_EXPL": (missile_explosion, -13.0, 0.0, "a missile goes off"),
    "EXPLOSION3": (player_explosion, -3.0, -9.3, "the player's ship is lost: the biggest"),
    "EXPLOSION1": (explosion, -3.0, -9.3, "an enemy bursts"),
    "HIT": (hit, -5.0, -9.3, "a ram or a hit"),
    "3SUCK": (suck, -14.0, 0.0, "drawn inwards"),
    "PS_SINGLE_LASER": (pickup_single, -16.0, 0.0, "pickup: one gun"),
    "PS_ENGINE_UPGRADE": (pickup_engine, -16.0, 0.0, "pickup: engine"),
    "PS_INC_BULLETS": (pickup_bullets, -16.0, 0.0, "pickup: more bullets"),
    "PS_DOUBLE_LASER": (pickup_double, -16.0, 0.0, "pickup: two guns"),
    "PS_MISSILE_DUMBFIRE": (pickup_missile, -16.0, 0.0, "pickup: missiles"),
    "PS_MISSILE_FAST": (pickup_fast_missile, -16.0, 0.0, "pickup: fast missiles"),
}
