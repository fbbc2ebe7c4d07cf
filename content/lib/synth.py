"""A small software synthesiser: oscillators, filters, voices, drums, effects, mastering.

Everything works on numpy arrays at 44100 samples a second. A mono signal has the
shape (n,), a stereo one (2, n). A voice is a function (midi note, seconds, velocity,
note it slides from or None) -> stereo array; the array is longer than the note by
the note's release. Nothing here reads the clock or an unseeded generator: the same
score gives the same samples.
"""
import functools
import wave

import numpy as np
from scipy import ndimage, signal

RATE = 44100
TABLE = 4096


# ---------------------------------------------------------------- basics

def hz(midi):
    """Frequency of a midi note number (fractions allowed)."""
    return 440.0 * 2.0 ** ((np.asarray(midi, dtype=np.float64) - 69.0) / 12.0)


def db(value):
    """Decibels to a factor."""
    return 10.0 ** (value / 20.0)


def samples(seconds):
    return int(round(seconds * RATE))


def times(n):
    return np.arange(n, dtype=np.float64) / RATE


def noise(n, seed):
    return np.random.default_rng(seed).uniform(-1.0, 1.0, n)


def pan(mono, where):
    """Places a mono signal: -1 left, 0 middle, 1 right (equal power)."""
    angle = (where + 1.0) * np.pi / 4.0
    return np.stack([mono * (np.cos(angle) * 1.4142), mono * (np.sin(angle) * 1.4142)])


def stereo(x):
    return x if x.ndim == 2 else np.stack([x, x])


def width(x, amount):
    """Scales the side signal: 0 mono, 1 as it is, above 1 wider."""
    mid, side = (x[0] + x[1]) * 0.5, (x[0] - x[1]) * 0.5 * amount
    return np.stack([mid + side, mid - side])


def edges(x, fade_in=0.002, fade_out=0.008):
    """Rounds both ends of a sound so that neither clicks."""
    x = np.array(x, dtype=np.float64)
    a, b = max(1, samples(fade_in)), max(1, samples(fade_out))
    x[..., :a] *= 0.5 - 0.5 * np.cos(np.pi * np.arange(a) / a)
    x[..., -b:] *= 0.5 + 0.5 * np.cos(np.pi * (np.arange(b) + 1) / b)
    return x


def mix(*layers):
    """Sums (offset in seconds, signal) pairs of one shape."""
    end = max(samples(at) + x.shape[-1] for at, x in layers)
    out = np.zeros(layers[0][1].shape[:-1] + (end,))
    for at, x in layers:
        s = samples(at)
        out[..., s:s + x.shape[-1]] += x
    return out


# ---------------------------------------------------------------- oscillators

@functools.lru_cache(maxsize=512)
def wave_table(shape, harmonics):
    """One cycle with so many harmonics, so that no partial folds back (one sample more to interpolate)."""
    spectrum = np.zeros(TABLE // 2 + 1, dtype=complex)
    k = np.arange(1, harmonics + 1)
    if shape == "saw":
        a = 1.0 / k
    elif shape == "square":
        a = np.where(k % 2 == 1, 1.27 / k, 0.0)
    elif shape == "triangle":
        a = np.where(k % 2 == 1, 0.81 / (k * k) * np.where(k % 4 == 1, 1.0, -1.0), 0.0)
    elif shape == "hollow":          # odd partials with a little of the second: clarinet, ocarina
        a = np.where(k % 2 == 1, 1.0 / k ** 1.6, 0.12 / k)
    elif shape == "organ":           # drawbars
        bars = {1: 1.0, 2: 0.7, 3: 0.45, 4: 0.3, 6: 0.18, 8: 0.2}
        a = np.array([bars.get(int(i), 0.0) for i in k])
    elif shape == "reed":
        a = 1.0 / k ** 0.8 * np.exp(-((k - 3.0) / 6.0) ** 2)
    else:
        raise ValueError("no such wave: " + shape)
    spectrum[1:harmonics + 1] = -1j * a * (TABLE / 2) * 0.64
    cycle = np.fft.irfft(spectrum, TABLE)
    return np.append(cycle, cycle[0]).astype(np.float64)


def limit_harmonics(frequency):
    top = int(16500.0 / max(frequency, 8.0))
    steps = [1, 2, 3, 4, 5, 6, 8, 10, 12, 16, 20, 25, 32, 40, 50, 64, 80, 100, 128, 160, 200, 256, 320, 400, 512, 800]
    return max(s for s in steps if s <= max(top, 1))


def phase_of(frequency, n, start=0.0):
    """Running phase in cycles of a frequency that is a number or an array."""
    if np.ndim(frequency) == 0:
        return start + np.arange(n) * (float(frequency) / RATE)
    return start + np.cumsum(frequency) / RATE - frequency[0] / RATE


def oscillator(shape, frequency, n, start=0.0):
    phase = phase_of(frequency, n, start)
    if shape == "sine":
        return np.sin(2.0 * np.pi * phase)
    top = float(np.max(frequency))
    cycle = wave_table(shape, limit_harmonics(top))
    where = (phase - np.floor(phase)) * TABLE
    index = where.astype(np.int64)
    np.minimum(index, TABLE - 1, out=index)
    low = cycle[index]
    return low + (cycle[index + 1] - low) * (where - index)


def pulse(frequency, n, duty, start=0.0):
    """A pulse wave; the duty may be an array (pulse-width modulation)."""
    return 0.7 * (oscillator("saw", frequency, n, start) - shifted_saw(frequency, n, duty, start))


def shifted_saw(frequency, n, shift, start):
    phase = phase_of(frequency, n, start) + shift
    cycle = wave_table("saw", limit_harmonics(float(np.max(frequency))))
    where = (phase - np.floor(phase)) * TABLE
    index = np.minimum(where.astype(np.int64), TABLE - 1)
    return cycle[index] + (cycle[index + 1] - cycle[index]) * (where - index)


# ---------------------------------------------------------------- envelopes

def adsr(gate, attack, decay, sustain, release):
    """Envelope in samples: exponential decay and release, a rounded attack."""
    n, r = max(1, samples(gate)), max(1, samples(release))
    t = times(n)
    a = max(attack, 0.0005)
    rise = np.minimum(t / a, 1.0)
    rise = rise * (2.0 - rise)
    fall = sustain + (1.0 - sustain) * np.exp(-np.maximum(t - a, 0.0) / max(decay, 1e-4) * 3.0)
    body = rise * fall
    tail = body[-1] * np.exp(-times(r) / release * 5.0) * np.linspace(1.0, 0.0, r)
    return np.concatenate([body, tail])


def fall(n, seconds, sharpness=1.0):
    """Exponential decay: -60 dB after so many seconds; sharpness bends it."""
    return np.exp(-6.9 * (times(n) / seconds) ** sharpness)


def sweep(n, start, end, seconds):
    """A frequency that falls (or rises) exponentially towards its end value."""
    return end + (start - end) * np.exp(-times(n) / seconds)


def glide(n, start, end, seconds, bend=1.0):
    """A frequency that moves evenly in pitch from start to end, then stays."""
    u = np.clip(times(n) / seconds, 0.0, 1.0) ** bend
    return start * (end / start) ** u


# ---------------------------------------------------------------- filters

def biquad(kind, frequency, q, gain_db=0.0):
    """Second-order coefficients (b, a) of the usual cookbook kinds."""
    w = 2.0 * np.pi * min(max(frequency, 10.0), RATE * 0.46) / RATE
    c, s = np.cos(w), np.sin(w)
    alpha = s / (2.0 * q)
    if kind == "low":
        b = np.array([(1 - c) / 2, 1 - c, (1 - c) / 2]); a = np.array([1 + alpha, -2 * c, 1 - alpha])
    elif kind == "high":
        b = np.array([(1 + c) / 2, -(1 + c), (1 + c) / 2]); a = np.array([1 + alpha, -2 * c, 1 - alpha])
    elif kind == "band":
        b = np.array([alpha, 0.0, -alpha]); a = np.array([1 + alpha, -2 * c, 1 - alpha])
    elif kind == "peak":
        g = 10.0 ** (gain_db / 40.0)
        b = np.array([1 + alpha * g, -2 * c, 1 - alpha * g]); a = np.array([1 + alpha / g, -2 * c, 1 - alpha / g])
    elif kind in ("lowshelf", "highshelf"):
        g = 10.0 ** (gain_db / 40.0)
        r = 2.0 * np.sqrt(g) * alpha
        sign = 1.0 if kind == "lowshelf" else -1.0
        b = np.array([g * ((g + 1) - sign * (g - 1) * c + r),
                      sign * 2 * g * ((g - 1) - sign * (g + 1) * c),
                      g * ((g + 1) - sign * (g - 1) * c - r)])
        a = np.array([(g + 1) + sign * (g - 1) * c + r,
                      -sign * 2 * ((g - 1) + sign * (g + 1) * c),
                      (g + 1) + sign * (g - 1) * c - r])
    else:
        raise ValueError(kind)
    return b / a[0], a / a[0]


def fixed(x, kind, frequency, q=0.707, gain_db=0.0):
    b, a = biquad(kind, frequency, q, gain_db)
    return signal.lfilter(b, a, x)


def lowcut(x, frequency):
    return fixed(x, "high", frequency)


def swept(x, cutoff, q=0.8, poles=4, kind="low", block=48):
    """A resonant filter whose cutoff follows an array.

    The coefficients change at most once a block and only where the cutoff has moved by a sixtieth of an octave.
    """
    n = x.shape[-1]
    out = np.empty_like(x)
    starts = np.arange(0, n, block)
    target = np.asarray(cutoff, dtype=np.float64)[np.minimum(starts + block // 2, n - 1)]
    notch = np.round(np.log2(target) * 60.0)
    first = np.flatnonzero(np.concatenate([[True], notch[1:] != notch[:-1]]))
    ends = np.append(starts[first[1:]], n)
    sections = poles // 2
    state = np.zeros((sections,) + x.shape[:-1] + (2,))
    for i, e in zip(first, ends):
        s = starts[i]
        sos = np.empty((sections, 6))
        for k in range(sections):
            sos[k, :3], sos[k, 3:] = biquad(kind, target[i], q if k == sections - 1 else 0.6)
        out[..., s:e], state = signal.sosfilt(sos, x[..., s:e], axis=-1, zi=state)
    return out


def drive(x, amount):
    """Soft saturation that leaves full scale where it is."""
    return np.tanh(x * amount) / np.tanh(amount) if amount > 0 else x


def oversampled_drive(x, amount, bias=0.0):
    """Hard distortion at twice the rate, so that it stays clean of folded tones."""
    up = signal.resample_poly(x, 2, 1, axis=-1)
    up = np.tanh(up * amount + bias) - np.tanh(bias)
    return signal.resample_poly(up, 1, 2, axis=-1)


# ---------------------------------------------------------------- voices

def bent(midi, n, slide_from, seconds=0.07, vibrato=0.0, rate=5.3, delay=0.25):
    """Frequency of a note with a slide into it and a vibrato that sets in late."""
    pitch = np.full(n, float(midi))
    t = times(n)
    if slide_from is not None:
        pitch += (slide_from - midi) * np.exp(-t / seconds * 3.0)
    if vibrato:
        depth = np.clip((t - delay) / 0.35, 0.0, 1.0) * vibrato
        pitch += depth * np.sin(2.0 * np.pi * rate * np.maximum(t - delay, 0.0))
    return hz(pitch)


def subtractive(waves, amp, cutoff=2000.0, track=0.5, sweep_octaves=0.0, sweep_env=(0.002, 0.2, 0.0, 0.2),
                q=0.8, poles=4, gain=1.0, vibrato=0.0, slide=0.07, saturation=0.0, hiss=0.0, touch=0.5, seed=1):
    """A voice of oscillators through a swept filter.

    waves: (shape, level, semitones, cents, place in the stereo picture) each; the shape
    "pwm" is a pulse with a moving width. amp and sweep_env: attack, decay, sustain, release.
    touch: octaves by which a hard note opens the filter further than a soft one.
    """
    def voice(midi, seconds, velocity=0.8, slide_from=None):
        level = adsr(seconds, *amp)
        n = len(level)
        base = bent(midi, n, slide_from, slide, vibrato) if (vibrato or slide_from is not None) else float(hz(midi))
        starts = np.random.default_rng(seed * 1000 + int(midi)).uniform(0.0, 1.0, len(waves))
        out = np.zeros((2, n))
        for (shape, loud, semitones, cents, place), start in zip(waves, starts):
            f = base * 2.0 ** (semitones / 12.0 + cents / 1200.0)
            if shape == "pwm":
                duty = 0.5 + 0.32 * np.sin(2 * np.pi * (0.6 * times(n) + start))
                tone = pulse(f, n, duty, start)
            else:
                tone = oscillator(shape, f, n, start if shape != "sine" else 0.0)
            out += pan(tone * loud, place)
        if hiss:
            out += hiss * np.stack([noise(n, seed), noise(n, seed + 1)])
        a, d, s, r = sweep_env
        shape = adsr(seconds, a, d, s, r)
        shape = np.pad(shape, (0, max(0, n - len(shape))))[:n]
        f = cutoff * 2.0 ** (track * (midi - 60) / 12.0 + sweep_octaves * shape + touch * (velocity - 0.8) * 2.0)
        out = swept(out, np.minimum(f, 17000.0), q, poles) if cutoff < 17000 else out
        if saturation:
            out = drive(out, saturation)
        return out * level * (gain * velocity)
    return voice


def fm(pairs, amp, gain=1.0, spread=4.0, touch=0.6, vibrato=0.0):
    """A voice of modulated sine pairs.

    pairs: (carrier ratio, modulator ratio, depth, depth's decay in seconds, lasting depth, level, level's decay).
    spread: cents between the left and the right side.
    """
    def voice(midi, seconds, velocity=0.8, slide_from=None):
        level = adsr(seconds, *amp)
        n = len(level)
        t = times(n)
        hard = 1.0 + touch * (velocity - 0.8) * 2.0
        sides = []
        for cents in (-spread, spread):
            f = bent(midi + cents / 100.0, n, slide_from, 0.06, vibrato)
            phase = phase_of(f, n)
            out = np.zeros(n)
            for carrier, modulator, depth, decay, lasting, loud, fade in pairs:
                index = hard * (lasting + (depth - lasting) * np.exp(-t / decay * 3.0))
                bend = index * np.sin(2 * np.pi * phase * modulator)
                out += loud * np.exp(-t / fade * 3.0) * np.sin(2 * np.pi * phase * carrier + bend)
            sides.append(out)
        return np.stack(sides) * level * (gain * velocity)
    return voice


FORMANTS = {"ah": ((680, 1.0), (1150, 0.5), (2700, 0.22), (3400, 0.12)),
            "oh": ((430, 1.0), (800, 0.45), (2500, 0.10), (3200, 0.06)),
            "oo": ((310, 1.0), (700, 0.20), (2300, 0.05), (3100, 0.03))}


def choir(vowel="ah", attack=0.35, release=0.9, gain=1.0, singers=6, seed=5):
    """Detuned sources with a vibrato of their own each, sung through formants."""
    def voice(midi, seconds, velocity=0.8, slide_from=None):
        level = adsr(seconds, attack, 1.0, 0.9, release)
        n = len(level)
        rng = np.random.default_rng(seed * 977 + int(midi))
        t = times(n)
        source = np.zeros((2, n))
        for i in range(singers):
            rate, depth = rng.uniform(4.4, 5.8), rng.uniform(0.06, 0.16)
            pitch = midi + rng.uniform(-0.10, 0.10) + depth * np.sin(2 * np.pi * (rate * t + rng.uniform()))
            pitch -= 0.25 * np.exp(-t / rng.uniform(0.05, 0.12))
            source += pan(oscillator("saw", hz(pitch), n, rng.uniform()), (i + 0.5) / singers * 2.0 - 1.0)
        source += 0.05 * np.stack([noise(n, seed + int(midi)), noise(n, seed + 50 + int(midi))])
        out = np.zeros((2, n))
        for f, loud in FORMANTS[vowel]:
            out += loud * fixed(source, "band", f, f / 110.0 if f < 2000 else 9.0)
        out += 0.10 * fixed(source, "low", hz(midi) * 1.2)
        return out * level * (gain * velocity * 1.6)
    return voice


def string(damping=0.35, sustain=0.996, gain=1.0, mute=False, seed=3):
    """A plucked string, played twice: one take on the left, another on the right."""
    def voice(midi, seconds, velocity=0.8, slide_from=None):
        n = samples(seconds + 0.08)
        f = float(hz(midi))
        sides = []
        for side in (0, 1):
            period = RATE / (f * (1.0 + (0.0011 if side else -0.0011))) - damping
            whole = int(period)
            frac = period - whole
            burst = np.zeros(n)
            pick = fixed(noise(whole, seed + side * 71 + int(midi)), "low", 2500.0 + 5000.0 * velocity)
            burst[:min(whole, n)] = pick[:n]
            keep = sustain if not mute else 0.93
            taps = np.zeros(whole + 3)
            taps[0] = 1.0
            kernel = np.convolve([1.0 - frac, frac], [1.0 - damping, damping]) * keep
            taps[whole:whole + 3] -= kernel
            sides.append(signal.lfilter([1.0], taps, burst))
        out = np.stack(sides)
        out -= out.mean(axis=-1, keepdims=True)
        out *= gain * velocity
        r = samples(0.08)
        out[:, -r:] *= np.linspace(1.0, 0.0, r) ** 2
        return out
    return voice


# ---------------------------------------------------------------- drums

def metal(n, seed, low=3100.0):
    """Six clashing square waves: the ring of cymbals and hats."""
    out = np.zeros(n)
    rng = np.random.default_rng(seed)
    for ratio in (1.0, 1.342, 1.2312, 1.6532, 1.9523, 2.1523):
        out += np.sign(np.sin(2 * np.pi * (low * 0.17 * ratio * rng.uniform(0.98, 1.02) * times(n) + rng.uniform())))
    return out / 6.0


def kick(top=190.0, bottom=47.0, bend=0.028, length=0.38, click=0.35, punch=2.0):
    n = samples(length)
    body = np.sin(2 * np.pi * phase_of(sweep(n, top, bottom, bend), n)) * fall(n, length * 1.25)
    snap = fixed(noise(n, 11), "high", 2500.0) * fall(n, 0.02) * click
    knock = np.sin(2 * np.pi * phase_of(sweep(n, 900.0, 160.0, 0.006), n)) * fall(n, 0.05) * click
    return stereo(edges(drive(body * 1.2 + knock, punch) * 0.95 + snap, 0.0008, 0.03))


def snare(tone=188.0, length=0.26, rattle=0.8, body=0.7, bright=5200.0, seed=21):
    n = samples(length)
    drum = np.sin(2 * np.pi * phase_of(sweep(n, tone * 1.9, tone, 0.012), n)) * fall(n, 0.20)
    drum += 0.5 * np.sin(2 * np.pi * phase_of(sweep(n, tone * 3.1, tone * 1.76, 0.01), n)) * fall(n, 0.12)
    sides = []
    for side in (0, 1):
        wires = noise(n, seed + side) * 0.6 + noise(n, seed + 9) * 0.6
        wires = fixed(fixed(wires, "high", 1100.0), "peak", bright, 0.8, 6.0)
        sides.append(wires * (0.75 * fall(n, length * 0.9) + 0.5 * fall(n, 0.05)))
    out = np.stack(sides) * rattle * 0.5 + drum * body
    return edges(drive(out, 1.6) * 0.8, 0.0006, 0.02)


def clap(seed=31):
    n = samples(0.34)
    sides = []
    for side in (0, 1):
        grain = fixed(fixed(noise(n, seed + side), "band", 1500.0, 0.9), "high", 700.0)
        env = np.zeros(n)
        t = times(n)
        for at in (0.0, 0.011 + 0.001 * side, 0.021, 0.031):
            env += np.where(t >= at, np.exp(-np.maximum(t - at, 0) / 0.005), 0.0)
        env += np.where(t >= 0.031, 0.7 * np.exp(-np.maximum(t - 0.031, 0) / 0.055), 0.0)
        sides.append(grain * env)
    return edges(np.stack(sides) * 1.5, 0.0005, 0.03)


def hat(length=0.05, seed=41, tone=0.5):
    n = samples(max(length * 1.3, 0.03))
    sides = []
    for side in (0, 1):
        x = metal(n, seed, 5300.0) * tone + noise(n, seed + side + 1) * (1.0 - tone * 0.5)
        x = fixed(fixed(x, "high", 7600.0), "high", 6200.0)
        sides.append(x)
    return edges(np.stack(sides) * fall(n, length * 1.6) * 0.9, 0.0008, 0.01)


def cymbal(length=1.9, seed=51, low=3600.0, ping=0.0):
    n = samples(length)
    sides = []
    for side in (0, 1):
        x = metal(n, seed + side * 3, low) * 0.9 + noise(n, seed + 5 + side) * 0.7
        x = fixed(fixed(x, "high", 3400.0), "peak", 8200.0, 0.7, 4.0)
        env = 0.55 * fall(n, length * 0.95) + 0.45 * fall(n, 0.18)
        if ping:
            env = 0.35 * fall(n, length * 0.8) + 0.4 * fall(n, 0.06)
        sides.append(x * env)
    out = np.stack(sides)
    if ping:
        out = out + ping * sum(np.sin(2 * np.pi * f * times(n)) for f in (2930.0, 4410.0, 5190.0)) * fall(n, 0.5) * 0.2
    return edges(out * 0.6, 0.001, 0.1)


def tom(midi, length=0.45, where=0.0):
    n = samples(length)
    f = float(hz(midi))
    body = np.sin(2 * np.pi * phase_of(sweep(n, f * 1.7, f, 0.035), n)) * fall(n, length)
    skin = fixed(noise(n, 61), "band", 900.0, 0.7) * fall(n, 0.08) * 0.6
    return pan(edges(drive(body + skin, 1.6), 0.0008, 0.04), where) * 0.8


def shaker(seed=71):
    n = samples(0.09)
    t = times(n)
    x = fixed(fixed(noise(n, seed), "high", 5000.0), "low", 11000.0)
    return pan(edges(x * np.minimum(t / 0.018, 1.0) * np.exp(-t / 0.022), 0.002, 0.01), 0.35) * 0.7


def rim():
    n = samples(0.09)
    x = np.sin(2 * np.pi * 1720.0 * times(n)) * fall(n, 0.05) + 0.7 * np.sin(2 * np.pi * 480.0 * times(n)) * fall(n, 0.07)
    return pan(edges(x + fixed(noise(n, 81), "high", 3000.0) * fall(n, 0.015) * 0.6, 0.0006, 0.01), -0.2) * 0.7


def boom(length=2.6):
    """A deep impact under the start of a section."""
    n = samples(length)
    body = np.sin(2 * np.pi * phase_of(sweep(n, 115.0, 33.0, 0.18), n)) * fall(n, length)
    sides = []
    for side in (0, 1):
        air = swept(noise(n, 91 + side), sweep(n, 2600.0, 140.0, 0.25), 0.7, 4, block=128) * fall(n, length * 0.6)
        sides.append(body + 1.1 * air)
    return edges(drive(np.stack(sides), 1.4) * 0.9, 0.001, 0.2)


def riser(length, seed=95):
    """Noise that climbs towards the start of a section."""
    n = samples(length)
    u = times(n) / length
    sides = [swept(noise(n, seed + i), 300.0 * 30.0 ** u, 1.6, 2, "band", block=128) for i in (0, 1)]
    tone = oscillator("saw", 110.0 * 2.0 ** (2.0 * u ** 1.5), n) * 0.10 * u
    return edges((np.stack(sides) * 1.5 + fixed(tone, "high", 300.0)) * u ** 2.2, 0.01, 0.03)


@functools.lru_cache(maxsize=None)
def drum(name, variant=0):
    """A drum by name; hats and shakers have several takes so that a roll does not rattle."""
    makers = {
        "kick": lambda: kick(),
        "kick soft": lambda: kick(130.0, 45.0, 0.03, 0.42, 0.08, 1.2),
        "kick hard": lambda: kick(250.0, 52.0, 0.022, 0.28, 0.6, 3.0),
        "snare": lambda: snare(),
        "snare hard": lambda: snare(176.0, 0.34, 0.95, 0.9, 4200.0),
        "snare tight": lambda: snare(228.0, 0.17, 0.9, 0.6, 6500.0, 23 + variant),
        "brush": lambda: snare(210.0, 0.16, 0.55, 0.15, 7000.0, 25 + variant),
        "clap": lambda: clap(),
        "hat": lambda: hat(0.05, 41 + 3 * variant) * 0.8,
        "open": lambda: hat(0.32, 45) * 0.75,
        "crash": lambda: cymbal(),
        "ride": lambda: cymbal(0.9, 57, 4100.0, 0.5),
        "tom high": lambda: tom(52, 0.36, -0.45),
        "tom mid": lambda: tom(47, 0.42, 0.05),
        "tom low": lambda: tom(41, 0.52, 0.5),
        "shaker": lambda: shaker(71 + variant),
        "rim": lambda: rim(),
        "boom": lambda: boom(),
        "swell": lambda: edges(cymbal(1.9)[:, ::-1] * 0.9, 0.05, 0.01),
    }
    return makers[name]().astype(np.float32)


# ---------------------------------------------------------------- effects

def chorus(x, depth=0.0022, rate=0.55, amount=0.5, delay=0.012):
    """Two slowly moving copies, opposite on both sides."""
    n = x.shape[-1]
    t = times(n)
    where = np.arange(n, dtype=np.float64)
    out = np.array(x, dtype=np.float64)
    for side in (0, 1):
        for k, r in enumerate((rate, rate * 1.37)):
            lag = (delay + 0.004 * k + depth * np.sin(2 * np.pi * (r * t + 0.25 * k + 0.5 * side))) * RATE
            pos = np.maximum(where - lag, 0.0)
            i = pos.astype(np.int64)
            frac = pos - i
            source = x[(side + k) % 2]
            out[side] += amount * 0.6 * (source[i] * (1.0 - frac) + source[np.minimum(i + 1, n - 1)] * frac)
    return out / (1.0 + 0.6 * amount)


def echo(x, seconds, feedback=0.45, repeats=6, dark=3800.0, thin=250.0):
    """Repeats that jump from side to side and grow darker; the dry signal is not in it."""
    lag = samples(seconds)
    out = np.zeros_like(x)
    mono = (x[0] + x[1]) * 0.5
    line = np.stack([mono, x[1] * 0.2])
    for k in range(1, repeats + 1):
        line = fixed(fixed(line, "low", dark), "high", thin)[::-1] * (feedback if k > 1 else 1.0)
        at = lag * k
        if at >= x.shape[-1]:
            break
        out[:, at:] += line[:, :x.shape[-1] - at]
    return out


@functools.lru_cache(maxsize=None)
def room_response(kind):
    """A synthetic room: early reflections and noise whose treble dies first."""
    seconds, before, bright = {"room": (0.8, 0.006, 0.9), "hall": (2.4, 0.020, 0.75), "space": (4.6, 0.035, 0.6)}[kind]
    n = samples(seconds * 1.15)
    t = times(n)
    sides = []
    for side in (0, 1):
        hiss = np.random.default_rng(700 + side).standard_normal(n)
        tail = np.zeros(n)
        bands = ((60, 300, 1.1), (300, 1200, 1.0), (1200, 4000, bright), (4000, 11000, bright * 0.55))
        for low, high, share in bands:
            part = fixed(fixed(hiss, "high", low), "low", high)
            tail += part * np.exp(-6.9 * t / (seconds * share))
        tail *= np.clip(t / 0.03, 0.15, 1.0)
        early = np.zeros(n)
        rng = np.random.default_rng(800 + side)
        for at in np.sort(rng.uniform(0.004, 0.08, 9)):
            early[samples(at)] += rng.choice([-1.0, 1.0]) * np.exp(-at / 0.05) * 3.0
        out = np.concatenate([np.zeros(samples(before)), tail + early])
        sides.append(out)
    out = np.stack(sides)
    return out / np.sqrt((out ** 2).sum(axis=-1, keepdims=True))


def reverb(x, kind="hall"):
    """The sound of the room alone, as long as the input."""
    n = x.shape[-1]
    response = room_response(kind)
    return np.stack([signal.oaconvolve(x[i], response[i])[:n] for i in (0, 1)])


def ducking(n, hits, depth=0.5, seconds=0.22):
    """A gain that dips at every kick and swings back: room for the drum."""
    gain = np.ones(n)
    m = samples(seconds * 1.6)
    u = np.clip(times(m) / seconds, 0.0, 1.0)
    dip = 1.0 - depth * (0.5 + 0.5 * np.cos(np.pi * u))
    for s in hits:
        e = min(n, s + m)
        if s < n:
            gain[s:e] = np.minimum(gain[s:e], dip[:e - s])
    return running_mean(gain, 2 * samples(0.003) + 1)


def compress(x, threshold=-18.0, ratio=2.5, seconds=0.06, makeup=0.0):
    """A gentle compressor that hears both sides as one."""
    power = (x[0] ** 2 + x[1] ** 2) * 0.5
    k = np.exp(-1.0 / (seconds * RATE))
    level = signal.lfilter([1.0 - k], [1.0, -k], power)
    over = np.maximum(10.0 * np.log10(level + 1e-12) - threshold, 0.0)
    return x * db(makeup - over * (1.0 - 1.0 / ratio))


def running_mean(x, size):
    """Mean over a window centred on each sample."""
    total = np.cumsum(np.concatenate([np.full(size // 2 + 1, x[0]), x, np.full(size - size // 2 - 1, x[-1])]))
    return (total[size:] - total[:-size]) / size


def limit(x, ceiling=-1.5, look=0.008, between=True):
    """A limiter that looks ahead and, if asked to, hears the peaks between the samples."""
    peak = np.zeros(x.shape[-1])
    for side in x:
        up = np.abs(signal.resample_poly(side, 4, 1)[:4 * x.shape[-1]]).reshape(-1, 4).max(axis=1) if between else np.abs(side)
        np.maximum(peak, up, out=peak)
    peak = np.maximum(peak, np.append(peak[1:], 0.0))
    need = np.minimum(1.0, db(ceiling) / np.maximum(peak, 1e-9))
    w = samples(look)
    gain = ndimage.minimum_filter1d(need, 4 * w + 1)
    for _ in range(2):
        gain = running_mean(gain, 2 * w + 1)
    return x * gain


# ---------------------------------------------------------------- loudness

def k_weighted(x):
    """The weighting of programme loudness: a treble shelf and a low cut."""
    b, a = biquad("highshelf", 1681.97, 0.7072, 4.0)
    y = signal.lfilter(b, a, x)
    b, a = biquad("high", 38.135, 0.5003)
    return signal.lfilter(b, a, y)


def block_powers(x, seconds=0.4, step=0.1):
    y = k_weighted(stereo(x)) ** 2
    total = np.concatenate([[0.0], np.cumsum(y.sum(axis=0))])
    w, h = samples(seconds), samples(step)
    starts = np.arange(0, max(1, y.shape[-1] - w + 1), h)
    return (total[np.minimum(starts + w, y.shape[-1])] - total[starts]) / w


def loudness(x):
    """Integrated loudness in LUFS, gated as broadcasters do."""
    power = block_powers(x)
    power = power[power > 10.0 ** ((-70.0 + 0.691) / 10.0)]
    if not len(power):
        return -120.0
    gate = power.mean() * 0.1
    return -0.691 + 10.0 * np.log10(power[power > gate].mean())


def loudest(x, seconds=0.2):
    """Loudness of the loudest stretch of a short mono sound, in LUFS."""
    y = k_weighted(np.concatenate([x, np.zeros(samples(seconds))])) ** 2
    total = np.concatenate([[0.0], np.cumsum(y)])
    w = samples(seconds)
    return -0.691 + 10.0 * np.log10((total[w:] - total[:-w]).max() / w + 1e-12)


def master(x, target=-14.5, ceiling=-2.2):
    """Glue, tone, loudness and peaks of a finished track."""
    x = lowcut(x, 28.0)
    bass = fixed(x, "low", 120.0)
    x = (x - bass) + stereo((bass[0] + bass[1]) * 0.5)        # the low end stays in the middle
    x = x * db(-20.0 - loudness(x))
    x = compress(x, -22.0, 2.0, 0.08)
    x = fixed(fixed(x, "highshelf", 5500.0, 0.7, 2.5), "peak", 300.0, 0.6, -1.5)
    gain = target - loudness(x)
    gain += target - loudness(limit(drive(x * db(gain), 0.35), ceiling, between=False))
    y = limit(drive(x * db(gain), 0.35), ceiling)
    rest = target - loudness(y)
    return y * db(rest) if rest < 0 else limit(y * db(rest), ceiling)


# ---------------------------------------------------------------- files

def to_int16(x):
    """16-bit values with a still, seeded dither of one step."""
    rng = np.random.default_rng(16)
    dither = rng.uniform(-0.5, 0.5, x.shape) + rng.uniform(-0.5, 0.5, x.shape)
    return np.clip(np.round(x * 32767.0 + dither * 0.5), -32768, 32767).astype("<i2")


def write_wave(path, x, dither=True):
    """Writes uncompressed 16-bit PCM (format tag 1)."""
    data = to_int16(x) if dither else np.clip(np.round(x * 32767.0), -32768, 32767).astype("<i2")
    with wave.open(str(path), "wb") as out:
        out.setnchannels(1 if x.ndim == 1 else x.shape[0])
        out.setsampwidth(2)
        out.setframerate(RATE)
        out.writeframes((data if data.ndim == 1 else data.T).tobytes())
