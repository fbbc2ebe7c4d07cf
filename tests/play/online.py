"""The hiscore server's table on the title, without a hand on the keys."""

import gamefiles
from driver import game, main
from servers import hiscore_server


def the_title_shows_the_local_table_and_that_of_the_server():
    with game(online=1) as running, hiscore_server(running.folder) as server:
        gamefiles.write_servers(running.folder, ("127.0.0.1", "/scores", server.port))
        gamefiles.write_hiscores(running.folder, range(20, 0, -1))
        running.start()
        row = "VEXO................ 000000020 050 001 1.0.0"
        for heading in ("NEBULORIX HISCORE TABLE", "NEBULORIX ONLINE HISCORES"):
            running.wait_for_picture(lambda shown: shown.colour_of_centred(heading, 80) and
                                     shown.colour_of_centred(row, 140), f"{heading} with {row!r}", 60)
        assert running.close() == 0


if __name__ == "__main__":
    main(the_title_shows_the_local_table_and_that_of_the_server)
