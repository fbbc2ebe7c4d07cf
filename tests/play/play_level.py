"""A game from the title to the hiscore table."""

import gamefiles
import pictures
from driver import PAUSE_MENU, game, main, wait_until
from playing import enter_name, is_ship_at, same_but_frame_rate, without_scenery
from servers import hiscore_server


def shot_under_way(shown):
    left, top = pictures.on_screen(640, 480, -1, 20)
    right, bottom = pictures.on_screen(640, 480, 1, -4)
    return shown.bright_in(left, top, right, bottom) > 15


def the_ship_flies_and_shoots_and_the_pause_stops_everything():
    with game(prepare=without_scenery) as running:
        running.start()
        running.start_playing()
        start = running.wait_for_picture(lambda shown: is_ship_at(shown, 0, -10), "the ship")
        assert start.has_text("2000", int(640 * 0.01), int(480 * 0.92), (204, 51, 51)), "best score"
        assert running.score(start) == 0

        assert not shot_under_way(running.picture())
        running.press_until("space", lambda: shot_under_way(running.picture()), "a shot above the ship")
        running.press_until("Escape", lambda: running.chosen_line(PAUSE_MENU) is not None, "the pause")
        frozen = running.picture()
        assert is_ship_at(frozen, 0, -10), "the game is seen behind the menu"
        running.wait_for_new_frames()
        running.key("Shift_L", hold=0.2)
        assert same_but_frame_rate(frozen, running.picture()), "something moves during the pause"
        running.choose(PAUSE_MENU, "Resume Game", running.is_playing, "the game")
        moving = running.picture()
        wait_until(lambda: not same_but_frame_rate(moving, running.picture()), "the stars to move")
        # Escape leads into the pause and out of it.
        running.press_until("Escape", lambda: running.chosen_line(PAUSE_MENU) == 0, "the pause")
        running.press_until("Escape", running.is_playing, "the game")

        # Into the lower left corner, where it stays however long the keys are held.
        with running.holding("j", "k"):
            running.wait_for_picture(lambda shown: is_ship_at(shown, -35, -26), "the ship below left")
            running.key("Shift_L", hold=0.3)
            corner = running.picture()
            assert is_ship_at(corner, -35, -26), "the ship leaves its bounds"
        assert not is_ship_at(corner, 0, -10)
        with running.holding("i", "l"):
            running.wait_for_picture(lambda shown: is_ship_at(shown, -30, -21), "the ship on its way")
        assert running.close() == 0


def two_levels(folder):
    without_scenery(folder)
    gamefiles.write_hiscores(folder, range(190, -10, -10))  # so that the new result is the best
    gamefiles.write_level(folder, 1, gamefiles.target_level("First Contact", ships=2))
    gamefiles.write_level(folder, 2, gamefiles.deadly_level("Second Sight", view=2))


def intro_is_shown(shown, text, from_middle):
    """Whether a line of the level intro is somewhere on its way across the picture."""
    return shown.finds_text(text, shown.height // 2 - from_middle, (255, 77, None))


def from_level_to_level_until_the_name_is_in_the_table():
    """And the result travels to the hiscore server, as the local table did at the start."""
    with game(online=1, prepare=two_levels) as running, hiscore_server(running.folder) as server:
        gamefiles.write_servers(running.folder, ("127.0.0.1", "/scores", server.port))
        running.start()
        running.wait_for_log("Hiscores sent successfully")
        assert [score for _, score in server.table()] == list(range(190, -10, -10))
        running.start_playing()
        running.wait_for_picture(lambda shown: intro_is_shown(shown, "First Contact", 40), "the intro")

        def enemy_ahead(shown):
            return any(is_ship_at(shown, 0, up) for up in (20, 15, 10))

        running.wait_for_picture(enemy_ahead, "the enemies to fly in")

        # Both have to be shot before the next level comes.
        def fire():
            running.key("space", hold=0.06, pause=0.03)
            return running.score()
        wait_until(lambda: fire() == 200, "two enemies shot down", 60)
        spare = running.picture()
        assert is_ship_at(spare, 0, 24.3), "one spare ship is shown"

        # The second level is seen from the side: the ship flies at the right of the middle there.
        running.wait_for_picture(lambda shown: intro_is_shown(shown, "Second Sight", 40),
                                 "the second level")
        running.wait_for_picture(lambda shown: is_ship_at(shown, 10, 0) and not is_ship_at(shown, 0, -10),
                                 "the view from the side")
        running.wait_for_picture(lambda shown: not is_ship_at(shown, 0, 24.3),
                                 "the spare ship to be used", 60)

        heading = "Please Enter Your Name"
        running.wait_for_picture(lambda shown: shown.has_centred(heading, 80, pictures.PINK),
                                 "the game to be over", 60)
        score = enter_name(running)
        wait_until(lambda: server.table()[0] == ("Ann Lee7", score), "the server to have the result")
        entries = gamefiles.read_hiscores(running.folder)
        name, best, level, ratio = next(entry for entry in entries if entry[0].startswith("Ann"))
        assert name == "Ann Lee7" + "." * 12 and best == score and level == 2, entries
        assert 0 < ratio <= 100, ratio
        assert [entry[1] for entry in entries] == sorted((e[1] for e in entries), reverse=True)

        assert running.close() == 0


if __name__ == "__main__":
    main(the_ship_flies_and_shoots_and_the_pause_stops_everything,
         from_level_to_level_until_the_name_is_in_the_table)
