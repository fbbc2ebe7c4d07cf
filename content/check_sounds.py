#!/usr/bin/python3
"""Checks the sound effects and the music by numbers.

usage: check_sounds.py [--sounds FOLDER] [--music FOLDER] [--table]
Prints one line for each fault and ends with status 1 if there is any. --table prints the table of docs/sounds.md.
"""
import argparse
import pathlib
import re
import struct
import subprocess
import sys

import numpy as np

HERE = pathlib.Path(__file__).resolve().parent
for folder in (HERE / "lib", HERE / "sounds"):
    sys.path.insert(0, str(folder))

import synth as S  # noqa: E402
from effects import EFFECTS  # noqa: E402

# Seconds each effect may last: what sounds often is short.
LENGTHS = {"FIRE": (0.10, 0.22), "QUAD_SHOT": (0.18, 0.40), "CANNON_SOUND": (0.35, 0.80), "HIT": (0.25, 0.60),
           "MIS_EXPL": (0.6, 1.3), "EXPLOSION1": (0.9, 1.8), "EXPLOSION3": (2.5, 4.0), "3SUCK": (0.6, 1.4)}
PICKUP_LENGTH = (0.4, 1.1)
# Louder later in the list, by at least so many dB, as the game plays them.
LADDER = (("FIRE", "QUAD_SHOT", 0.5), ("QUAD_SHOT", "CANNON_SOUND", 1.0), ("FIRE", "HIT", 1.0), ("FIRE", "EXPLOSION1", 6.0),
          ("CANNON_SOUND", "EXPLOSION3", 2.0), ("MIS_EXPL", "EXPLOSION3", 2.0), ("EXPLOSION1", "EXPLOSION3", 1.5),
          ("3SUCK", "EXPLOSION1", 1.0))
# Two sounds are apart when their level differs by 3 dB on average over the cells of a grid of ten bands and six
# stretches of time (brought to one loudness first). The same effect rendered from other noise moves by 0.7 dB
# at most, and a listener notices about 1 dB in a band: 3 dB in a typical cell is a different sound.
APART = 3.0
BANDS = (60, 120, 240, 480, 800, 1300, 2100, 3400, 5500, 9000, 16000)
MUSIC_LENGTH = (120.0, 180.0)
MUSIC_LOUDNESS, MUSIC_SPREAD, MUSIC_PEAK = -14.5, 1.0, -0.5
MUSIC_BYTES = 14_000_000


def read_wave(path):
    """(format tag, channels, rate, bits, values) of a RIFF file, read chunk by chunk as the game does."""
    raw = path.read_bytes()
    if len(raw) < 12 or raw[:4] != b"RIFF" or raw[8:12] != b"WAVE":
        raise ValueError("is no RIFF wave")
    if struct.unpack("<I", raw[4:8])[0] + 8 != len(raw):
        raise ValueError("its RIFF length does not match the file")
    at, form, data = 12, None, None
    while at + 8 <= len(raw):
        name, n = raw[at:at + 4], struct.unpack("<I", raw[at + 4:at + 8])[0]
        if at + 8 + n > len(raw):
            raise ValueError("a chunk is cut off")
        if name == b"fmt ":
            form = struct.unpack("<HHIIHH", raw[at + 8:at + 24])
        elif name == b"data":
            data = raw[at + 8:at + 8 + n]
        at += 8 + n + n % 2
    if form is None or data is None:
        raise ValueError("has no format or no data")
    tag, channels, rate, _, _, bits = form
    values = np.frombuffer(data[:len(data) // 2 * 2], "<i2") / 32768.0 if bits == 16 else None
    return tag, channels, rate, bits, values


def fingerprint(x):
    """Levels in dB over bands and time, after the loudest stretch is brought to one loudness."""
    x = x * S.db(-20.0 - S.loudest(x))
    window, hop = 1024, 256
    padded = np.concatenate([x, np.zeros(S.samples(1.3))])[:S.samples(1.2)]
    frames = np.lib.stride_tricks.sliding_window_view(padded, window)[::hop] * np.hanning(window)
    power = np.abs(np.fft.rfft(frames, axis=1)) ** 2
    f = np.fft.rfftfreq(window, 1.0 / S.RATE)
    edges = (0.0, 0.06, 0.12, 0.22, 0.40, 0.70, 1.2)
    cells = []
    for a, b in zip(edges, edges[1:]):
        part = power[int(a * S.RATE / hop):int(b * S.RATE / hop)].mean(axis=0)
        cells.append([10 * np.log10(part[(f >= lo) & (f < hi)].sum() + 1e-3) for lo, hi in zip(BANDS, BANDS[1:])])
    return np.maximum(np.array(cells), -20.0)


def pitch_at(x, start, end):
    """The strongest frequency between two moments, in Hz."""
    part = x[S.samples(start):S.samples(end)]
    spectrum = np.abs(np.fft.rfft(part * np.hanning(len(part)), 1 << 17))
    f = np.fft.rfftfreq(1 << 17, 1.0 / S.RATE)
    spectrum[f < 150] = 0
    return f[int(np.argmax(spectrum))]


def check_effects(folder, fault):
    waves = {}
    for name, (_, peak, game, _) in EFFECTS.items():
        path = folder / (name + ".wav")
        if not path.exists():
            fault("%s: missing" % path.name)
            continue
        try:
            tag, channels, rate, bits, x = read_wave(path)
        except (ValueError, struct.error) as e:
            fault("%s: %s" % (path.name, e))
            continue
        if (tag, channels, bits) != (1, 1, 16) or rate not in (22050, 44100):
            fault("%s: format tag %d, %d channels, %d bits at %d; wanted PCM (1), mono, 16 bits at 22050 or 44100"
                  % (path.name, tag, channels, bits, rate))
            continue
        if rate != S.RATE:
            x = np.interp(np.arange(len(x) * S.RATE // rate) * rate / S.RATE, np.arange(len(x)), x)
        waves[name] = x
        top = np.abs(x).max()
        if top >= 32766 / 32768:
            fault("%s: clips (%d samples at full scale)" % (path.name, (np.abs(x) >= 32766 / 32768).sum()))
        elif abs(20 * np.log10(top + 1e-9) - peak) > 0.5:
            fault("%s: peak %.1f dB; wanted %.1f" % (path.name, 20 * np.log10(top + 1e-9), peak))
        if abs(x.mean()) > 0.003:
            fault("%s: mean value %.4f off the middle" % (path.name, x.mean()))
        m = S.samples(0.005)
        # A click is a jump at the very end, or an end that has not come down within its last 5 ms.
        for where, part in (("start", x[:m]), ("end", x[-m:][::-1])):
            if abs(part[0]) > 0.01 or np.abs(part[:m // 10]).max() > 0.25 * top:
                fault("%s: clicks at the %s (first value %.3f, %.3f within half a millisecond)" % (path.name, where, part[0], np.abs(part[:m // 10]).max()))
        if np.abs(x[-m:]).max() > 0.25 * top:
            fault("%s: cut off (%.3f in the last 5 ms)" % (path.name, np.abs(x[-m:]).max()))
        if name != "3SUCK" and np.abs(x[:S.samples(0.12)]).max() < 0.2 * top:
            fault("%s: starts too late to answer a key" % path.name)
        low, high = LENGTHS.get(name, PICKUP_LENGTH)
        if not low <= len(x) / S.RATE <= high:
            fault("%s: %.2f s; its role allows %.2f to %.2f" % (path.name, len(x) / S.RATE, low, high))
    heard = {n: S.loudest(x) + EFFECTS[n][2] for n, x in waves.items()}
    for quiet, loud, least in LADDER:
        if quiet in heard and loud in heard and heard[loud] - heard[quiet] < least:
            fault("%s (%.1f LUFS in the game) is not %.1f dB below %s (%.1f)" % (quiet, heard[quiet], least, loud, heard[loud]))
    pickups = [n for n in EFFECTS if n.startswith("PS_") and n in waves]
    level = [heard[n] for n in pickups]
    if level and max(level) - min(level) > 4.0:
        fault("pickups: %.1f dB between the softest and the loudest; wanted 4 at most" % (max(level) - min(level)))
    for n in pickups:
        x = waves[n]
        end = len(x) / S.RATE
        first, last = pitch_at(x, 0.0, 0.06), pitch_at(x, max(0.25, end - 0.45), end)
        if last < first * 1.12:
            fault("%s: does not rise (%.0f Hz, then %.0f)" % (n, first, last))
    prints = {n: fingerprint(x) for n, x in waves.items()}
    nearest = {}
    names = list(prints)
    for i, a in enumerate(names):
        for b in names[i + 1:]:
            d = np.abs(prints[a] - prints[b]).mean()
            for p, q in ((a, b), (b, a)):
                if p not in nearest or d < nearest[p][0]:
                    nearest[p] = (d, q)
            if d < APART:
                fault("%s and %s sound alike: %.1f dB apart; wanted %.1f" % (a, b, d, APART))
    return waves, heard, nearest


def decode(path):
    run = subprocess.run(["ffmpeg", "-v", "error", "-i", str(path), "-f", "f32le", "-ac", "2", "-ar", str(S.RATE), "-"],
                         stdout=subprocess.PIPE, stderr=subprocess.PIPE)
    if run.returncode or run.stderr:
        raise ValueError("cannot be decoded: " + run.stderr.decode(errors="replace").strip().split("\n")[0])
    return np.frombuffer(run.stdout, "<f4").reshape(-1, 2).T


def measure(path):
    """(integrated LUFS, true peak in dB) as ffmpeg measures them."""
    run = subprocess.run(["ffmpeg", "-hide_banner", "-nostats", "-i", str(path), "-af", "ebur128=peak=true", "-f", "null", "-"],
                         stderr=subprocess.PIPE, check=True)
    text = run.stderr.decode(errors="replace").split("Summary:")[-1]
    return float(re.search(r"I:\s+(-?[\d.]+) LUFS", text)[1]), float(re.search(r"Peak:\s+(-?[\d.]+) dBFS", text)[1])


def check_music(folder, fault):
    tracks, hottest = [], None
    paths = sorted(p for p in folder.glob("[0-9][0-9] *.ogg"))
    if len(paths) < 7:
        fault("music: %d tracks; wanted 7" % len(paths))
    for path in paths:
        try:
            x = decode(path)
            loud, peak = measure(path)
        except (ValueError, TypeError, subprocess.CalledProcessError) as e:
            fault("%s: %s" % (path.name, e))
            continue
        seconds = x.shape[1] / S.RATE
        size = path.stat().st_size
        tracks.append((path.stem, seconds, peak, loud, size))
        if not MUSIC_LENGTH[0] <= seconds <= MUSIC_LENGTH[1]:
            fault("%s: %.0f s; wanted %.0f to %.0f" % ((path.name, seconds) + MUSIC_LENGTH))
        if abs(loud - MUSIC_LOUDNESS) > MUSIC_SPREAD / 2:
            fault("%s: %.1f LUFS; wanted %.1f within %.1f" % (path.name, loud, MUSIC_LOUDNESS, MUSIC_SPREAD / 2))
        if peak > MUSIC_PEAK:
            fault("%s: true peak %.1f dB; wanted %.1f at most" % (path.name, peak, MUSIC_PEAK))
        for where, part in (("starts", x[:, :S.samples(0.003)]), ("ends", x[:, -S.samples(0.02):])):
            if np.abs(part).max() > 0.05:
                fault("%s: %s abruptly (%.2f)" % (path.name, where, np.abs(part).max()))
        side, middle = ((x[0] - x[1]) ** 2).mean(), ((x[0] + x[1]) ** 2).mean()
        if not 0.03 < side / middle < 0.8:
            fault("%s: stereo width %.2f (side to middle); wanted 0.03 to 0.8" % (path.name, side / middle))
        level = np.abs(x).max(axis=0)
        n = level.shape[0] // S.RATE * S.RATE
        still = level[:n].reshape(-1, S.RATE).max(axis=1)[1:-3] < 0.003
        if still.any():
            fault("%s: silent at %d s" % (path.name, 1 + int(np.argmax(still))))
        # The loudest minute goes into the mix below.
        if seconds > 60:
            energy = np.concatenate([[0.0], np.cumsum((x.astype(np.float64) ** 2).sum(axis=0))])
            w = 60 * S.RATE
            starts = np.arange(0, x.shape[1] - w, S.RATE)
            best = int(np.argmax(energy[starts + w] - energy[starts]))
            if hottest is None or (energy[starts[best] + w] - energy[starts[best]]) > hottest[0]:
                hottest = (energy[starts[best] + w] - energy[starts[best]], x[:, starts[best]:starts[best] + w])
    total = sum(p.stat().st_size for p in paths)
    if total > MUSIC_BYTES:
        fault("music: %d bytes; wanted %d at most" % (total, MUSIC_BYTES))
    return tracks, (hottest[1] if hottest else None)


def check_mix(waves, music, fault):
    """A minute of battle at the game's volumes: ten shots a second from the player, as many from the enemies, quads,
    explosions three at a time, hits and pickups, ten copies of an effect at most, the music at volume 50."""
    n = 60 * S.RATE
    mix = np.zeros(n)
    rng = np.random.default_rng(60)

    def volley(name, moments):
        if name not in waves:
            return
        x = waves[name] * S.db(EFFECTS[name][2])
        playing = []
        for at in sorted(moments):
            s = S.samples(at)
            playing = [p for p in playing if p > s][-9:]
            playing.append(s + len(x))
            e = min(n, s + len(x))
            mix[s:e] += x[:e - s]
    volley("FIRE", np.concatenate([np.arange(0, 60, 0.1), np.arange(0.03, 60, 0.1)]))
    volley("QUAD_SHOT", np.arange(20, 40, 0.25))
    volley("CANNON_SOUND", np.arange(40, 60, 0.5))
    # Three explosions in the same frame every five seconds: of an enemy, a missile and the player's ship.
    for name in ("EXPLOSION1", "MIS_EXPL", "EXPLOSION3"):
        volley(name, np.arange(2, 58, 5.0))
    volley("EXPLOSION1", rng.uniform(0, 58, 60))
    volley("HIT", rng.uniform(0, 58, 60))
    for name in EFFECTS:
        if name.startswith("PS_"):
            volley(name, rng.uniform(0, 58, 5))
    total = S.stereo(mix)
    if music is not None:
        total = total + music[:, :n] * S.db(-25.0)
    top = np.abs(total).max()
    if top >= 1.0:
        fault("mix: a minute of battle clips (peak %.1f dB, %d samples)" % (20 * np.log10(top), (np.abs(total) >= 1.0).sum()))
    return 20 * np.log10(top + 1e-9)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--sounds", type=pathlib.Path, default=HERE.parent / "assets" / "sounds")
    parser.add_argument("--music", type=pathlib.Path, default=HERE.parent / "assets" / "Music")
    parser.add_argument("--table", action="store_true")
    a = parser.parse_args()
    faults = []
    waves, heard, nearest = check_effects(a.sounds, faults.append)
    tracks, hottest = check_music(a.music, faults.append)
    peak = check_mix(waves, hottest, faults.append)
    if a.table:
        print("| sound | length | peak | in the game | nearest other | role |\n|---|---|---|---|---|---|")
        for n, x in waves.items():
            print("| `%s` | %.2f s | %.1f dB | %.1f LUFS | %.1f dB | %s |" % (n, len(x) / S.RATE, 20 * np.log10(np.abs(x).max()), heard[n],
                                                                      nearest.get(n, (0.0,))[0], EFFECTS[n][3]))
        print("\n| track | length | true peak | loudness | size | kbit/s |\n|---|---|---|---|---|---|")
        for name, seconds, top, loud, size in tracks:
            print("| %s | %d:%02d | %.1f dB | %.1f LUFS | %.2f MB | %.0f |" % (name, seconds // 60, seconds % 60, top, loud, size / 1e6, size * 8 / seconds / 1000))
        print()
    for f in faults:
        print("FAULT " + f)
    near = min(nearest.items(), key=lambda i: i[1][0], default=None)
    print("%d effects, %d tracks, %d faults; a minute of battle peaks at %.1f dB%s"
          % (len(waves), len(tracks), len(faults), peak, "; nearest pair %s and %s, %.1f dB" % (near[0], near[1][1], near[1][0]) if near else ""))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
