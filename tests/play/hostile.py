"""Folders and files that are missing, damaged or not what they should be: the game starts, says so
in its log, goes on and ends in good order."""

import shutil
import socket
import time

import gamefiles
from display import PATIENCE
from driver import QUESTION, game, main

GARBAGE = bytes(range(256)) * 40


def own_copy(folder, name):
    """Turns the link to a folder of assets into a folder of links, which a test may change."""
    source = (folder / name).resolve()
    (folder / name).unlink()
    (folder / name).mkdir()
    for file in source.iterdir():
        (folder / name / file.name).symlink_to(file)


def damage(file, data):
    file.unlink(missing_ok=True)
    file.write_bytes(data)


def plays_and_ends(running):
    """The game comes to its title, its menu and into play, and ends as it should."""
    running.start()
    running.start_playing()
    assert running.close() == 0


def every_file_damaged_at_once():
    def prepare(folder):
        own_copy(folder, "Objects")
        own_copy(folder, "images")
        for name in ("Objects/Nebulorix.aob", "images/player_top.tga"):
            whole = (folder / name).read_bytes()
            damage(folder / name, whole[:len(whole) * 2 // 3])
        damage(folder / "Objects/logo.aob", GARBAGE)
        damage(folder / "Objects/Asteroid1.aob", b"")
        gamefiles.write_level(folder, 1, "Title: x\nAuthor: y\nView: 1\nPaths: 2000000000\n")
        (folder / gamefiles.PREFS).write_bytes(GARBAGE[:33])
        (folder / gamefiles.HISCORES).write_bytes(GARBAGE[:799])
        (folder / gamefiles.SERVERS).write_text("NumServers: 1000000\nServer: a Path: b Port: c")

    with game(prepare=prepare) as running:
        plays_and_ends(running)
        lines = running.log().splitlines()
        for start, rest in (("ERROR: ", "Nebulorix.aob"), ("WARNING: ", "Cant load VEXO logo"),
                            ("ERROR: ", "Asteroid1.aob"), ("WARNING: ", "player_top.tga"),
                            ("ERROR: ", "Level1.lvl: line 4"), ("WARNING: ", "Hiscores file"),
                            ("Failed ", "memory for online servers")):
            assert any(line.startswith(start) and rest in line for line in lines), (start, rest)
        prefs = gamefiles.read_prefs(running.folder)
        assert (prefs["width"], prefs["height"]) == (800, 600), "the defaults, which are saved"


def preferences_out_of_all_reason_and_empty_folders():
    def prepare(folder):
        (folder / "images").unlink()
        (folder / "images").mkdir()
        (folder / "Music").mkdir()
        (folder / "levels" / "Level1.lvl").unlink()

    with game(prepare=prepare, width=-640, height=32000, bits=200, server=77,
              proxy_port=-1) as running:
        plays_and_ends(running)
        prefs = gamefiles.read_prefs(running.folder)
        assert (prefs["width"], prefs["height"], prefs["bits"]) == (800, 600, 32), prefs
        assert (prefs["server"], prefs["proxy_port"]) == (0, 8080), prefs
        assert running.log().count("WARNING: Data\\UserPrefs.bin") == 5, running.log()


def missing_folders():
    def remove(*names):
        def prepare(folder):
            for name in names:
                path = folder / name
                if path.is_symlink():
                    path.unlink()
                else:
                    shutil.rmtree(path)
        return prepare

    with game(prepare=remove("images", "levels")) as running:
        plays_and_ends(running)
        assert "ERROR: Level: levels\\Level1.lvl not found" in running.log()

    # Without its models there is no ship to fly.
    with game(prepare=remove("Objects")) as running:
        running.launch()
        running.answer(QUESTION, "n")
        assert running.wait_for_end() == 0
        assert "ERROR: Cant load player ship: Objects\\PlayerBase.aob" in running.log()


def a_file_in_the_place_of_the_data_folder():
    def prepare(folder):
        shutil.rmtree(folder / "Data")
        (folder / "Data").write_text("not a folder")

    with game(prepare=prepare) as running:
        running.launch()
        running.answer(QUESTION, "n")
        running.wait_for_frames()
        running.open_main_menu()
        assert running.close() == 0
        assert (running.folder / "Data").read_text() == "not a folder"


def folders_in_another_letter_case():
    def prepare(folder):
        (folder / "Objects").rename(folder / "OBJECTS")
        (folder / "images").rename(folder / "Images")
        (folder / "levels" / "Level1.lvl").rename(folder / "levels" / "LEVEL1.LVL")
        (folder / "levels").rename(folder / "Levels")
        (folder / "Data").rename(folder / "data")

    with game(prepare=prepare) as running:
        running.launch()
        running.answer(QUESTION, "n")
        running.wait_for_frames()
        running.start_playing()
        assert running.close() == 0
        log = (running.folder / "data" / "debug.out").read_text()
        assert "ERROR" not in log, log
        assert not (running.folder / "Data").exists(), "the folder that is there is the one to use"


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
        assert longest_standstill(running, 2) < 0.5 * PATIENCE, "the logo stands still"
        start = time.monotonic()
        assert running.close() == 0
        assert time.monotonic() - start < 4 * PATIENCE, "the end waits for the server"


if __name__ == "__main__":
    main(every_file_damaged_at_once, preferences_out_of_all_reason_and_empty_folders, missing_folders,
         a_file_in_the_place_of_the_data_folder, folders_in_another_letter_case,
         a_silent_server_is_not_waited_for)
