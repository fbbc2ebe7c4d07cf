"""What several tests do in a game: looking for ships, typing a name."""

import gamefiles
import pictures
from driver import wait_until


def without_scenery(folder):
    """The models but those that drift through the field: nothing then moves but the ships."""
    models = (folder / "Objects").resolve()
    (folder / "Objects").unlink()
    (folder / "Objects").mkdir()
    for model in models.iterdir():
        if not model.name.startswith("Asteroid"):  # the first one missing ends the loading
            (folder / "Objects" / model.name).symlink_to(model)


def ship_at(shown, across, up, reach=2.5):
    """How many pixels of a ship are seen around a place of the field."""
    left, top = pictures.on_screen(shown.width, shown.height, across - reach, up + reach)
    right, bottom = pictures.on_screen(shown.width, shown.height, across + reach, up - reach)
    return shown.bright_in(left, top, right, bottom)


def is_ship_at(shown, across, up):
    return ship_at(shown, across, up) > 40


def same_but_frame_rate(first, second):
    """Whether two pictures are the same outside the line of the frame counter."""
    different = (abs(first.pixels - second.pixels) > 8).any(axis=2)
    middle = first.height // 2 + 10
    different[middle - pictures.ABOVE:middle + pictures.BELOW, :200] = False
    return different.sum() < 20


def enter_name(running):
    """Types a name, with one wrong key and a digit, and returns the score that is shown."""
    typed = ""
    for key in ("A", "n", "n", "space", "L", "e", "e", "x", "BackSpace", "7"):
        character = {"space": " ", "BackSpace": ""}.get(key, key)
        typed = typed[:-1] if key == "BackSpace" else typed + character
        name = typed.ljust(20, ".")

        def is_shown():
            shown = running.picture()
            return shown is not None and shown.has_centred(name, 200, pictures.PINK)
        if key.isupper() and len(key) == 1:
            with running.holding("Shift_L"):
                running.press_until(key.lower(), is_shown, f"the name {name!r}")
        else:
            running.press_until(key, is_shown, f"the name {name!r}")
    shown = running.picture()
    for from_top, label, colour in ((260, "Final Score: ", (204, 204, 0)),
                                    (300, "Total shots Fired: ", (102, 204, 255)),
                                    (320, "Total Shots Hit: ", (102, 204, 255)),
                                    (340, "Ratio: ", (102, 204, 255))):
        assert label in shown.read_centred(from_top, colour), (label, shown.read_centred(from_top, colour))
    score = int(shown.read_centred(260, (204, 204, 0)).split()[-1])
    hits = int(shown.read_centred(320, (102, 204, 255)).split()[-1])
    assert score >= 100 and hits >= 1, (score, hits)
    def saved():
        return any(entry[1] == score for entry in gamefiles.read_hiscores(running.folder))
    running.press_until("Return", saved, "the result to be saved")
    return score


def lose_a_game(running):
    """Plays on a deadly level, shoots at least one enemy and loses all ships."""
    running.start_playing()

    def score_of_shot():
        running.key("space", hold=0.06, pause=0.03)
        return running.score()
    wait_until(score_of_shot, "an enemy to be shot")
    wait_until(lambda: running.picture().has_centred("Please Enter Your Name", 80, pictures.PINK),
               "the game to be over", 60)
