"""The icon in the tray and its menu."""

import time

from driver import game, main, wait_until
from fullscreen import DESKTOP, is_fullscreen, small_modes

LEFT, RIGHT = 1, 3
# Where the items of the menu stand, as shares of its height.
PICTURE, TOGGLE, EXIT = 0.18, 0.5, 0.8


def icon_place(display):
    """Where the icon is on the screen; None while the tray does not show it."""
    for window in display.windows("Nebulorix"):
        place = display.geometry(window)
        if place and place[2] <= 40:
            return place
    return None


def menu_place(display):
    for window in display.windows("nebulorix"):
        place = display.geometry(window)
        if place and place[2] > 60:
            return place
    return None


def click(display, place, across, down, button):
    x, y, width, height = place
    display.click(x + int(width * across), y + int(height * down), button)


def open_menu(display, button):
    def settled():
        place = icon_place(display)
        time.sleep(0.3)  # the tray makes room for it
        return place if place == icon_place(display) else None
    icon = wait_until(settled, "the icon in the tray")
    click(display, icon, 0.5, 0.5, button)
    return wait_until(lambda: menu_place(display), "the menu of the icon")


def both_items_of_the_menu_do_their_work():
    display = small_modes()
    try:
        with game(display) as running:
            running.start()
            # A tray that comes after the game takes its icon too.
            display.spawn("trayer", "--edge", "bottom", "--align", "right", "--widthtype",
                          "request", "--height", "32")
            place = open_menu(display, LEFT)
            x, y, width, height = place
            banner = display.picture(x, y, width, int(height * 0.35))
            colours = {tuple(pixel) for pixel in banner.pixels.reshape(-1, 3)}
            assert len(colours) > 50, "the menu has its picture"
            # The picture is nothing to choose: the menu stays open.
            click(display, place, 0.5, PICTURE, LEFT)
            assert menu_place(display) is not None
            click(display, place, 0.5, TOGGLE, LEFT)
            wait_until(lambda: is_fullscreen(running), "full screen")
            running.wait_for_frames()

            running.display.tap("alt+Return")
            wait_until(lambda: display.mode() == DESKTOP, "the desktop's mode")
            running.wait_for_frames()
            # The new window's icon; the other button opens the same menu.
            click(display, open_menu(display, RIGHT), 0.3, EXIT, LEFT)
            assert running.wait_for_end() == 0
            wait_until(lambda: icon_place(display) is None, "the icon to go")
    finally:
        display.close()


if __name__ == "__main__":
    main(both_items_of_the_menu_do_their_work)
