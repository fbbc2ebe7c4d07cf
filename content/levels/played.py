"""Lets the autopilot play levels and whole games, on all cores, and adds up what it wrote."""
import collections
import concurrent.futures
import csv
import hashlib
import os
import pathlib
import statistics
import subprocess
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parent.parent
PILOTS = ("beginner", "expert")
LEVELS = range(1, 37)
SECTOR = 6  # levels
FRAMES = 60  # a second
# Hits are rare at first and rise fast, so the first two sectors are played more often.
PARTS = ((range(1, 7), 600), (range(7, 13), 400), (range(13, 25), 150), (range(25, 37), 150))
GAMES = 200


def digest(assets):
    """Tells the levels in an assets folder from any others."""
    return hashlib.sha256(b"".join((assets / "levels" / f"Level{level}.lvl").read_bytes()
                                   for level in LEVELS)).hexdigest()[:12]


def run(assets, pilot, levels, *options):
    """The rows of one run of the autopilot, numbers as numbers."""
    with tempfile.NamedTemporaryFile(suffix=".csv") as file:
        subprocess.run([ROOT / "build" / "release" / "autopilot", "--assets", assets, "--pilot",
                        pilot, "--csv", file.name, "--levels", f"{levels[0]}-{levels[-1]}",
                        *map(str, options)], check=True)
        with open(file.name) as rows:
            return [{key: int(value) for key, value in row.items()}
                    for row in csv.DictReader(rows)]


def mean(rows, column):
    return statistics.fmean(row[column] for row in rows) if rows else 0.0


def total(rows, column):
    return sum(row[column] for row in rows)


class Played:
    """alone[pilot][level]: the rows of single levels; games[pilot]: the rows of whole games."""

    def __init__(self, assets, parts=PARTS, games=GAMES):
        self.alone = {pilot: collections.defaultdict(list) for pilot in PILOTS}
        self.games = {pilot: [] for pilot in PILOTS}
        with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
            if games:
                whole = {pilot: pool.submit(run, assets, pilot, LEVELS, "--game", "--seeds", games)
                         for pilot in PILOTS}
            single = [(pilot, pool.submit(run, assets, pilot, levels, "--seeds", seeds))
                      for levels, seeds in parts for pilot in PILOTS]
        for pilot, job in single:
            for row in job.result():
                self.alone[pilot][row["level"]].append(row)
        if games:
            self.games = {pilot: job.result() for pilot, job in whole.items()}

    def rows(self, level):
        """Of one level, both pilots'."""
        return [row for pilot in PILOTS for row in self.alone[pilot][level]]

    def seconds(self, level):
        return statistics.fmean(mean(self.alone[pilot][level], "frames") / FRAMES
                                for pilot in PILOTS)

    def hits(self, pilot, levels):
        return mean([row for level in levels for row in self.alone[pilot][level]], "hurt")

    def ends(self, pilot):
        """The last level of each whole game, sorted."""
        return sorted({row["seed"]: row["level"] for row in self.games[pilot]}.values())

    def sector(self, pilot, number):
        return [row for row in self.games[pilot] if (row["level"] - 1) // SECTOR == number - 1]

    def flawless_starts(self, levels=3):
        """Of the beginner's games, those without a ship lost in the first levels: one True each."""
        lost = collections.Counter()
        for row in self.games["beginner"]:
            lost[row["seed"]] += row["ships_lost"] if row["level"] <= levels else 0
        return [ships == 0 for ships in lost.values()]

    def coins(self, pilot, level):
        """What the games that reached the shop after a level had to spend there."""
        return [row["money"] for row in self.games[pilot]
                if row["level"] == level and row["cleared"]]
