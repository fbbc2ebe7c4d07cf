"""Calm: the first picture of the game, far from everything. A minor, 84 to the minute."""
import instruments as I
import notation as N
import themes as T
from song import Song


def song():
    s = Song("Nebula Rising", 84, 50, target=-14.5)
    s.echo_steps = 6
    s.kit_level, s.kit_room = -6.0, 0.25

    air = s.bus(I.warm_pad(), -9, room=0.35, kind="space", low=110)
    voices = s.bus(I.singers("ah"), -5, room=0.5, kind="space", low=180)
    strings = s.bus(I.strings(2800), -9, room=0.35, low=160)
    keys = s.bus(I.epiano(), -7, room=0.25, echo=0.12)
    bells = s.bus(I.bell(), -4, room=0.4, kind="space", echo=0.45, low=300, wide=1.6)
    harp = s.bus(I.soft_pluck(), -3, room=0.3, echo=0.35, wide=1.8, low=200)
    lead = s.bus(I.soft_lead(), -2, room=0.30, echo=0.22)
    high = s.bus(I.saw_lead(), -4, room=0.35, echo=0.25, low=250)
    bass = s.bus(I.round_bass(), -6, room=0.04)

    intro = N.chords("Am9 | Am9 | Fmaj9 | G6")[0]
    verse = N.chords("Am9 | Fmaj7 | C | G/B | Am9 | F | Dm9 | Esus4:8 E:8")[0]
    verse_end = N.chords("Am7 | Fmaj7 | C | G/B | Am7 | F | G | Am7")[0]
    home = N.chords(T.HOME_CHORDS)[0]
    bridge = N.chords("Dm9 | Em7 | Fmaj7 | G6 | Dm9 | Em7 | Fmaj7 | Esus4:8 E:8")[0]
    outro = N.chords("Fmaj9 | G6 | Equart | Equart:32")[0]

    # Intro: the pad opens like a shutter, bells drift in.
    air.put(0, N.held(intro))
    air.filter((0, 350), (4, 2600), (20, 5000), (42, 5000), (50, 900))
    harp.put(0, N.arpeggio(intro, "0 . 2 . 1 . 3 . 4 . 3 . 2 . 1 .", 1, 1), velocity=0.7)
    harp.fade((0, -40), (3, 0), (44, 0), (49, -30))
    bells.line(1, "r:8 E6:8 | r:4 B5:12 | r:8 D6:4 B5:4")
    s.swell(4, -16)

    # The ship's theme, alone over the pad.
    air.put(4, N.held(verse))
    harp.put(4, N.arpeggio(verse, "0 2 4 2 3 2 4 2 5 3 4 2 3 2 1 2", 1, 0), velocity=0.62)
    lead.line(4, T.RISE + " | " + T.RISE_ON)
    bass.put(4, [N.Note(c.start, c.length * 0.95, [28 + (c.bass - 28) % 12], 0.7) for c in verse[4:]])
    s.swell(12, -15)

    # Again, with keys, brushes and voices that answer.
    air.put(12, N.held(verse_end))
    voices.put(12, N.held(verse_end), shift=0)
    keys.put(12, N.strummed(verse_end, "x-----.x--..x---"), velocity=0.8)
    harp.put(12, N.arpeggio(verse_end, "0 2 4 2 3 2 4 2 5 3 4 2 3 2 1 2", 1, 1), velocity=0.6)
    lead.line(12, T.RISE + " | " + T.RISE_END)
    bells.line(13, "r:8 E6:2 G6:2 C7:4 | r:16 | r:8 B5:4 D6:4 | r:16 | r:10 C6:2 F6:4 | r:16 | A6:16")
    bass.put(12, N.bass(verse_end, "R-------..R-O-F-"))
    s.drums(12, 8, kick_soft="x.........x.....", rim="........x.......", shaker="o.x.o.x.o.x.o.xo")

    # Second section: home, brighter and wider.
    s.hit(20, -13)
    strings.put(20, N.held(home), shift=0)
    air.put(20, N.held(home))
    keys.put(20, N.strummed(home, "x--x--x-..x-x---"))
    harp.put(20, N.arpeggio(home, "0 1 2 3 4 3 2 1", 1, 1), velocity=0.6)
    lead.line(20, T.HOME + " | " + T.HOME_END)
    high.line(24, T.HOME_END, shift=-12)
    bass.put(20, N.bass(home, "R-----R-O---F-R-"))
    s.drums(20, 8, kick_soft="x.....x...x.....", brush="....x.......x..o", hat="o.x.o.x.o.x.o.xo", shaker="..o...o...o...o.")
    s.drums(20, crash="o...............")
    s.fill(27, tom_high="........x.x.....", tom_mid="..........x.x...", tom_low="............x.xx")

    # Bridge: back to the keys.
    keys.put(28, N.strummed(bridge, "x---x-x-..x-x---"))
    keys.put(28, N.arpeggio(bridge, "4 . . 5 . . 4 . 3 . . 2 . . 3 .", 1, 0), velocity=0.6)
    voices.put(28, N.held(bridge))
    bells.line(28, "A5:6 C6:6 E6:4 | D6:12 r:4 | r:4 C6:4 A5:4 G5:4 | B5:16 | A5:6 C6:6 F6:4 | G6:12 r:4 | r:4 A6:4 G6:4 E6:4 | E6:8 G#5:8")
    bass.put(28, N.bass(bridge, "R-----------F---"))
    s.drums(32, 4, kick_soft="x.......x.......", shaker="o.x.o.x.o.x.o.xo")
    s.rise(36, 2, -24)
    s.swell(36, -11)

    # The theme in full.
    s.hit(36, -10)
    air.put(36, N.held(verse_end))
    voices.put(36, N.held(verse_end), shift=12, velocity=0.9)
    strings.put(36, N.held(verse_end))
    high.line(36, T.RISE + " | " + T.RISE_END)
    lead.line(36, T.RISE_THIRDS + " | " + T.RISE_THIRDS_END)
    harp.put(36, N.arpeggio(verse_end, "0 2 4 2 3 2 4 2 5 3 4 2 3 2 1 2", 1, 1), velocity=0.7)
    bass.put(36, N.bass(verse_end, "R---R-R-O---F-L-"))
    s.drums(36, 8, kick="x.....x...x.....", snare="....x.......x...", hat="x.o.x.o.x.o.x.oo", shaker="o.x.o.x.o.x.o.xo", level=-2)
    s.drums(36, 2, crash="x...............", level=-3)
    s.fill(39, tom_mid="............x.x.", tom_low="..............xx")
    s.fill(43, tom_high="........x.x.....", tom_mid="..........x.x...", tom_low="............xxxx")

    # Away again, on an open chord.
    air.put(44, N.held(outro))
    voices.put(44, N.held(outro), velocity=0.8)
    harp.put(44, N.arpeggio(outro, "0 . 2 . 1 . 3 . 4 . 3 . 2 . 1 .", 1, 1), velocity=0.6)
    lead.line(44, "A5:6 G5:2 E5:8 | D5:6 E5:2 G5:8 | A5:16")
    bells.line(46, "r:8 E6:8 | r:4 A6:12 | r:8 D6:8")
    bass.put(44, [N.Note(0, 15, [29], 0.8), N.Note(16, 15, [31], 0.8), N.Note(32, 40, [33], 0.7)])
    return s
