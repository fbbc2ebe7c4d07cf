"""What the levels must be like, as rules that the autopilot's play either keeps or breaks.

Each rule is a function that gives its text and the cases that break it.
"""
import math
import statistics

import played

SHORTEST, LONGEST = 45, 240  # seconds, of the average over both pilots
LONGEST_EMPTY = 5  # seconds without an enemy in the picture
LONGEST_PILED = 1.5  # seconds in a level that two ships spend inside one another
SECTORS = range(1, 7)
FINALES = tuple(sector * played.SECTOR for sector in SECTORS)
SHOPS = (5, 10, 15, 20, 25, 30)
USEFUL, EVERYTHING = 200, 11365  # coins: a quad laser or two engines; one of each thing on sale
FACTOR = 2.0
# The first levels hit so seldom that they are taken together.
STEPS = [(1, 2, 3)] + [(level,) for level in range(4, 37) if level not in FINALES]


def lasts_long_enough(play):
    return (f"Every level lasts {SHORTEST} to {LONGEST} seconds",
            [f"level {level}: {play.seconds(level):.0f}" for level in played.LEVELS
             if not SHORTEST <= play.seconds(level) <= LONGEST])


def can_be_cleared(play):
    return ("The expert can clear every level",
            [f"level {level}" for level in played.LEVELS
             if not any(row["cleared"] for row in play.alone["expert"][level])])


def is_never_empty(play):
    longest = {level: max(row["empty"] for row in play.rows(level)) / played.FRAMES
               for level in played.LEVELS}
    return (f"The picture is never without an enemy for more than {LONGEST_EMPTY} seconds",
            [f"level {level}: {seconds:.1f}" for level, seconds in longest.items()
             if seconds > LONGEST_EMPTY])


def flies_apart(play):
    piled = {level: played.mean(play.rows(level), "piled") / played.FRAMES
             for level in played.LEVELS}
    return (f"Ships stay inside one another for less than {LONGEST_PILED} seconds of a level",
            [f"level {level}: {seconds:.1f}" for level, seconds in piled.items()
             if seconds > LONGEST_PILED])


def has_an_escort(play):
    alone = {level: (played.total(play.rows(level), "alone"),
                     played.total(play.rows(level), "with_boss")) for level in played.LEVELS}
    return ("A boss has an escort in the picture for more than half of its time there",
            [f"level {level}: {100 * (1 - without / frames):.0f} %"
             for level, (without, frames) in alone.items() if without * 2 > frames])


def begins_kindly(play):
    good = sum(play.flawless_starts())
    games = len(play.flawless_starts())
    return ("The beginner gets through levels 1 to 3 without losing a ship in 8 of 10 games",
            [f"{good} of {games}"] if good < 0.8 * games else [])


def lets_the_beginner_reach_the_middle(play):
    ends = play.ends("beginner")
    good = sum(6 <= level <= 10 for level in ends)
    return ("Three of five of the beginner's games end in levels 6 to 10",
            [f"{good} of {len(ends)}"] if good * 5 < len(ends) * 3 else [])


def lets_the_expert_go_far(play):
    ends = play.ends("expert")
    good = sum(level >= 30 for level in ends)
    return ("The expert reaches level 30 in more than half of the games",
            [f"{good} of {len(ends)}"] if good * 2 <= len(ends) else [])


def rises(play):
    lost = [played.mean(play.sector("expert", sector), "ships_lost") for sector in SECTORS]
    return ("The expert loses more ships a level in each sector than in the one before",
            [f"sector {sector}: {lost[sector - 1]:.3f} after {lost[sector - 2]:.3f}"
             for sector in SECTORS[1:] if lost[sector - 1] <= lost[sector - 2]])


def jumps(easier, harder):
    """Whether hits differ by more than the factor, and by more than two standard errors explain."""
    hits = [[row["hurt"] for row in rows] for rows in (easier, harder)]
    error = math.sqrt(FACTOR ** 2 * statistics.variance(hits[0]) / len(hits[0])
                      + statistics.variance(hits[1]) / len(hits[1]))
    return statistics.fmean(hits[1]) - FACTOR * statistics.fmean(hits[0]) > 2 * error


def is_even(play):
    broken = []
    for pilot in played.PILOTS:
        for before, after in zip(STEPS, STEPS[1:]):
            pair = [[row for level in step for row in play.alone[pilot][level]]
                    for step in (before, after)]
            easier, harder = sorted(pair, key=lambda rows: played.mean(rows, "hurt"))
            if jumps(easier, harder):
                broken.append(f"levels {before[-1]} and {after[0]}, {pilot}: "
                              f"{play.hits(pilot, before):.2f} and {play.hits(pilot, after):.2f}")
    return ("No level hits more than twice as often as its neighbours, beyond what chance explains "
            "(two standard errors), the finales left out and levels 1 to 3 taken together", broken)


def leaves_a_choice(play):
    broken = []
    for level in SHOPS:
        coins = play.coins("expert", level) + play.coins("beginner", level)
        if coins and (min(coins) < USEFUL or max(coins) >= EVERYTHING):
            broken.append(f"after level {level}: {min(coins)} to {max(coins)}")
    return (f"At every shop there are at least {USEFUL} coins and never enough for everything",
            broken)


OF_LEVELS = (lasts_long_enough, can_be_cleared, is_never_empty, flies_apart, has_an_escort)
OF_GAMES = (begins_kindly, lets_the_beginner_reach_the_middle, lets_the_expert_go_far, rises,
            is_even, leaves_a_choice)
