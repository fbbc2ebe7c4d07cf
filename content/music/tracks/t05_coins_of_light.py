"""Ease: the hold is full, the shop is open. E dorian, 108 to the minute, with a light swing."""
import instruments as I
import notation as N
import synth as S
import themes as T
from song import Song

TRADE = ("E5:2 r:1 G5:1 A5:2 B5:2 r:2 A5:2 G5:2 E5:2 | F#5:3 E5:1 C#5:4 r:2 B4:1 C#5:1 E5:2 C#5:2 | "
         "E5:2 r:1 G5:1 A5:2 B5:2 r:2 D6:2 B5:2 A5:2 | B5:3 A5:1 F#5:4 r:4 G5:2 F#5:2 | "
         "G5:3 F#5:3 E5:2 G5:6 A5:2 | F#5:3 E5:3 D5:2 F#5:6 G5:2 | E5:3 D5:3 C5:2 E5:4 G5:4 | A5:8 F#5:4 D#5:4")
TRADE_END = ("E5:2 r:1 G5:1 A5:2 B5:2 r:2 A5:2 G5:2 E5:2 | F#5:3 E5:1 C#5:4 r:2 B4:1 C#5:1 E5:2 C#5:2 | "
             "E5:2 r:1 G5:1 A5:2 B5:2 r:2 D6:2 B5:2 A5:2 | ^C#6:3 B5:1 A5:4 r:2 F#5:2 A5:2 B5:2 | "
             "C6:3 B5:3 A5:2 G5:6 E5:2 | B5:3 A5:3 F#5:2 D5:6 E5:2 | G5:3 F#5:3 E5:2 C5:4 D5:4 | E5:12 r:4")
TRADE_CHORDS = "Em9 | A13 | Em9 | A13 | Cmaj9 | Bm7 | Am9 | B7sus4:8 B7:8"
TRADE_CHORDS_END = "Em9 | A13 | Em9 | A13 | Cmaj9 | Bm7 | Am9:8 D:8 | Em9"


def song():
    s = Song("Coins of Light", 108, 65, swing=0.22)
    s.kit_level, s.kit_room = -4.0, 0.18
    s.echo_steps = 3

    bass = s.bus(I.slap_bass(), -5, room=0.03)
    keys = s.bus(I.epiano(), -5, room=0.22, wide=1.3, low=140, insert=(lambda x: S.chorus(x, 0.0016, 0.8, 0.7),))
    clav = s.bus(I.clav(), -9, room=0.15, place=0.35, low=200)
    lead = s.bus(I.pulse_lead(), -3, room=0.22, echo=0.20, low=220)
    soft = s.bus(I.soft_lead(), -3, room=0.3, echo=0.25)
    organ = s.bus(I.organ(), -11, room=0.25, low=180, insert=(lambda x: S.chorus(x, 0.003, 1.6, 0.9),))
    brass = s.bus(I.brass(), -6, room=0.22, place=-0.15, low=130)
    bells = s.bus(I.bell(), -5, room=0.4, echo=0.35, wide=1.6)
    strings = s.bus(I.strings(2600), -10, room=0.35, low=180)

    a, a_end = N.chords(TRADE_CHORDS, low=57)[0], N.chords(TRADE_CHORDS_END, low=57)[0]
    vamp = N.chords("Em9 | A13", low=57)[0]
    home = N.chords(T.HOME_CHORDS, low=57, shift=7)[0]       # home in G
    rise = N.chords(T.RISE_CHORDS_END, low=57, shift=-5)[0]   # the ship's theme in E minor
    FUNK = "R..o..R.S.Ro.F.O"
    WALK = "R...F.R.O...F.L."
    COINS = "B5:1 E6:3 r:12 | r:16 | r:4 C#6:1 F#6:3 r:8 | r:16"

    def groove(bar, bars, level=0.0):
        s.drums(bar, bars // 2, level, kick="x..o......x..x..x.....x...x..o..", snare_tight="....x..o.o..x..o....x..o.o..x.oo",
                hat="xoxoxoxoxoxoxoxo", clap="....x.......x...")
        s.drums(bar, bars, level - 2, open="......x.........", shaker="oxoxoxoxoxoxoxox")

    def straight(bar, bars, level=0.0):
        s.drums(bar, bars, level, kick="x.....x.x.......", snare="....x.......x...", ride="x.x.x.x.x.x.x.x.", shaker="oxoxoxoxoxoxoxox")

    # Intro: keys, coins, then the bass.
    for bar in (0, 2, 4, 6):
        keys.put(bar, N.strummed(vamp, "x--x..x-...x..x-"), velocity=0.7 if bar < 4 else 0.8)
    bells.line(0, COINS + " | " + COINS)
    s.drums(2, 6, -5, rim="....x.......x...", shaker="oxoxoxoxoxoxoxox", hat="x...x...x...x...")
    for bar in (4, 6):
        bass.put(bar, N.bass(vamp, FUNK))
    s.drums(4, 4, -4, kick="x..o......x.....")
    s.fill(7, snare_tight="x.oxx.xx")
    s.swell(8, -13)

    # Trade, twice.
    for bar, chords, text in ((8, a, TRADE), (16, a_end, TRADE_END)):
        s.drums(bar, level=-4, crash="x...............")
        groove(bar, 8)
        bass.put(bar, N.bass(chords, FUNK))
        keys.put(bar, N.strummed(chords, "x--x..x-...x..x-"), velocity=0.75)
        clav.put(bar, N.strummed(chords, "..x.x..xx..x.x.o"), velocity=0.7)
        lead.line(bar, text)
        s.fill(bar + 7, snare_tight="x.oxx.xx", tom_mid="..x.....")
    brass.line(16, "r:12 E4+G4:1' r:1 E4+G4:2 | r:16 | r:12 E4+G4:1' r:1 F#4+A4:2 | r:8 C#4+F#4:2' r:2 C#4+F#4:4 | E4+G4:12 r:4 | D4+F#4:12 r:4 | C4+E4:8 D4+F#4:8 | E4+G4:6 r:2 E4+G4:1' r:1 D4+F#4:2 E4+G4:4")
    organ.put(16, N.held(a_end))

    # Home in G, walking.
    s.hit(24, -14)
    for bar in (24, 32):
        straight(bar, 8)
        s.drums(bar, level=-4, crash="x...............")
        bass.put(bar, N.bass(home, WALK))
        organ.put(bar, N.held(home))
        keys.put(bar, N.strummed(home, "x-----x-..x-x---"), velocity=0.75)
        s.fill(bar + 7, tom_high="x.x.....", tom_mid="..x.x...", tom_low="....x.x.", snare_tight="......xx")
    soft.line(24, T.HOME + " | " + T.HOME_END, shift=-5)
    lead.line(32, T.HOME + " | " + T.HOME_END, shift=-5)
    strings.put(32, N.held(home))
    brass.line(32, "r:16 | r:8 F#4+A4:4' r:4 | r:16 | r:8 G4+B4:4' r:4 | r:16 | r:8 F#4+A4:4' r:4 | B4:8 A4:8 | G4:16")
    bells.line(32, "r:8 B5:1 E6:3 r:4 | r:16 | r:8 F#5:1 B5:3 r:4 | r:16", times=2)

    # Breakdown: the ship's theme at ease, bass and keys alone; then the drums come back.
    s.drums(40, level=-4, crash="x...............")
    bass.put(40, N.bass(rise, "R--.R-o.R--.O-F."))
    keys.put(40, N.strummed(rise, "x--x..x-...x..x-"), velocity=0.7)
    soft.line(40, T.RISE + " | " + T.RISE_END, shift=-5)
    s.drums(40, 8, -4, rim="....x.......x...", shaker="oxoxoxoxoxoxoxox")
    s.drums(44, 4, -3, kick="x.......x.x.....", hat="x.o.x.o.x.o.x.o.")
    bells.line(44, "r:8 G6:4 E6:4 | r:16 | r:8 A6:4 F#6:4 | r:16")
    s.fill(47, snare_tight="x.xxx.xx")
    s.swell(48, -10)

    # Trade with the whole band.
    for bar, chords, text in ((48, a, TRADE), (56, a_end, TRADE_END)):
        s.drums(bar, level=-3, crash="x...............")
        bars = 8 if bar == 48 else 4
        groove(bar, bars, 0.5)
        bass.put(bar, N.bass(chords, FUNK), until=60)
        keys.put(bar, N.strummed(chords, "x--x..x-...x..x-"), velocity=0.75, until=60)
        clav.put(bar, N.strummed(chords, "..x.x..xx..x.x.o"), velocity=0.7, until=60)
        organ.put(bar, N.held(chords), until=60)
        if bar == 48:
            lead.line(bar, text)
            soft.line(bar, text, shift=-12, velocity=0.8)
        s.fill(bar + 3, snare_tight="x.oxx.xx")
    lead.line(56, " | ".join(TRADE_END.split(" | ")[:4]))
    brass.line(48, "E4+G4:1' r:11 E4+G4:1' r:1 E4+G4:2 | r:16 | r:12 E4+G4:1' r:1 F#4+A4:2 | r:8 C#4+F#4:2' r:2 C#4+F#4:4 | E4+G4:12 r:4 | D4+F#4:12 r:4 | C4+E4:12 r:4 | E4+A4:8 D#4+A4:8")
    brass.line(56, "E4+G4:1' r:11 E4+G4:1' r:1 E4+G4:2 | r:16 | r:12 E4+G4:1' r:1 F#4+A4:2 | r:8 C#4+F#4:2' r:2 C#4+F#4:4")
    bells.line(50, COINS + " | r:16 | r:16 | " + COINS)

    # Out: the band leaves one by one; the open chord stays.
    for bar in (60,):
        keys.put(bar, N.strummed(N.chords("Em9 | A13 | Equart | Equart", low=57)[0], "x--x..x-...x..x-"), velocity=0.7, until=62)
        bass.put(bar, N.bass(vamp, FUNK), velocity=0.85)
    s.drums(60, 2, -4, rim="....x.......x...", shaker="oxoxoxoxoxoxoxox", kick="x..o......x.....")
    soft.line(60, "r:8 B5:4 A5:4 | ^F#5:8 E5:8 | ^D5:4 E5:28")
    bells.line(60, COINS)
    keys.put(62, [N.Note(0, 44, [52, 57, 62, 64], 0.8), N.Note(10, 34, [69, 74], 0.6), N.Note(16, 28, [76], 0.5)])
    bass.put(62, [N.Note(0, 40, [33], 0.6)])
    strings.put(61, [N.Note(8, 52, [57, 62, 64], 0.7)])
    return s
