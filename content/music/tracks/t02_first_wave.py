"""Drive: the fight begins. A minor, a tone higher for the last round; 138 to the minute."""
import instruments as I
import notation as N
import themes as T
from song import Song

SKIRMISH = ("D5:3 F5:3 A5:2 G5:3 F5:3 E5:2 | F5:3 E5:3 C5:2 A4:8 | E5:3 E5:3 A5:2 B5:3 A5:3 E5:2 | D5:3 E5:3 D5:2 B4:8 | "
            "D5:3 F5:3 A5:2 D6:3 C6:3 A5:2 | A5:3 G5:3 F5:2 C6:8 | B5:3 A5:3 G#5:2 E5:3 F#5:3 G#5:2 | ^B5:12 r:4")
SKIRMISH_CHORDS = "Dm7 | F | Am7 | G | Dm7 | F | Esus4 | E"


def song():
    s = Song("First Wave", 138, 82)
    s.kit_level, s.kit_room = -4.0, 0.12

    bass = s.bus(I.saw_bass(), -7, duck=0.45, room=0.02)
    arp = s.bus(I.pluck(), -7, room=0.18, echo=0.30, wide=1.6, duck=0.25, low=180)
    stabs = s.bus(I.supersaw(), -9, room=0.22, duck=0.5, low=200)
    pad = s.bus(I.pad(), -12, room=0.3, duck=0.6, low=160)
    lead = s.bus(I.saw_lead(), -2, room=0.22, echo=0.28, low=220)
    second = s.bus(I.pulse_lead(), -7, room=0.25, echo=0.2, place=-0.25, low=220)
    bells = s.bus(I.bell(), -5, room=0.4, kind="space", echo=0.4, wide=1.5)
    voices = s.bus(I.singers("ah", 0.2), -8, room=0.4, low=200)
    brass = s.bus(I.brass(), -5, room=0.25, low=120)

    def groove(bar, bars, level=0.0, open_hat=True):
        s.drums(bar, bars // 2, level, kick="x...x...x...x...x...x...x...x.x.", clap="....x.......x...",
                snare="....x.......x.......x.......x..o", hat="x.oxx.oxx.oxx.ox", shaker="oxoxoxoxoxoxoxox")
        if open_hat:
            s.drums(bar, bars, level - 2, open="..x...x...x...x.")

    def roll(bar):
        s.fill(bar, snare="x.x.x.xxxxxxXXXX"[-8:], tom_high="xx......", tom_mid="..xx....", tom_low="....xxxx")

    one = N.chords("Am | F | C | G", low=57)[0]
    rise = N.chords(T.RISE_CHORDS, low=57)[0]
    rise_end = N.chords(T.RISE_CHORDS_END, low=57)[0]
    skirmish = N.chords(SKIRMISH_CHORDS, low=57)[0]
    home = N.chords(T.HOME_CHORDS, low=57)[0]
    up = N.chords(T.RISE_CHORDS, low=57, shift=2)[0]
    up_end = N.chords(T.RISE_CHORDS_END, low=57, shift=2)[0]
    DRIVE = "R.RO.RRO.RRO.RFS"

    # Intro: the arpeggio comes out of the dark; the kick joins.
    for bar in (0, 4):
        arp.put(bar, N.arpeggio(one, "0 2 1 3 2 4 3 5 4 2 3 1 2 0 1 2", 1, 0), velocity=0.8)
    arp.filter((0, 300), (8, 7000), (40, 9000), (41, 1200), (48, 9000), (76, 9000), (81, 300))
    pad.put(0, N.held(one)).put(4, N.held(one))
    s.drums(4, 4, -2, kick="x...x...x...x...", hat="..x...x...x...x.")
    brass.line(4, "r:8 A3:4 E4:4 | ^F4:12 r:4 | r:8 G3:4 E4:4 | ^D4:12 r:4", velocity=0.8)
    s.rise(8, 3, -17)
    s.swell(8, -9)

    # The groove alone, with a figure that hints at the theme.
    s.hit(8, -9)
    s.drums(8, crash="x...............")
    groove(8, 8)
    for bar in (8, 12):
        bass.put(bar, N.bass(one, DRIVE))
        arp.put(bar, N.arpeggio(one, "0 2 1 3 2 4 3 5 4 2 3 1 2 0 1 2", 1, 0), velocity=0.7)
        stabs.put(bar, N.strummed(one, "x..x..x...x..x.."), velocity=0.8)
    second.line(12, "A4:2 E5:2' E5:2 D5:2 C5:2 D5:2 r:4 | A4:2 F5:2' F5:2 E5:2 D5:2 C5:2 r:4 | G4:2 E5:2' E5:2 D5:2 C5:2 D5:2 r:4 | B4:2 G5:2' G5:2 F5:2 D5:2 B4:2 r:4")
    roll(15)

    # The ship's theme twice, the second time in two voices.
    for bar, chords, end in ((16, rise, False), (24, rise_end, True)):
        s.drums(bar, crash="x...............")
        groove(bar, 8)
        bass.put(bar, N.bass(chords, DRIVE))
        arp.put(bar, N.arpeggio(chords, "0 1 2 3 4 3 2 1", 1, 1), velocity=0.55)
        stabs.put(bar, N.strummed(chords, "x--x--x-..x--x--"), velocity=0.75)
        pad.put(bar, N.held(chords))
        lead.line(bar, T.RISE + " | " + (T.RISE_END if end else T.RISE_ON))
        if end:
            second.line(bar, T.RISE_THIRDS + " | " + T.RISE_THIRDS_END)
        roll(bar + 7)

    # Second section: the skirmish, in threes against the beat.
    s.drums(32, crash="x...............")
    s.hit(32, -10)
    s.drums(32, 4, kick="x..x..x.x.....x.x..x..x.x...x...", snare="....x.......x..o....x.......x.x.", hat="x.xxx.xxx.xxx.xx", tom_low="..............x.")
    bass.put(32, N.bass(skirmish, "R..R..R.O..O..S."))
    brass.put(32, N.strummed(skirmish, "x--x--x-x--x--x-", -12), velocity=0.75)
    lead.line(32, SKIRMISH)
    second.line(36, SKIRMISH.split(" | D5:3 F5:3 A5:2 D6:3")[0], shift=-12, velocity=0.6)
    arp.put(32, N.arpeggio(skirmish, "0 2 4 0 2 4 1 3", 1, 1), velocity=0.6)
    roll(39)

    # Breath: home, from far away, then the drums roll back in.
    s.drums(40, crash="x...............")
    pad.put(40, N.held(home), velocity=1.0)
    voices.put(40, N.held(home))
    bells.line(40, T.HOME + " | " + T.HOME_END, shift=0)
    arp.put(40, N.arpeggio(home, "0 . 2 . 4 . 2 . 3 . 1 . 2 . 1 .", 1, 0), velocity=0.7)
    bass.put(40, N.bass(home[:4], "R---------------"), velocity=0.8)
    bass.put(40, [n for n in N.bass(home, "R.R.R.R.R.R.R.R.") if n.start >= 64], velocity=0.8)
    s.drums(44, 2, -3, kick="x...x...x...x...")
    s.drums(46, 1, -4, kick="x...x...x...x...", snare="x...x...x...x...")
    s.drums(47, 1, -3, kick="x.x.x.x.xxxxxxxx", snare="x.x.x.x.xxxxxxXX")
    s.rise(48, 4, -13)
    s.swell(48, -8)

    # The theme again, in full dress.
    s.hit(48, -8)
    for bar, chords, end, shift in ((48, rise, False, 0), (56, up, False, 2), (64, up_end, True, 2)):
        s.drums(bar, crash="x...............")
        groove(bar, 8, 0.5)
        bass.put(bar, N.bass(chords, DRIVE))
        arp.put(bar, N.arpeggio(chords, "0 2 1 3 2 4 3 5 4 2 3 1 2 0 1 2", 1, 1), velocity=0.6)
        stabs.put(bar, N.strummed(chords, "x--x--x-..x--x--"), velocity=0.85)
        pad.put(bar, N.held(chords))
        voices.put(bar, N.held(chords), velocity=0.9)
        if bar == 48:
            brass.line(bar, T.RISE + " | " + T.RISE_ON, shift=-12)
        lead.line(bar, T.RISE + " | " + (T.RISE_END if end else T.RISE_ON), shift=shift if bar != 48 else 0)
        second.line(bar, T.RISE_THIRDS + " | " + (T.RISE_THIRDS_END if end else T.RISE_THIRDS_ON), shift=shift)
        roll(bar + 7)
    brass.line(64, "r:16 | r:8 E4:2 F#4:2 G4:4 | r:16 | r:8 C#4:2 D4:2 E4:4 | r:16 | B3:4 C#4:4 D4:8 | C#4:8 A3:8 | B3:16")

    # Out: the engine runs down on an open chord.
    last = N.chords("Bm7 | Gmaj7 | Equart | Equart", low=57)[0]
    s.drums(72, crash="x...............")
    groove(72, 4, -1, False)
    s.drums(76, 2, -3, kick="x...x...x...x...", hat="..x...x...x...x.")
    s.drums(78, 1, -6, kick="x.......x.......")
    bass.put(72, N.bass(last, "r.OR.RO.r.OR.ROS"))
    bass.put(76, [N.Note(0, 60, [33], 0.7)])
    for bar in (72, 76):
        arp.put(bar, N.arpeggio(last, "0 2 1 3 2 4 3 5 4 2 3 1 2 0 1 2", 1, 0), velocity=0.75)
    arp.fade((76, 0), (81, -40))
    pad.put(72, N.held(last)).put(76, [N.Note(0, 64, [57, 62, 64, 69], 0.9)])
    lead.line(72, "^F#5:12 E5:4 | D5:6 E5:2 F#5:8 | ^E5:32")
    bells.line(76, "r:4 E6:4 D6:4 A5:4 | r:4 E6:4 D6:4 A5:4")
    return s
