"""Reads and writes the files of the game as a test needs them."""

import struct

PREFS = "Data/UserPrefs.bin"
HISCORES = "Data/NXHS.bin"
SERVERS = "Data/HSTServers.dat"
LOG = "Data/debug.out"

_PREFS_FORMAT = "<3h2hB4Bi6sii"
_PREFS_FIELDS = ("major", "minor", "build", "width", "height", "bits", "transparency",
                 "antialiasing", "fog", "online", "server", "keys", "use_proxy", "proxy_port")
_PREFS_START = dict(major=1, minor=0, build=0, width=640, height=480, bits=32, transparency=1,
                    antialiasing=0, fog=1, online=0, server=0, keys=b"IKJL B", use_proxy=0,
                    proxy_port=8080, proxy_host="proxy.example")


def write_prefs(folder, **changes):
    """A small window and nobody called over the network, unless the test wants something else."""
    values = dict(_PREFS_START, **changes)
    data = struct.pack(_PREFS_FORMAT, *(values[name] for name in _PREFS_FIELDS))
    (folder / PREFS).write_bytes(data + values["proxy_host"].encode() + b"\r")


def read_prefs(folder):
    data = (folder / PREFS).read_bytes()
    size = struct.calcsize(_PREFS_FORMAT)
    values = dict(zip(_PREFS_FIELDS, struct.unpack(_PREFS_FORMAT, data[:size])))
    assert data.endswith(b"\r"), data
    return dict(values, proxy_host=data[size:-1].decode())


def read_hiscores(folder):
    """The local table as a list of (name, score, level, hit ratio)."""
    data = (folder / HISCORES).read_bytes()
    assert len(data) == 800, len(data)
    entries = []
    for i in range(20):
        record = data[40 * i:40 * i + 40]
        name = bytes((record[j] - (i - j % 3)) % 256 for j in range(21)).split(b"\0")[0]
        entries.append((name.decode("latin-1"), *struct.unpack("<iif", record[21:33])))
    return entries


def write_hiscores(folder, scores, name="VEXO................"):
    data = b""
    for i, score in enumerate(scores):
        scrambled = bytes((byte + i - j % 3) % 256
                          for j, byte in enumerate(name.encode().ljust(21, b"\0")))
        data += scrambled + struct.pack("<iif3bI", score, 1, 50.0, 1, 0, 0, 1100000000)
    (folder / HISCORES).write_bytes(data)


def read_servers(folder):
    words = (folder / SERVERS).read_text().split()
    servers = [(words[i + 1], words[i + 3], int(words[i + 5])) for i in range(2, len(words), 6)]
    assert words[0] == "NumServers:" and int(words[1]) == len(servers), words
    return servers


def write_servers(folder, *servers):
    lines = [f"Server: {host}\t Path: {path}\t Port: {port}\n" for host, path, port in servers]
    (folder / SERVERS).write_text(f"NumServers: {len(servers)}\n" + "".join(lines))


# --- Levels ---

FAR_FUTURE = 1000000000  # a frame that no test lives to see


def group(path=0, kind=0, ships=1, interval=1, start=0, fire=0):
    return (f"Bonus: 0 Path: {path} Type: {kind} Ships: {ships} Interval: {interval} "
            f"Start: {start} Fire: {fire} Dive: 0 Dives: 0\n")


def level(title, paths, waves, view=1, author="the tests"):
    """The text of a level; `paths` are lists of points, `waves` lists of groups."""
    text = f"Title:{title}\nAuthor:{author}\nView: {view}\nPaths: {len(paths)}\n"
    for points in paths:
        text += f"Points: {len(points)}\n:" + "".join(f" {x} {y} {z}" for x, y, z in points) + "\n"
    text += f"Waves: {len(waves)}\n"
    for groups in waves:
        text += f"Bonus: 0 Groups: {len(groups)}\n" + "".join(groups)
    return text


# Enemies that never come: the player has the field for himself.
def empty_level(title="Nobody There", view=1):
    return level(title, [[(0, 0, -60), (0, 0, -50)]], [[group(interval=FAR_FUTURE)]], view)


# One enemy right ahead of the ship's start, which does not shoot.
def target_level(title="One Target", view=1, ships=1):
    return level(title, [[(0, 0, -40), (0, 0, -10)]], [[group(ships=ships, interval=25)]], view)


# Enemies in front of the ship that shoot all the time. They come when the camera has swung round.
def deadly_level(title="Deadly", view=1, start=200):
    path = [(0, 0, -40), (0, 0, -12)]
    return level(title, [path], [[group(ships=3, start=start, fire=4) for _ in range(3)]], view)


def write_level(folder, number, text):
    levels = folder / "levels"
    levels.mkdir(exist_ok=True)
    (levels / f"Level{number}.lvl").write_text(text)
