"""Tension: something waits between the rocks. D minor with a dark second step, 96 to the minute, half time."""
import instruments as I
import notation as N
import themes as T
from song import Song


def song():
    s = Song("Dust and Ice", 96, 57, ceiling=-3.0)
    s.echo_steps = 3
    s.kit_level, s.kit_room = -4.0, 0.30

    clock = s.bus(I.pulse_tone(), -6, room=0.2, echo=0.3, wide=1.3, low=60)
    bass = s.bus(I.reese(), -8, room=0.03)
    air = s.bus(I.warm_pad(), -11, room=0.4, kind="space", low=130)
    dark = s.bus(I.singers("oo", 0.5), -6, room=0.5, kind="space", low=150)
    ice = s.bus(I.glass(), -5, room=0.45, kind="space", echo=0.5, wide=1.7, low=300)
    cello = s.bus(I.cello_lead(), -2, room=0.30, echo=0.10)
    hollow = s.bus(I.soft_lead(), -3, room=0.35, echo=0.25)
    strings = s.bus(I.strings(2400), -9, room=0.35, low=160)
    brass = s.bus(I.brass(), -5, room=0.30, low=110)
    ticks = s.bus(I.pluck(1500, 0.06), -10, room=0.25, echo=0.35, wide=1.8, low=400)

    # The danger theme is brought from B minor to D minor, the ship's from A minor down to D minor.
    OSTINATO = "D2:2 D2:1' D2:1' A2:2 D2:2' Eb2:2 D2:2' C2:2 D2:2'"
    TO_A = "A1:2 A1:1' A1:1' E2:2 A1:2' A1:2 A1:2' C#2:2 E2:2'"
    CLOCK = "D3:2 r:1 D3:1? A3:2 r:2 Eb4:2 D4:2? r:2 A3:2?"
    danger = N.chords(T.DANGER_CHORDS, low=55, shift=3)[0]
    danger_end = N.chords(T.DANGER_CHORDS_END, low=55, shift=3)[0]
    rise = N.chords(T.RISE_CHORDS, low=55, shift=5)[0]
    rise_end = N.chords(T.RISE_CHORDS_END, low=55, shift=5)[0]
    drone = N.chords("Dm9 | Dm9 | Ebmaj7#11 | Dm9 | Dm9 | Bbmaj7 | Ebmaj7#11 | A7sus4:8 A:8", low=55)[0]

    def slow(bar, bars, level=0.0, full=False):
        s.drums(bar, bars, level, kick="x.....x.........", snare_hard="........x.......", rim="...x......x..x..",
                hat="o.x.o.x.o.x.o.xo", shaker="x...x...x...x...")
        if full:
            s.drums(bar, bars, level - 1, kick_hard="..........x..x..", tom_low="............x.x.", ride="x...x...x...x...")

    # Intro: clocks and ice.
    air.put(0, N.held(drone))
    air.filter((0, 260), (8, 1800), (24, 4000), (53, 4000), (57, 500))
    clock.line(2, CLOCK, times=6)
    clock.fade((0, -30), (6, 0))
    ice.line(0, "r:8 A6:8 | r:12 E6:4 | r:4 Bb5:12 | r:16 | A6:4 F6:12 | r:8 D6:8 | r:4 A5:4 Eb6:8 | C#6:16")
    s.drums(4, 4, -8, rim="...x......x..x..", kick_soft="x...............")
    s.swell(8, -12)

    # First section: the ostinato; then the danger theme over it.
    s.hit(8, -9)
    for bar in range(8, 24):
        bass.line(bar, {15: TO_A, 19: "Eb2:2 Eb2:1' Eb2:1' Bb2:2 Eb2:2' A1:2 A1:2' C#2:2 E2:2'", 23: TO_A}.get(bar, OSTINATO))
    clock.line(8, CLOCK, times=16)
    slow(8, 8, -1)
    air.put(8, N.held(drone)).put(16, N.held(danger))
    air.put(20, N.held(danger_end))
    dark.line(8, "A3+D4:32 | A3+Eb4:16 | A3+D4:16 | A3+D4:16 | Bb3+D4:16 | Bb3+Eb4:16 | A3+D4:8 A3+C#4:8")
    ice.line(9, "r:8 A6:4 E6:4 | r:16 | r:4 Bb5:4 A6:8 | r:16 | F6:8 D6:8 | r:16 | r:4 C#6:12")
    s.fill(15, tom_high="x.x.....", tom_mid="..x.x...", tom_low="....x.xx")
    slow(16, 8)
    s.drums(16, crash="x...............")
    hollow.line(16, T.DANGER, shift=3)
    cello.line(20, T.DANGER_END, shift=-9)
    hollow.line(20, T.DANGER_END, shift=3, velocity=0.8)
    ticks.put(16, N.arpeggio(danger, "0 2 1 2 0 2 1 3", 1, 1), velocity=0.6)
    ticks.put(20, N.arpeggio(danger_end, "0 2 1 2 0 2 1 3", 1, 1), velocity=0.6)
    s.fill(23, tom_high="x.x.....", tom_mid="..x.x...", tom_low="....xxxx")
    s.swell(24, -9)

    # Second section: the ship's theme finds a way through.
    s.hit(24, -11)
    s.drums(24, crash="x...............")
    strings.put(24, N.held(rise))
    dark.put(24, N.held(rise))
    ticks.put(24, N.arpeggio(rise, "0 2 4 2 3 2 4 1", 1, 1), velocity=0.6)
    bass.put(24, N.bass(rise, "R---..R-..R-O---", 26))
    cello.line(24, T.RISE + " | " + T.RISE_ON, shift=-7)
    ice.line(25, "r:8 F6:4 A6:4 | r:16 | r:8 E6:4 G6:4 | r:16 | r:8 D6:4 Bb6:4 | r:16 | A6:16", velocity=0.8)
    s.drums(24, 8, 0, kick="x.......x.x.....", snare_hard="....x.......x...", hat="x.o.x.o.x.o.x.oo", shaker="oxoxoxoxoxoxoxox")

    # Nothing moves. Then something does.
    s.hit(32, -6)
    dark.line(32, "D3+A3+D4:32 | Eb3+Bb3+Eb4:16 | A3+C#4+E4:16")
    air.put(32, N.held(N.chords("Dm9 | Dm9 | Ebmaj7#11 | A", low=55)[0]))
    clock.line(32, "D3:2 r:6 A3:2? r:6 | D3:2 r:6 Eb4:2? r:6 | D3:2 r:2 A3:2? r:2 D3:2 r:2 Eb4:2? r:2 | D3:2 A3:2 D3:2 Eb4:2 D3:1 A3:1 D3:1 A3:1 Eb4:1 A3:1 Eb4:1 A3:1")
    ice.line(32, "r:8 A6:8 | r:8 Eb6:8 | r:4 A6:4 Bb6:8 | r:16")
    s.drums(33, 1, -4, tom_low="x.........x.....")
    s.drums(34, 1, -3, tom_low="x...x...x...x...")
    s.drums(35, 1, -1, tom_low="x.x.x.x.x.x.xxxx", snare_hard="........x.x.xxXX")
    s.rise(36, 3, -13)
    s.swell(36, -8)

    # The danger theme with all its weight.
    s.hit(36, -6)
    s.drums(36, crash="x...............")
    s.drums(40, crash="x...............")
    slow(36, 8, 0.5, True)
    s.drums(36, 8, -1, snare_hard="....x.......x...")
    for bar, chords, text in ((36, danger, T.DANGER), (40, danger_end, T.DANGER_END)):
        bass.put(bar, N.bass(chords, "R.RRR.R.R.RRR.S.", 26))
        brass.line(bar, text, shift=-9)
        hollow.line(bar, text, shift=3)
        strings.put(bar, N.strummed(chords, "x.xxx.x.x.xxx.x."), velocity=0.75)
        dark.put(bar, N.held(chords), velocity=1.0)
        ticks.put(bar, N.arpeggio(chords, "0 1 2 3 4 3 2 1", 1, 1), velocity=0.65)
    s.fill(43, tom_high="x.x.x...", tom_mid="..x.x.x.", tom_low="....x.xx")

    # Through: the theme's last word, and out on the open chord.
    s.drums(44, crash="x...............")
    s.hit(44, -11)
    strings.put(44, N.held(rise_end))
    dark.put(44, N.held(rise_end))
    ticks.put(44, N.arpeggio(rise_end, "0 2 4 2 3 2 4 1", 1, 1), velocity=0.6)
    bass.put(44, N.bass(rise_end, "R---..R-..R-O---", 26))
    cello.line(44, T.RISE + " | " + T.RISE_END, shift=-7)
    hollow.line(48, T.RISE_THIRDS_END, shift=5)
    s.drums(44, 7, 0, kick="x.......x.x.....", snare_hard="....x.......x...", hat="x.o.x.o.x.o.x.oo", shaker="oxoxoxoxoxoxoxox")
    s.drums(51, 1, -2, kick="x.......x.......", rim="....x.......x...")
    clock.line(52, CLOCK, times=3, velocity=0.8)
    clock.fade((52, -2), (56, -36))
    air.put(52, [N.Note(0, 76, [57, 62, 64, 69], 0.9)])
    dark.put(52, [N.Note(0, 60, [50, 57, 64], 0.7)])
    bass.put(52, [N.Note(0, 56, [26], 0.55)])
    ice.line(52, "r:8 A6:8 | r:12 E6:4 | r:4 D6:12 | r:4 A6:8")
    return s
