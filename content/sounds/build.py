#!/usr/bin/python3
"""Renders the sound effects to uncompressed 16-bit waves.

usage: build.py [-o FOLDER] [NAME ...]
"""
import argparse
import pathlib
import sys

import numpy as np

HERE = pathlib.Path(__file__).resolve().parent
for folder in (HERE, HERE.parent / "lib"):
    if str(folder) not in sys.path:
        sys.path.insert(0, str(folder))

import effects  # noqa: E402
import synth  # noqa: E402


def build(out_dir, only=()):
    """Renders the effects into a folder; returns the files written."""
    out_dir = pathlib.Path(out_dir)
    out_dir.mkdir(parents=True, exist_ok=True)
    written = []
    for name, (maker, peak, _, _) in effects.EFFECTS.items():
        if only and name not in only:
            continue
        x = synth.edges(synth.lowcut(maker(), 24.0), 0.002, 0.010)
        x = x * (synth.db(peak) / np.abs(x).max())
        target = out_dir / (name + ".wav")
        synth.write_wave(target, x, dither=False)
        print("%-20s %5.2f s, peak %5.1f dB, loudest fifth of a second %6.1f LUFS"
              % (name, len(x) / synth.RATE, 20 * np.log10(np.abs(x).max()), synth.loudest(x)))
        written.append(target)
    return written


if __name__ == "__main__":
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("-o", "--out", default=HERE.parent.parent / "assets" / "sounds")
    parser.add_argument("names", nargs="*")
    a = parser.parse_args()
    build(a.out, a.names)
