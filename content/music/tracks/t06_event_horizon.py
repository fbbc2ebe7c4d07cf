"""Speed: too fast to turn back. F sharp minor, 172 to the minute, broken beats."""
import instruments as I
import notation as N
import themes as T
from song import Song

HORIZON = ("C#5:12 E5:4 | ^F#5:16 | A5:8 G#5:8 | E5:16 | D5:12 E5:4 | C#5:8 B4:8 | A4:8 B4:8 | ^C#5:12 r:4")
HORIZON_END = ("C#5:12 E5:4 | ^F#5:16 | A5:8 B5:8 | ^C#6:16 | D6:12 C#6:4 | B5:8 A5:8 | G#5:8 ^B5:8 | ^A5:12 r:4")
HORIZON_LOW = ("A4:12 C#5:4 | D5:16 | E5:8 E5:8 | B4:16 | B4:12 C#5:4 | A4:8 F#4:8 | F#4:8 F#4:8 | G#4:12 r:4")
CHORDS = "F#m9 | Dmaj7 | Aadd9 | E | Bm9 | F#m7/C# | Dmaj7 | C#sus4:8 C#:8"
CHORDS_END = "F#m9 | Dmaj7 | Aadd9 | E | Bm9 | Dmaj7 | E | F#m7"


def song():
    s = Song("Event Horizon", 172, 106)
    s.kit_level, s.kit_room = -3.5, 0.12
    s.echo_steps = 6

    bass = s.bus(I.reese(), -6, duck=0.35, room=0.02)
    sub = s.bus(I.round_bass(), -9, duck=0.35, room=0.0)
    pad = s.bus(I.pad(1900, 0.35, 1.2), -9, room=0.35, kind="space", duck=0.3, low=190)
    arp = s.bus(I.soft_pluck(), -5, room=0.25, echo=0.35, wide=1.8, low=250)
    acid = s.bus(I.pluck(700, 0.10), -9, room=0.15, echo=0.25, wide=1.4, low=200, duck=0.2)
    lead = s.bus(I.saw_lead(), -3, room=0.28, echo=0.30, low=220)
    second = s.bus(I.pulse_lead(), -8, room=0.28, echo=0.25, place=-0.3, low=200)
    voices = s.bus(I.singers("ah", 0.3), -6, room=0.5, kind="space", low=180)
    strings = s.bus(I.strings(3000), -8, room=0.35, low=170)
    bells = s.bus(I.bell(), -5, room=0.45, kind="space", echo=0.5, wide=1.6)
    stabs = s.bus(I.supersaw(3000), -8, room=0.25, echo=0.2, low=200, duck=0.3)

    a, a_end = N.chords(CHORDS, low=57)[0], N.chords(CHORDS_END, low=57)[0]
    rise = N.chords(T.RISE_CHORDS, low=57, shift=-3)[0]
    rise_end = N.chords(T.RISE_CHORDS_END, low=57, shift=-3)[0]
    ROLL = "R-----.R--.S-.R."
    HOLD = "R---------------"
    SPIN = "0 2 4 3 5 4 2 3 1 2 4 3 2 1 0 1"

    def broken(bar, bars, level=0.0, fine=True):
        s.drums(bar, bars // 2, level, kick_hard="x.........x.....x..x......x.....", snare_tight="....x..o.o..x..o....x..o.o..x.oo",
                snare="....x.......x.......x.......x...", hat="x.x.x.x.x.x.x.x." if not fine else "x.xox.x.x.xox.xo")
        s.drums(bar, bars, level - 3, ride="x.x.x.x.x.x.x.x.", shaker="oxoxoxoxoxoxoxox")

    def half(bar, bars, level=0.0):
        s.drums(bar, bars // 2, level, kick_hard="x.....x.............x.....x.....", snare_hard="........x...............x.......",
                hat="x.o.x.o.x.o.x.o.", shaker="oxoxoxoxoxoxoxox")

    def break_fill(bar):
        s.fill(bar, snare_tight="x.xxx.xxx.xxXXXX"[-8:], snare="x..x..xx", tom_low="..x..x..")

    # Intro: falling light.
    for bar in (0, 8):
        pad.put(bar, N.held(a))
        arp.put(bar, N.arpeggio(a, SPIN, 1, 0), velocity=0.7)
    arp.filter((0, 500), (14, 9000))
    pad.filter((0, 350), (16, 5000), (96, 5000), (104, 500))
    s.drums(8, 4, -5, hat="x.x.x.x.x.x.x.x.", rim="....x..x....x...", kick_soft="x.........x.....")
    s.drums(12, 4, -3, hat="x.xox.x.x.xox.xo", snare_tight="....x..o.o..x..o", kick_soft="x.........x.....")
    bells.line(4, "C#6:16 | r:8 F#6:8 | r:16 | E6:16 | D6:8 F#6:8 | C#6:16 | r:16 | G#5:16")
    bass.put(12, N.bass(a, HOLD), until=16, velocity=0.6)
    s.rise(16, 6, -13)
    s.swell(16, -8)

    # The drop: bass and beats, then the long melody over them.
    for bar, chords, text in ((16, a, None), (24, a, HORIZON), (32, a_end, HORIZON_END)):
        s.hit(bar, -8 if bar == 16 else -14)
        s.drums(bar, crash="x...............")
        broken(bar, 8)
        bass.put(bar, N.bass(chords, ROLL, 29))
        sub.put(bar, N.bass(chords, HOLD, 29))
        acid.put(bar, N.arpeggio(chords, "0 0 2 . 1 . 3 2 . 0 2 . 4 . 3 1", 1, 0), velocity=0.8)
        if text:
            pad.put(bar, N.held(chords))
            lead.line(bar, text)
            arp.put(bar, N.arpeggio(chords, SPIN, 1, 1), velocity=0.6)
        else:
            stabs.put(bar, N.strummed(chords, "x..x............x.....x........."), velocity=0.8)
        break_fill(bar + 7)
    second.line(32, HORIZON_LOW.replace("G#4:12", "F#4:12"), velocity=0.8)

    # The ship's theme in half time: room to breathe at full speed.
    for bar, chords, text, thirds in ((40, rise, T.RISE_ON, T.RISE_THIRDS_ON), (48, rise_end, T.RISE_END, T.RISE_THIRDS_END)):
        s.hit(bar, -10)
        s.drums(bar, crash="x...............")
        half(bar, 8)
        voices.put(bar, N.held(chords))
        strings.put(bar, N.held(chords))
        bass.put(bar, N.bass(chords, "R-------..R-S-R-", 29))
        arp.put(bar, N.arpeggio(chords, "0 2 4 2 3 2 4 2", 1, 1), velocity=0.7)
        lead.line(bar, T.RISE + " | " + text, shift=-3)
        if bar == 48:
            second.line(bar, T.RISE_THIRDS + " | " + thirds, shift=-3)
        s.fill(bar + 7, tom_high="x.x.....", tom_mid="..x.x...", tom_low="....x.xx")

    # Weightless.
    s.drums(56, crash="x...............")
    pad.put(56, N.held(a))
    voices.put(56, N.held(a), velocity=0.7)
    bells.line(56, HORIZON.replace("^", ""), shift=12)
    arp.put(56, N.arpeggio(a, SPIN, 2, 0), velocity=0.6)
    sub.put(56, N.bass(a, HOLD, 29), velocity=0.7)
    s.drums(60, 2, -4, kick_soft="x.......x.......", rim="....x..x....x...", hat="x.x.x.x.x.x.x.x.")
    s.drums(62, 1, -3, snare_tight="x...x...x...x...", kick_hard="x...x...x...x...")
    s.drums(63, 1, -1, snare_tight="x.x.x.x.xxxxXXXX", kick_hard="x.x.x.x.........")
    s.rise(64, 5, -12)
    s.swell(64, -8)

    # Second drop: melody, voices, everything turning.
    for bar, chords, text in ((64, a, HORIZON), (72, a_end, HORIZON_END), (80, a, HORIZON), (88, a_end, HORIZON_END)):
        s.hit(bar, -8 if bar == 64 else -13)
        s.drums(bar, crash="x...............")
        broken(bar, 8, 0.5)
        bass.put(bar, N.bass(chords, ROLL, 29))
        sub.put(bar, N.bass(chords, HOLD, 29))
        pad.put(bar, N.held(chords))
        acid.put(bar, N.arpeggio(chords, "0 0 2 . 1 . 3 2 . 0 2 . 4 . 3 1", 1, 1), velocity=0.7)
        if bar >= 80:
            voices.put(bar, N.held(chords))
            strings.put(bar, N.strummed(chords, "x--x--x-..x--x--"), velocity=0.8)
            second.line(bar, text.replace("^", ""), shift=-12)
            arp.put(bar, N.arpeggio(chords, SPIN, 1, 1), velocity=0.6)
        else:
            stabs.put(bar, N.strummed(chords, "x..x..x........."), velocity=0.75)
            second.line(bar, HORIZON_LOW.replace("^", "") if bar == 64 else text.replace("^", ""), shift=0 if bar == 64 else -12, velocity=0.8)
        lead.line(bar, text)
        break_fill(bar + 7)

    # Past it: the beat falls away.
    last = N.chords("F#m9 | Dmaj7 | Aadd9 | E | Equart:48", low=57)[0]
    s.drums(96, crash="x...............")
    pad.put(96, N.held(last))
    voices.put(96, N.held(last), velocity=0.7)
    arp.put(96, N.arpeggio(last, SPIN, 1, 0), velocity=0.65)
    arp.fade((98, 0), (104, -40))
    half(96, 4, -3)
    sub.put(96, N.bass(last[:4], HOLD, 29), velocity=0.8)
    sub.put(100, [N.Note(0, 60, [33], 0.6)])
    lead.line(96, "C#5:12 E5:4 | ^F#5:16 | A5:8 B5:8 | ^E5:24")
    bells.line(99, "r:8 B5:8 | E6:8 A6:8 | D6:16 | A5:16")
    return s
