"""Every line of every menu page does its work on the running program."""

import gamefiles
import pictures
from driver import (LONG, MAIN_MENU, PAUSE_MENU, TITLE, WINDOW_READY, Display, game, main,
                    wait_until)

RESOLUTIONS = ((640, 480), (800, 600), (1024, 768), (1280, 1024), (1600, 1200))
BACK = "Go Back to Options Menu"
RESOLUTION_PAGE = (*(f"{width} x {height} @ {bits}bit" for width, height in RESOLUTIONS
                     for bits in (16, 32)), BACK)
POLYGON_PAGE = ("Point Models", "Wireframe Models", "Flat Models", "Smooth Models", BACK)
ACTIONS = ("Up", "Down", "Left", "Right", "Fire1", "Fire2")


def options_page(transparency=True, fsaa=False, fog=True):
    return ("Display OpenGL Driver Info", "Change Screen Resolution", "Flip Fullscreen",
            "Change Polygon Mode", "Turn Sound On/Off", "Change Key Config",
            f"Turn Transparency {'Off' if transparency else 'On'}",
            f"Turn FSAA {'Off' if fsaa else 'On'}", f"Turn Fog {'Off' if fog else 'On'}",
            "Change Online Hiscore Options", "Go Back to Main Menu")


def online_page(online):
    return (f"Turn Online Hiscores {'Off' if online else 'On'}", "Select Online HST server",
            "Add new Online HST server", "Set Proxy Configuration", BACK)


def server_page(*servers):
    return (*(f"{host}{path}  port {port}" for host, path, port in servers), BACK)


BUILT_IN = (("hst.example", "/examples/servlet/NebulorixHST", 8080),
            ("hst2.example", "/servlet/NebulorixHST", 80))


def open_options(running, lines=MAIN_MENU):
    running.open_page(lines, "Options", options_page())


def pause_a_game(running):
    running.start_playing()
    running.press_until("Escape", lambda: running.chosen_line(PAUSE_MENU) is not None, "the pause")


def every_resolution_on_a_smaller_screen():
    display = Display("1280x1024")
    try:
        with game(display) as running:
            running.start()
            running.open_main_menu()
            open_options(running)
            running.open_page(options_page(), "Change Screen Resolution", RESOLUTION_PAGE)
            for i, (width, height) in enumerate(RESOLUTIONS):
                for bits in (16, 32) if LONG else (32 if i % 2 == 0 else 16,):
                    created = running.log().count(WINDOW_READY)
                    running.choose(RESOLUTION_PAGE, f"{width} x {height} @ {bits}bit",
                                   lambda: running.log().count(WINDOW_READY) > created,
                                   "a new window")
                    running.wait_for_page(RESOLUTION_PAGE)
                    place = display.geometry(running.window())
                    assert place[2:] == (width, height), (place, width, height)
                    assert place[1] >= 0, "the upper edge with the heading is on the screen"
            running.open_page(RESOLUTION_PAGE, BACK, options_page())
            assert running.close() == 0
            prefs = gamefiles.read_prefs(running.folder)
            assert (prefs["width"], prefs["height"], prefs["bits"]) == (1600, 1200, 32), prefs
    finally:
        display.close()


def ship_pixels(shown):
    """The part of the picture around the player's ship, which the short pages leave free."""
    x, y = pictures.on_screen(shown.width, shown.height, 0, -10)
    return shown.pixels[y - 25:y + 26, x - 25:x + 26]


def the_ship_shows_polygon_modes_and_fog_and_takes_new_keys():
    with game() as running:
        running.start()
        pause_a_game(running)
        bright = {}
        bright["fog"] = int(ship_pixels(running.wait_for_picture(
            lambda shown: running.chosen_line(PAUSE_MENU, shown) is not None, "the pause")).sum())
        open_options(running, PAUSE_MENU)
        running.open_page(options_page(), "Change Polygon Mode", POLYGON_PAGE)
        assert running.chosen_line(POLYGON_PAGE) == 3, "the fourth line is highlighted"

        looks = {}
        for line in ("Point Models", "Wireframe Models", "Flat Models", "Smooth Models"):
            before = ship_pixels(running.picture())

            def changed():
                shown = running.picture()
                return abs(ship_pixels(shown) - before).sum() > 300
            running.choose(POLYGON_PAGE, line, changed, "another look of the ship")
            looks[line] = ship_pixels(running.picture())
        filled = {line: int((look.max(axis=2) > 60).sum()) for line, look in looks.items()}
        assert filled["Point Models"] < filled["Wireframe Models"] / 1.5, filled
        assert filled["Wireframe Models"] < filled["Smooth Models"], filled
        assert abs(filled["Flat Models"] - filled["Smooth Models"]) < filled["Smooth Models"] / 5, filled
        running.open_page(POLYGON_PAGE, BACK, options_page())

        # Without fog the ship is brighter.
        without = options_page(fog=False)
        running.open_page(options_page(), "Turn Fog Off", without)
        running.open_page(without, "Go Back to Main Menu", PAUSE_MENU)
        bright["no fog"] = int(ship_pixels(running.picture()).sum())
        assert bright["no fog"] > bright["fog"] * 1.05, bright

        def prompt_is_shown(action):
            shown = running.picture()
            return shown.has_centred(f'Press a key for "{action}"', 140, pictures.PROMPT)

        running.open_page(PAUSE_MENU, "Options", without)
        running.choose(without, "Change Key Config", lambda: prompt_is_shown("Up"), "a prompt")
        running.key("Insert")  # a music key, which cannot be bound
        assert prompt_is_shown("Up")
        keys = ("w", "s", "a", "Escape", "f", "Control_L")
        for key, after in zip(keys, ACTIONS[1:]):
            running.press_until(key, lambda: prompt_is_shown(after), f"the prompt for {after}")
        running.press_until(keys[-1], lambda: running.chosen_line(without) is not None,
                            "the options")
        running.press_until("w", lambda: running.chosen_line(without) == 0, "the first line")
        running.press_until("s", lambda: running.chosen_line(without) == 1, "the second line")
        running.open_page(without, "Go Back to Main Menu", PAUSE_MENU)
        running.choose(PAUSE_MENU, "Resume Game", running.is_playing, "the game")

        def ship_is_at(across):
            x, y = pictures.on_screen(640, 480, across, -10)
            return running.picture().bright_in(x - 15, y - 15, x + 15, y + 15) > 40
        running.press_until("a", lambda: ship_is_at(-12), "the ship to the left")
        assert running.close() == 0
        prefs = gamefiles.read_prefs(running.folder)
        assert prefs["fog"] == 0 and prefs["keys"] == bytes([ord("W"), ord("S"), ord("A"), 0x1B, ord("F"), 0x11]), prefs


def options_that_the_preferences_keep():
    with game() as running:
        running.start()
        running.open_main_menu()
        open_options(running)

        # The driver screen has the driver's name and goes away with a key.
        lines = options_page()
        running.choose(lines, "Display OpenGL Driver Info",
                       lambda: running.picture().finds_text("Mesa", 240, pictures.WHITE) or
                       running.picture().finds_text("Mesa", 160, pictures.WHITE), "the driver")
        running.press_until("x", lambda: not running.picture().finds_text(
            "Mesa", 160, pictures.WHITE), "the options")
        running.wait_for_page(lines)

        without = options_page(transparency=False)
        running.open_page(lines, "Turn Transparency Off", without)
        smooth = options_page(transparency=False, fsaa=True)
        created = running.log().count(WINDOW_READY)
        running.open_page(without, "Turn FSAA On", smooth)
        assert running.log().count(WINDOW_READY) == created + 1, "FSAA makes a new window"
        both = "Using ARB multisampling" in running.log(), "with 1 sample" in running.log()
        assert any(both), "the log says what became of the wish"
        assert running.close() == 0
        prefs = gamefiles.read_prefs(running.folder)
        assert (prefs["transparency"], prefs["antialiasing"]) == (0, 1), prefs

        # The next start has both.
        running.start()
        running.open_main_menu()
        running.open_page(MAIN_MENU, "Options", smooth)
        without_fsaa = options_page(transparency=False)
        running.open_page(smooth, "Turn FSAA Off", without_fsaa)
        running.open_page(without_fsaa, "Turn Transparency On", lines)
        # From the options the way leads to the pause page, and from there to the title.
        running.open_page(lines, "Go Back to Main Menu", PAUSE_MENU)
        running.choose(PAUSE_MENU, "Resume Game",
                       lambda: running.chosen_line(PAUSE_MENU) is None, "the title")
        assert running.close() == 0
        prefs = gamefiles.read_prefs(running.folder)
        assert (prefs["transparency"], prefs["antialiasing"]) == (1, 0), prefs


def the_proxy_is_set_and_servers_are_added_and_chosen():
    with game(width=800, height=600, server=1) as running:
        display = running.display
        running.start()
        running.open_main_menu()
        open_options(running)
        off = online_page(False)
        running.open_page(options_page(), "Change Online Hiscore Options", off)

        set_the_proxy(running, off)

        # Cancelled, the dialog adds nothing.
        title = "Add Online Server"
        running.choose(off, "Add new Online HST server", lambda: display.window(title), "the dialog")
        assert display.window(TITLE) is None, "the game is hidden behind its dialog"
        display.focus(display.window(title))
        display.tap("Escape")
        running.wait_for_page(off)
        assert not (running.folder / gamefiles.SERVERS).exists()

        # Refused as long as it is no address of a server; then it is the third of the list.
        running.take_focus()
        running.choose(off, "Add new Online HST server", lambda: display.window(title), "the dialog")
        for url, port, refusal in (
                ("http://no-path.example", "80", "Invalid server URL"),
                ("http:///nameless", "80", "Invalid server URL"),
                ("http://scores.example/table", "http", "Invalid port number"),
                ("http://scores.example/table", "8081 or so", None)):
            display.focus(display.wait_for_window(title))
            display.tap("ctrl+a")
            display.type(url)
            display.tap("Tab", "ctrl+a")
            display.type(port)
            display.tap("Return")
            if refusal is not None:
                refuse(running, title, refusal)
                display.tap("shift+Tab")
        added = ("scores.example", "/table", 8081)
        running.wait_for_page(off)
        assert gamefiles.read_servers(running.folder) == [*BUILT_IN, added]

        running.take_focus()
        running.open_page(off, "Turn Online Hiscores On", online_page(True))
        running.wait_for_log("Attempting to connect to hst2.example")
        servers = server_page(*BUILT_IN, added)
        running.open_page(online_page(True), "Select Online HST server", servers)
        assert running.chosen_line(servers) == 1, "the current server is highlighted"
        running.open_page(servers, servers[2], options_page())
        running.wait_for_log("Attempting to connect to scores.example")
        assert running.close() == 0
        prefs = gamefiles.read_prefs(running.folder)
        assert (prefs["online"], prefs["server"]) == (1, 2), prefs


def set_the_proxy(running, off):
    display = running.display
    title = "Set Proxy Configuration"
    running.choose(off, title, lambda: display.window(title), "the dialog")
    dialog = display.window(title)
    display.focus(dialog)
    # Without the tick the fields cannot be written to. The focus is on the tick box at first.
    display.tap("Tab", "ctrl+a")
    display.type("ignored.example")
    display.tap("shift+Tab", "space", "Tab", "ctrl+a")
    display.type("cache.example")
    display.tap("Tab", "ctrl+a")
    display.type("none")
    display.tap("Return")
    refuse(running, title, "Invalid port number")
    assert gamefiles.read_prefs(running.folder)["use_proxy"] == 0, "refused, nothing is stored"
    display.tap("ctrl+a")
    display.type("3128")
    display.tap("Return")
    running.wait_for_page(off)
    prefs = gamefiles.read_prefs(running.folder)
    assert (prefs["use_proxy"], prefs["proxy_port"], prefs["proxy_host"]) == (
        1, 3128, "cache.example"), prefs

    # An empty address is stored as the word NULL; the tick taken off, the rest stays.
    running.take_focus()
    running.choose(off, title, lambda: display.window(title), "the dialog")
    display.focus(display.window(title))
    display.tap("Tab", "ctrl+a", "BackSpace", "shift+Tab", "space", "Tab", "Tab", "Return")
    running.wait_for_page(off)
    prefs = gamefiles.read_prefs(running.folder)
    assert (prefs["use_proxy"], prefs["proxy_port"], prefs["proxy_host"]) == (0, 3128, "NULL"), prefs
    running.take_focus()


def refuse(running, dialog_title, caption):
    """Closes the box that refuses what a dialog says; the dialog stays."""
    box = running.display.wait_for_window(caption)
    running.display.focus(box)
    running.display.tap("Return")
    wait_until(lambda: running.display.window(caption) is None, "the box to close")
    running.display.focus(running.display.window(dialog_title))


if __name__ == "__main__":
    main(every_resolution_on_a_smaller_screen,
         the_ship_shows_polygon_modes_and_fog_and_takes_new_keys, options_that_the_preferences_keep,
         the_proxy_is_set_and_servers_are_added_and_chosen)
