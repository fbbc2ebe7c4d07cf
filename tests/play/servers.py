"""A hiscore server of our own for tests, and the few words that a client says to it."""

import contextlib
import pathlib
import re
import socket
import subprocess

from driver import PROGRAM

SERVER = PROGRAM.parent / "hiscore-server"


class HiscoreServer:
    def __init__(self, database, port=0):
        self.process = subprocess.Popen([str(SERVER), "--port", str(port), "--database",
                                         str(database)], stdout=subprocess.PIPE, text=True)
        self.port = int(re.search(r"port (\d+)", self.process.stdout.readline())[1])

    def kill(self):
        self.process.kill()
        self.process.wait()
        self.process.stdout.close()

    def table(self):
        """The best results as (name, score), best first."""
        fields = exchange(self.port, "SetScores", "").split("_")
        return [(fields[i].rstrip(".").replace(":", " "), int(fields[i + 1])) for i in range(0, 120, 6)]


@contextlib.contextmanager
def hiscore_server(folder):
    server = HiscoreServer(pathlib.Path(folder) / "scores.db")
    try:
        yield server
    finally:
        server.kill()


def exchange(port, operation, results, seconds=10):
    """Sends results and returns the body of the answer; OSError or ValueError when there is none."""
    with socket.create_connection(("127.0.0.1", port), seconds) as connection:
        connection.settimeout(seconds)
        connection.sendall(f"GET /scores?Op={operation}&V={results} HTTP/1.1\nAccept: */*\r\n\r\n"
                           .encode())
        answer = b""
        while piece := connection.recv(4096):
            answer += piece
    if not answer.endswith(b"!"):
        raise ValueError(f"no whole answer: {answer[-80:]}")
    return answer.split(b"\r\n\r\n", 1)[1].decode()
