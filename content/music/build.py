#!/usr/bin/python3
"""Renders the music from its scores to Ogg Vorbis.

usage: build.py [-o FOLDER] [-v] [--wave FOLDER] [TRACK ...]
TRACK: the first characters of a track's name ("03"); all tracks without it.
--wave keeps the uncompressed renderings in a folder.
"""
import argparse
import ctypes
import importlib
import pathlib
import subprocess
import sys
import tempfile
import time

HERE = pathlib.Path(__file__).resolve().parent
for folder in (HERE, HERE.parent / "lib", HERE / "tracks"):
    if str(folder) not in sys.path:
        sys.path.insert(0, str(folder))

import synth  # noqa: E402

TRACKS = ["t01_nebula_rising", "t02_first_wave", "t03_formation_flight", "t04_dust_and_ice", "t05_coins_of_light",
          "t06_event_horizon", "t07_leviathan"]
KBIT = 96


def keep_memory():
    """Asks the C library to reuse large arrays instead of returning them: it saves a third of the time."""
    try:
        libc = ctypes.CDLL(None)
        libc.mallopt(-4, 0)                 # M_MMAP_MAX
        libc.mallopt(-1, 2 ** 31 - 1)       # M_TRIM_THRESHOLD
    except (OSError, AttributeError):
        pass


def build(out_dir, only=(), verbose=False, wave_dir=None):
    """Renders the tracks into a folder; returns the files written."""
    keep_memory()
    out_dir = pathlib.Path(out_dir)
    out_dir.mkdir(parents=True, exist_ok=True)
    written = []
    for number, module in enumerate(TRACKS, 1):
        if only and not any(("%02d" % number).startswith(o) for o in only):
            continue
        song = importlib.import_module(module).song()
        name = "%02d %s" % (number, song.title)
        begun = time.process_time()
        print(name, flush=True)
        samples = song.render(print if verbose else None)
        target = out_dir / (name + ".ogg")
        with tempfile.TemporaryDirectory() as scratch:
            pcm = pathlib.Path(scratch) / "track.wav"
            synth.write_wave(pcm, samples)
            if wave_dir:
                pathlib.Path(wave_dir).mkdir(parents=True, exist_ok=True)
                (pathlib.Path(wave_dir) / (name + ".wav")).write_bytes(pcm.read_bytes())
            # A fixed stream number: the same samples give the same file.
            subprocess.run(["oggenc", "-Q", "--serial", str(number), "-b", str(KBIT), "-t", song.title, "-l", "Nebulorix",
                            "-N", str(number), "-o", str(target), str(pcm)], check=True)
        seconds = samples.shape[-1] / synth.RATE
        print("  %d:%02d, %.1f LUFS, %d kB, %.0f kbit/s, %.0f s of work" % (seconds // 60, seconds % 60, synth.loudness(samples),
              target.stat().st_size // 1000, target.stat().st_size * 8 / seconds / 1000, time.process_time() - begun), flush=True)
        written.append(target)
    return written


if __name__ == "__main__":
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("-o", "--out", default=HERE.parent.parent / "assets" / "Music")
    parser.add_argument("-v", "--verbose", action="store_true")
    parser.add_argument("--wave")
    parser.add_argument("tracks", nargs="*")
    a = parser.parse_args()
    build(a.out, a.tracks, a.verbose, a.wave)
