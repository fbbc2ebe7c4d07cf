"""What the player hears, recorded: shots, silence where it is wanted, and music that follows its
keys."""

import array
import math
import wave

import numpy

from driver import PAUSE_MENU, game, main, wait_until
from menus import options_page

RATE = 44100
LOW, HIGH = 440, 1000  # Hz of the two test tracks


def recorded_game(**arguments):
    """A game whose sound goes to a file in its folder."""
    return game(environment={"SDL_AUDIODRIVER": "disk", "SDL_DISKAUDIOFILE": "sound.raw"}, **arguments)


class Recording:
    """The file that grows while the game plays."""

    def __init__(self, running):
        self.path = running.folder / "sound.raw"

    def position(self):
        return self.path.stat().st_size // 4 * 4

    def since(self, position):
        """Both channels from there on, as numbers of -1 to 1."""
        data = numpy.fromfile(self.path, dtype="<i2", offset=position)
        return data[:len(data) // 2 * 2].reshape(-1, 2) / 32768

    def next(self, seconds):
        """What is heard in the next so many seconds of recorded time."""
        start = self.position()
        wait_until(lambda: self.position() - start >= seconds * RATE * 4, "sound to be recorded")
        return self.since(start)


def loudness(sound):
    return float(abs(sound).max()) if len(sound) else 0.0


def has_tone(sound, frequency):
    """Whether that frequency is the strongest."""
    if loudness(sound) < 0.001:
        return False
    strengths = abs(numpy.fft.rfft(sound[:, 0] * numpy.hanning(len(sound))))
    strongest = strengths.argmax() * RATE / len(sound)
    return abs(strongest - frequency) < 15


def two_tracks(folder):
    (folder / "Music").mkdir()
    for name, frequency in (("low.wav", LOW), ("high.wav", HIGH)):
        samples = array.array("h", (round(30000 * math.sin(2 * math.pi * frequency * i / RATE))
                                    for i in range(RATE * 20)))
        with wave.open(str(folder / "Music" / name), "wb") as file:
            file.setnchannels(1)
            file.setsampwidth(2)
            file.setframerate(RATE)
            file.writeframes(samples.tobytes())


def music_follows_its_keys_and_shots_are_heard_unless_the_sound_is_off():
    with recorded_game(prepare=two_tracks) as running:
        running.start()
        recording = Recording(running)
        follow_the_music(running, recording)
        running.start_playing()
        hear_shots(running, recording)
        running.press_until("Escape", lambda: running.chosen_line(PAUSE_MENU) is not None, "the pause")
        running.open_page(PAUSE_MENU, "Options", options_page())
        running.highlight(options_page(), "Turn Sound On/Off")
        running.key("Return", hold=0.4)  # taken once, however long it is held
        running.open_page(options_page(), "Go Back to Main Menu", PAUSE_MENU)
        running.choose(PAUSE_MENU, "Resume Game", running.is_playing, "the game")
        assert loudness(volleys(running, recording, 3)) == 0.0, "the sound is off"
        assert running.close() == 0


def volleys(running, recording, count):
    start = recording.position()
    for _ in range(count):
        running.key("space", hold=0.06, pause=0.08)
    recording.next(0.2)
    return recording.since(start)


def hear_shots(running, recording):
    shots = volleys(running, recording, 4)
    assert loudness(shots) > 0.05, loudness(shots)
    clipped = (abs(shots) > 0.9999).mean()
    assert clipped < 0.001, f"{clipped:.2%} of the samples are clipped"
    # Volley after volley, not one long noise: there is silence again.
    wait_until(lambda: loudness(recording.next(0.2)) == 0.0, "silence after the shots")


def follow_the_music(running, recording):
    def heard():
        return recording.next(0.15)

    def is_silent():
        return loudness(heard()) == 0.0

    def track():
        sound = heard()
        return next((tone for tone in (LOW, HIGH) if has_tone(sound, tone)), None)

    first = wait_until(track, "music at the start")
    normal = loudness(heard())
    assert 0.02 < normal < 0.5, normal

    running.key("Next")
    wait_until(is_silent, "the pause")
    running.key("Prior")
    assert wait_until(track, "the music to go on") == first

    running.key("End")
    wait_until(lambda: track() not in (None, first), "the other track")
    running.key("End")
    wait_until(lambda: track() == first, "the first track again")

    for _ in range(6):
        running.key("Insert", hold=0.04, pause=0.02)
    wait_until(lambda: loudness(heard()) > normal * 1.2, "six steps of half a decibel")
    for _ in range(12):
        running.key("Delete", hold=0.04, pause=0.02)
    wait_until(lambda: loudness(heard()) < normal / 1.2, "softer music")

    running.key("Home")
    wait_until(is_silent, "the music to stop")
    running.key("Prior")
    assert is_silent(), "stopped is not paused"
    running.key("End")
    wait_until(track, "music after the stop")
    running.key("Home")
    wait_until(is_silent, "the music to stop again")


if __name__ == "__main__":
    main(music_follows_its_keys_and_shots_are_heard_unless_the_sound_is_off)
