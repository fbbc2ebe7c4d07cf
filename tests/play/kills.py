"""Killed at any moment, the game and the hiscore server lose nothing that had been saved."""

import pathlib
import random
import signal
import tempfile
import threading
import time

import gamefiles
from driver import LONG, QUESTION, game, main, wait_until
from menus import BUILT_IN, online_page, open_options, options_page
from playing import lose_a_game, without_scenery
from servers import HiscoreServer, exchange

DICE = random.Random(20)  # moments that differ from kill to kill, the same in every run


def moments(count, longest):
    """So many waits of up to that many seconds, each in a part of its own."""
    return [(i + DICE.random()) * longest / count for i in range(count)]


def preferences_survive_a_kill_while_they_are_saved():
    with game(width=641) as running:
        ask_to_end(running)
        assert running.wait_for_end() == 0
        saved = (running.folder / gamefiles.PREFS).stat().st_mtime_ns
        assert saved > running.started, "the end saves them, so that there is something to disturb"
    for i, wait in enumerate(moments(60 if LONG else 4, 0.04)):
        with game(width=640 + i, proxy_host=f"old{i}.example") as running:
            before = gamefiles.read_prefs(running.folder)
            ask_to_end(running)
            time.sleep(wait)
            running.kill()
            assert gamefiles.read_prefs(running.folder) == before, "neither old nor new"


def ask_to_end(running):
    running.launch()
    running.display.wait_for_window(QUESTION)
    running.started = time.time_ns()
    running.signal(signal.SIGTERM)


def the_server_list_survives_a_kill_while_one_is_added():
    for wait in moments(20 if LONG else 1, 0.06):
        with game() as running:
            gamefiles.write_servers(running.folder, *BUILT_IN)
            running.start()
            running.open_main_menu()
            open_options(running)
            running.open_page(options_page(), "Change Online Hiscore Options", online_page(False))
            running.choose(online_page(False), "Add new Online HST server",
                           lambda: running.display.window("Add Online Server"), "the dialog")
            running.display.focus(running.display.window("Add Online Server"))
            running.display.tap("ctrl+a")
            running.display.type("a.example/b")
            running.display.tap("Tab", "ctrl+a", "9")
            running.display.press("Return")
            time.sleep(wait)
            running.kill()
            running.display.release("Return")
            servers = gamefiles.read_servers(running.folder)
            assert servers in ([*BUILT_IN], [*BUILT_IN, ("a.example", "/b", 9)]), servers


def hiscores_survive_a_kill_while_a_result_is_saved():
    old = list(range(20, 0, -1))
    for wait in moments(20 if LONG else 1, 0.08):
        with game(prepare=without_scenery) as running:
            gamefiles.write_hiscores(running.folder, old)
            gamefiles.write_level(running.folder, 1, gamefiles.deadly_level(start=0))
            running.start()
            lose_a_game(running)
            running.display.press("Return")
            time.sleep(wait)
            running.kill()
            running.display.release("Return")
            scores = [entry[1] for entry in gamefiles.read_hiscores(running.folder)]
            assert scores == old or scores[1:] == old[:-1], scores


def an_accepted_result_survives_the_server():
    """Clients send better and better results while the server is killed again and again. What it
    has answered to is kept."""
    with tempfile.TemporaryDirectory() as folder:
        database = pathlib.Path(folder) / "scores.db"
        server = HiscoreServer(database)
        port = server.port
        accepted = []
        over = threading.Event()
        points = iter(range(1000, 10**9))
        lock = threading.Lock()

        def send():
            while not over.is_set():
                with lock:
                    score = next(points)
                try:
                    exchange(port, "SetScore", f"Player_{score}_1_50.0_100_{score}")
                except (OSError, ValueError, IndexError):
                    continue
                accepted.append(score)

        clients = [threading.Thread(target=send) for _ in range(4)]
        for client in clients:
            client.start()
        try:
            for wait in moments(100 if LONG else 10, 0.05):
                count = len(accepted)
                wait_until(lambda: len(accepted) > count + 5, "results to be accepted")
                time.sleep(wait)
                server.kill()
                best = sorted(accepted)[-5:]
                server = HiscoreServer(database, port)
                kept = {score for _, score in server.table()}
                # More than the answered ones may have been kept, and twenty are.
                assert all(score in kept or score < min(kept) for score in best), (best, kept)
        finally:
            over.set()
            server.kill()
            for client in clients:
                client.join()


if __name__ == "__main__":
    main(preferences_survive_a_kill_while_they_are_saved,
         the_server_list_survives_a_kill_while_one_is_added,
         hiscores_survive_a_kill_while_a_result_is_saved, an_accepted_result_survives_the_server)
