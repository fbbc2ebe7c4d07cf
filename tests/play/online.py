"""The game and the hiscore server, and a server that never answers."""

import socket
import time

import gamefiles
from driver import PATIENCE, game, main, wait_until
from playing import enter_name, lose_a_game, without_scenery
from servers import hiscore_server


def results_go_to_the_server_and_come_back():
    with game(online=1, prepare=without_scenery) as running, hiscore_server(running.folder) as server:
        gamefiles.write_servers(running.folder, ("127.0.0.1", "/scores", server.port))
        gamefiles.write_hiscores(running.folder, range(20, 0, -1), name="Local Hero")
        gamefiles.write_level(running.folder, 1, gamefiles.deadly_level(start=0))
        running.start()
        running.wait_for_log("Hiscores sent successfully")
        assert server.table() == [("Local Hero", score) for score in range(20, 0, -1)]

        lose_a_game(running)
        score = enter_name(running)
        best = ("Ann Lee7", score)
        wait_until(lambda: server.table()[0] == best, "the server to have the result")

        entry = gamefiles.read_hiscores(running.folder)[0]
        row = f"{entry[0]} {score:09d} {int(entry[3]):03d} 001 1.0.0"
        for heading in ("NEBULORIX HISCORE TABLE", "NEBULORIX ONLINE HISCORES"):
            running.wait_for_picture(lambda shown: shown.colour_of_centred(heading, 80) and
                                     shown.colour_of_centred(row, 140), f"{heading} with {row!r}", 60)
        assert running.close() == 0


def longest_standstill(running, seconds):
    """The longest time for which the picture did not change, while it ought to all the time."""
    end = time.monotonic() + seconds
    last, since, longest = running.picture(), time.monotonic(), 0.0
    while time.monotonic() < end:
        shown = running.picture()
        if (shown.pixels != last.pixels).any():
            last, since = shown, time.monotonic()
        longest = max(longest, time.monotonic() - since)
    return longest


def a_silent_server_is_not_waited_for():
    with socket.socket() as silent, game(online=1) as running:
        silent.bind(("127.0.0.1", 0))
        silent.listen()
        gamefiles.write_servers(running.folder, ("127.0.0.1", "/scores", silent.getsockname()[1]))
        running.start()
        running.wait_for_log("Attempting to read online Hiscores")
        assert longest_standstill(running, 3) < 0.5 * PATIENCE, "the logo stands still"
        start = time.monotonic()
        assert running.close() == 0
        assert time.monotonic() - start < 4 * PATIENCE, "the end waits for the server"


if __name__ == "__main__":
    main(results_go_to_the_server_and_come_back, a_silent_server_is_not_waited_for)
