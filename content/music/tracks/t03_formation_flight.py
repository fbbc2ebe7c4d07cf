"""Bright: side by side between the stars. D major, 124 to the minute, with the light of an evening drive."""
import instruments as I
import notation as N
import themes as T
from song import Song

WINGS = ("F#5:3 F#5:3 E5:2 D5:4 A4:4 | C#5:3 D5:3 E5:10 | D5:3 D5:3 C#5:2 B4:4 F#4:4 | G4:4 A4:4 B4:4 D5:4 | "
         "F#5:3 F#5:3 G5:2 A5:4 D5:4 | E5:3 F#5:3 ^E5:10 | G5:4 F#5:2 E5:4 D5:2 B4:4 | D5:8 C#5:8")
WINGS_END = ("F#5:3 F#5:3 E5:2 D5:4 A4:4 | C#5:3 D5:3 E5:10 | D5:3 D5:3 C#5:2 B4:4 F#4:4 | G4:4 A4:4 B4:4 D5:4 | "
             "F#5:3 F#5:3 G5:2 A5:4 D6:4 | ^C#6:3 B5:3 A5:10 | B5:4 A5:2 G5:4 F#5:2 E5:4 | D5:16")
WINGS_LOW = ("D5:3 D5:3 C#5:2 A4:4 F#4:4 | A4:3 B4:3 C#5:10 | B4:3 B4:3 A4:2 F#4:4 D4:4 | D4:4 E4:4 G4:4 B4:4 | "
             "D5:3 D5:3 E5:2 F#5:4 A4:4 | C#5:3 D5:3 C#5:10 | E5:4 D5:2 B4:4 B4:2 G4:4 | A4:8 A4:8")
WINGS_CHORDS = "Dadd9 | A/C# | Bm7 | Gmaj7 | Dadd9 | A/C# | Em7 | A7sus4:8 A:8"
WINGS_CHORDS_END = "Dadd9 | A/C# | Bm7 | Gmaj7 | Dadd9 | A/C# | Em7:8 A:8 | D"


def song():
    s = Song("Formation Flight", 124, 76)
    s.kit_level, s.kit_room = -4.0, 0.30

    bass = s.bus(I.saw_bass(), -7, duck=0.5, room=0.02)
    pad = s.bus(I.pad(1700, 0.3, 0.9), -10, room=0.3, duck=0.5, low=170)
    keys = s.bus(I.epiano(), -7, room=0.25, echo=0.15, wide=1.4, low=150)
    arp = s.bus(I.pluck(1300, 0.13), -9, room=0.2, echo=0.35, wide=1.7, duck=0.2, low=220)
    lead = s.bus(I.pulse_lead(), -2, room=0.25, echo=0.30, low=220)
    second = s.bus(I.saw_lead(), -7, room=0.25, echo=0.2, place=0.3, low=200)
    brass = s.bus(I.brass(), -6, room=0.28, low=120)
    bells = s.bus(I.glass(), -4, room=0.4, kind="space", echo=0.35, wide=1.5)
    voices = s.bus(I.singers("oh", 0.25), -8, room=0.4, low=200)

    def beat(bar, bars, level=0.0, busy=False):
        s.drums(bar, bars, level, kick="x.......x.x....." if not busy else "x..x....x.x...x.", snare_hard="....x.......x...",
                hat="x.x.x.x.x.x.x.x." if not busy else "xoxoxoxoxoxoxoxo", clap="....x.......x...", shaker="..o...o...o...o.")
        s.drums(bar, bars, level - 3, open="..............x.")

    def toms(bar):
        s.fill(bar, tom_high="x.xx........", tom_mid="....x.xx....", tom_low="........x.xx")

    a, a_end = N.chords(WINGS_CHORDS, low=57)[0], N.chords(WINGS_CHORDS_END, low=57)[0]
    home = N.chords(T.HOME_CHORDS, low=57, shift=2)[0]
    rise = N.chords(T.RISE_CHORDS_END, low=57, shift=2)[0]
    EIGHTHS = "R.R.R.R.R.R.R.O."
    GALLOP = "R.RRO.R.R.RRO.S."

    # Intro: engines, then lights.
    first = N.chords("Dadd9 | Dadd9 | Gmaj7 | A7sus4", low=57)[0]
    for bar in (0, 4):
        bass.put(bar, N.bass(first, EIGHTHS), velocity=0.8 if bar else 0.6)
        pad.put(bar, N.held(first))
        arp.put(bar, N.arpeggio(first, "0 1 2 3 . 2 . 1", 1, 1), velocity=0.6)
    bass.filter((0, 180), (6, 900), (8, 6000))
    pad.filter((0, 400), (8, 6000), (72, 6000), (76, 700))
    s.drums(4, 4, -2, kick="x...x...x...x...", hat="..x...x...x...x.")
    bells.line(4, "F#6:8 E6:8 | r:4 D6:4 A5:8 | B5:8 D6:8 | E6:16")
    s.swell(8, -9)
    s.rise(8, 2, -18)
    s.fill(7, snare_hard="x.x.xxxx")

    # Wings, twice.
    for bar, chords, text in ((8, a, WINGS), (16, a_end, WINGS_END)):
        s.drums(bar, crash="x...............")
        beat(bar, 8)
        bass.put(bar, N.bass(chords, EIGHTHS))
        pad.put(bar, N.held(chords))
        keys.put(bar, N.strummed(chords, "x..x..x...x..x.."), velocity=0.75)
        lead.line(bar, text)
        toms(bar + 7)
    second.line(16, WINGS_LOW)
    arp.put(16, N.arpeggio(a_end, "0 2 4 2 3 1 2 4", 1, 1), velocity=0.55)

    # Home in D: the second section.
    s.hit(24, -11)
    s.drums(24, crash="x...............")
    for bar, texts in ((24, (T.HOME, T.HOME_END)), (32, (T.HOME, T.HOME_END))):
        beat(bar, 8, 0, True)
        bass.put(bar, N.bass(home, GALLOP))
        pad.put(bar, N.held(home))
        arp.put(bar, N.arpeggio(home, "0 1 2 3 4 3 2 1", 1, 1), velocity=0.6)
        brass.line(bar, " | ".join(texts), shift=-10)
        toms(bar + 7)
    lead.line(32, T.HOME + " | " + T.HOME_END, shift=2)
    voices.put(32, N.held(home))
    keys.put(32, N.strummed(home, "x--x--x-..x--x--"), velocity=0.7)

    # Bridge: the ship's theme on glass, in B minor, only keys and air below it.
    s.drums(40, crash="x...............")
    pad.put(40, N.held(rise))
    keys.put(40, N.arpeggio(rise, "0 2 1 3 2 4 3 1", 2, 0), velocity=0.8)
    bells.line(40, T.RISE + " | " + T.RISE_END, shift=2)
    bass.put(40, N.bass(rise, "R---------------"), velocity=0.75)
    s.drums(40, 4, -5, kick="x.......x.......", rim="....x.......x...", shaker="oxoxoxoxoxoxoxox")
    s.drums(44, 4, -3, kick="x...x...x...x...", rim="....x.......x...", hat="..x...x...x...x.", shaker="oxoxoxoxoxoxoxox")
    s.fill(47, snare_hard="x.x.xxxx")
    s.rise(48, 3, -15)
    s.swell(48, -8)

    # Wings once more, with everybody.
    s.hit(48, -9)
    for bar, chords, text in ((48, a, WINGS), (56, a_end, WINGS_END)):
        s.drums(bar, crash="x...............")
        beat(bar, 8, 0.5, True)
        bass.put(bar, N.bass(chords, GALLOP))
        pad.put(bar, N.held(chords))
        voices.put(bar, N.held(chords), velocity=0.9)
        keys.put(bar, N.strummed(chords, "x..x..x...x..x.."), velocity=0.7)
        arp.put(bar, N.arpeggio(chords, "0 2 4 2 3 1 2 4", 1, 1), velocity=0.6)
        lead.line(bar, text)
        second.line(bar, WINGS_LOW)
        toms(bar + 7)
    brass.line(48, "r:8 A3:4 D4:4 | E4:16 | r:8 D4:4 F#4:4 | G4:12 r:4 | r:8 D4:4 F#4:4 | A4:16 | B4:8 G4:8 | A4:8 E4:8")
    brass.line(56, "r:8 A3:4 D4:4 | E4:16 | r:8 D4:4 F#4:4 | G4:12 r:4 | r:8 D4:4 F#4:4 | A4:16 | B4:8 C#5:8 | D5:16")

    # Home, thinning out to the open chord.
    s.drums(64, crash="x...............")
    beat(64, 6, -1)
    bass.put(64, N.bass(home, EIGHTHS))
    pad.put(64, N.held(home))
    arp.put(64, N.arpeggio(home, "0 1 2 3 4 3 2 1", 1, 1), velocity=0.55)
    lead.line(64, T.HOME, shift=2)
    bells.line(68, T.HOME_END, shift=2)
    s.drums(70, 2, -4, kick="x...x...x...x...", hat="..x...x...x...x.")
    pad.put(72, [N.Note(0, 64, [57, 62, 64, 69], 0.9)])
    voices.put(72, [N.Note(0, 56, [57, 64, 69], 0.7)])
    bass.put(72, [N.Note(0, 56, [38], 0.7)])
    arp.put(72, N.arpeggio(N.chords("Equart | Equart | Equart", low=57)[0], "0 1 2 3 4 3 2 1", 1, 1), velocity=0.5)
    arp.fade((70, 0), (75, -36))
    bells.line(72, "E6:8 D6:8 | A6:16")
    return s
