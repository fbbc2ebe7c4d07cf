"""Boss: it is larger than the screen. B minor, 152 to the minute, guitars and brass."""
import instruments as I
import notation as N
import themes as T
from song import Song

RIFF = ("B1+F#2+B2:2 B1:1? B1:1? B1:2? C2+G2+C3:2 B1:1? B1:1? B1:2? F2+C3:2 E2+B2:2 | "
        "B1+F#2+B2:2 B1:1? B1:1? B1:2? C2+G2+C3:2 B1:1? B1:1? B1:2? D2+A2:2 C2+G2:2")
RIFF_END = ("B1+F#2+B2:2 B1:1? B1:1? B1:2? C2+G2+C3:2 B1:1? B1:1? B1:2? F2+C3:2 E2+B2:2 | "
            "G2+D3:4 F#2+C#3:4 F2+C3:4 E2+B2:2 C2+G2:2")


def song():
    s = Song("Leviathan", 152, 92)
    s.kit_level, s.kit_room = -3.0, 0.22

    power = s.bus(I.guitar(), -7.5, room=0.10, kind="room", low=80, insert=(I.amplifier,))
    chugs = s.bus(I.chug(), -8, room=0.06, kind="room", low=80, insert=(I.amplifier,))
    bass = s.bus(I.saw_bass(), -8, room=0.02, duck=0.25)
    brass = s.bus(I.brass(), -3, room=0.28, low=110)
    horns = s.bus(I.brass(), -7, room=0.30, place=-0.3, low=110)
    voices = s.bus(I.singers("ah", 0.12), -4, room=0.45, kind="hall", low=160)
    strings = s.bus(I.strings(3000), -8, room=0.3, low=170)
    lead = s.bus(I.saw_lead(), -3, room=0.25, echo=0.22, low=220)
    arp = s.bus(I.pluck(1000, 0.12), -9, room=0.2, echo=0.25, wide=1.7, low=250)
    air = s.bus(I.warm_pad(), -9, room=0.4, kind="space", low=110)
    bells = s.bus(I.bell(), -5, room=0.5, kind="space", echo=0.35, wide=1.4)

    danger = N.chords(T.DANGER_CHORDS, low=55)[0]
    danger_end = N.chords(T.DANGER_CHORDS_END, low=55)[0]
    rise = N.chords(T.RISE_CHORDS, low=55, shift=2)[0]
    rise_end = N.chords(T.RISE_CHORDS_END, low=55, shift=2)[0]

    def riff(bar, text, times=1):
        """Open strokes go to one pair of guitars, the soft ones are muted and go to the other."""
        for _ in range(times):
            notes, length = N.melody(text)
            power.put(bar, [n for n in notes if n.velocity > 0.6])
            chugs.put(bar, [N.Note(n.start, n.length, [n.pitches[0], n.pitches[0] + 7], 0.8) for n in notes if n.velocity <= 0.6])
            bass.put(bar, [N.Note(n.start, n.length * 0.9, [n.pitches[0] if n.pitches[0] >= 35 else n.pitches[0] + 12], 0.85) for n in notes])
            bar += length / 16

    def fifths(bar, chords, pattern):
        """Power chords and muted strokes under a progression."""
        for c in chords:
            root = 35 + (c.bass - 35) % 12
            for at, hold, velocity, sign in N.rhythm((pattern * 4)[:c.length])[0]:
                note = N.Note(c.start + at, hold, [root, root + 7, root + 12] if sign == "X" else [root, root + 7], 0.8)
                (power if sign == "X" else chugs).put(bar, [note])
                bass.put(bar, [N.Note(c.start + at, hold * 0.95, [root], 0.85)])

    def march(bar, bars, level=0.0):
        s.drums(bar, bars, level, kick_hard="x.xxx.x.x.xxx.x.", snare_hard="....x.......x...", hat="x...x...x...x...")
        s.drums(bar, bars, level - 3, ride="x.x.x.x.x.x.x.x.")

    def heavy(bar, bars, level=0.0):
        s.drums(bar, bars, level, kick_hard="x.....x...x.x...", snare_hard="........x.......", open="x...x...x...x...", tom_low=".............x.x")

    def toms(bar):
        s.fill(bar, snare_hard="xxxx............"[:8], tom_high="....xx..", tom_mid="......xx", tom_low="......xx")

    # Intro: it turns around.
    s.hit(0, -6)
    s.hit(4, -6)
    air.put(0, [N.Note(0, 64, [47, 59, 62], 0.9)]).put(4, N.held(danger))
    air.filter((0, 300), (8, 3000))
    voices.line(4, "B3+F#4:16 | B3+F#4:8 C4+F4:8 | B3+F#4:16 | C4+E4:8 A#3+F#4:8")
    bells.line(0, "B4:6 C5:10 | F#5:8 F5:8 | r:16 | r:16 | B4:6 C5:10 | F#5:8 F5:8")
    horns.line(2, "B2:6 C3:6 B2:4 | F#3:8 F3:8")
    horns.line(6, "B2:6 C3:6 D3:4 | C3:8 A#2:8")
    s.drums(2, 2, -5, tom_low="x.........x.....")
    s.drums(4, 3, -3, tom_low="x...x...x.x.x...", kick_hard="x...............")
    s.drums(7, 1, -1, tom_low="x.x.x.x.x.x.xxxx", snare_hard="........x.x.xxXX")
    s.rise(8, 4, -13)
    s.swell(8, -8)

    # The riff.
    s.hit(8, -7)
    s.drums(8, crash="x...............")
    riff(8, RIFF + " | " + RIFF_END, 2)
    march(8, 8)
    toms(15)
    strings.line(12, "B4+F#5:16 | r:16 | B4+F5:8 B4+E5:8 | D5+G5:4 C#5+F#5:4 C5+F5:4 B4+E5:4", velocity=0.9)

    # Danger in brass over the riff, then answered by voices.
    for bar, chords, text in ((16, danger, T.DANGER), (20, danger_end, T.DANGER_END), (24, danger, T.DANGER), (28, danger_end, T.DANGER_END)):
        if bar in (16, 24):
            s.drums(bar, crash="x...............")
            s.hit(bar, -10)
        fifths(bar, chords, "X-xxX-xxx-xxX-x-")
        march(bar, 4)
        brass.line(bar, text, shift=-12)
        if bar >= 24:
            lead.line(bar, text)
            voices.put(bar, N.held(chords))
            strings.put(bar, N.strummed(chords, "x.xxx.xxx.xxx.x."), velocity=0.8)
        arp.put(bar, N.arpeggio(chords, "0 1 2 3 4 3 2 1", 1, 1), velocity=0.6)
        if bar in (20, 28):
            toms(bar + 3)

    # Second section: the ship's theme at half speed drums, a last stand.
    for bar, chords, text in ((32, rise, T.RISE + " | " + T.RISE_ON), (40, rise_end, T.RISE + " | " + T.RISE_END)):
        s.hit(bar, -7)
        s.drums(bar, crash="x...............")
        (heavy if bar == 32 else march)(bar, 8)
        if bar == 32:
            for c in chords:
                root = 35 + (c.bass - 35) % 12
                power.put(bar, [N.Note(c.start, c.length * 0.98, [root, root + 7, root + 12], 0.8)])
            bass.put(bar, N.bass(chords, "R-------..R-R-S-", 35))
        else:
            fifths(bar, chords, "X---xxX-..xxX-x-")
        lead.line(bar, text, shift=2)
        voices.put(bar, N.held(chords))
        strings.put(bar, N.held(chords))
        horns.line(bar, T.RISE_THIRDS + " | " + (T.RISE_THIRDS_ON if bar == 32 else T.RISE_THIRDS_END), shift=-10)
        if bar == 40:
            arp.put(bar, N.arpeggio(chords, "0 2 4 2 3 2 4 1", 1, 1), velocity=0.65)
        toms(bar + 7)

    # The eye: silence, choir and bells; it charges.
    s.hit(48, -5)
    air.put(48, N.held(danger)).put(52, N.held(danger_end))
    voices.line(48, "B2+B3+F#4:16 | B3+F#4:8 C4+F4:8 | B2+B3+F#4:16 | C4+G4:8 A#3+F#4:8", velocity=0.8)
    bells.line(48, T.DANGER, shift=12)
    s.drums(48, 4, -4, tom_low="x.........x.....", rim="....x..x....x...")
    chugs.put(52, [N.Note(i, 1, [35, 42], 0.8) for i in range(0, 48) if i % 4 != 3])
    bass.put(52, N.bass(N.chords("B5 | B5 | C5 | F#5")[0], "RRR.RRR.RRR.RRR.", 35), velocity=0.8)
    voices.put(52, N.held(danger_end))
    horns.line(52, T.DANGER_END, shift=-24)
    s.drums(52, 2, -2, kick_hard="x...x...x...x...", snare_tight="x...x...x...x...")
    s.drums(54, 1, -1, kick_hard="x.x.x.x.x.x.x.x.", snare_tight="x.x.x.x.x.x.x.x.")
    s.drums(55, 1, 0, snare_hard="x.x.x.x.xxxxXXXX", tom_low="x.x.x.x.xxxxxxxx")
    chugs.put(55, [N.Note(i, 1, [42, 49], 0.8) for i in range(16)])
    s.rise(56, 5, -11)
    s.swell(56, -7)

    # The riff with everything, danger above it.
    s.hit(56, -6)
    s.drums(56, crash="x...............")
    riff(56, RIFF + " | " + RIFF_END, 2)
    march(56, 8, 0.5)
    brass.line(56, "B3:6 C4:6 B3:4 | r:16 | B3:6 C4:6 F4:4 | G4:4 F#4:4 F4:4 E4:4", times=2)
    voices.line(56, "B3+F#4:16 | r:16 | B3+F#4:8 C4+F4:8 | D4+G4:4 C#4+F#4:4 C4+F4:4 B3+E4:4", times=2)
    toms(63)
    for bar, chords, text in ((64, danger, T.DANGER), (68, danger_end, T.DANGER_END)):
        s.drums(bar, crash="x...............")
        fifths(bar, chords, "X-xxX-xxx-xxX-x-")
        march(bar, 4, 0.5)
        brass.line(bar, text, shift=-12)
        lead.line(bar, text)
        voices.put(bar, N.held(chords))
        strings.put(bar, N.strummed(chords, "x.xxx.xxx.xxx.x."), velocity=0.8)
        arp.put(bar, N.arpeggio(chords, "0 1 2 3 4 3 2 1", 1, 1), velocity=0.65)
    toms(71)

    # The theme wins through.
    for bar, chords, text in ((72, rise, T.RISE + " | " + T.RISE_ON), (80, rise_end, T.RISE + " | " + T.RISE_END)):
        s.hit(bar, -8)
        s.drums(bar, crash="x...............")
        march(bar, 8, 0.5)
        fifths(bar, chords, "X-xxX-xxX-xxX-x-")
        lead.line(bar, text, shift=2)
        brass.line(bar, text, shift=-10)
        voices.put(bar, N.held(chords), shift=12, velocity=0.8)
        strings.put(bar, N.held(chords))
        arp.put(bar, N.arpeggio(chords, "0 2 4 2 3 2 4 1", 1, 1), velocity=0.65)
        toms(bar + 7)

    # Wreckage: one long open chord.
    s.hit(88, -6)
    s.drums(88, crash="x...............")
    power.put(88, [N.Note(0, 40, [33, 40, 45, 50], 0.8)])
    bass.put(88, [N.Note(0, 44, [33], 0.8)])
    voices.put(88, [N.Note(0, 40, [57, 62, 64], 0.9)])
    air.put(88, [N.Note(0, 56, [57, 62, 64], 0.9)])
    horns.line(88, "A3:4 E4:12 | ^D4:8 E4:8")
    bells.line(89, "A5:8 E6:8 | D6:8 A5:8")
    s.drums(88, 1, -5, tom_low="x.......x.......")
    s.drums(90, 1, -8, tom_low="x...............")
    return s
