"""The melodies that return across the tracks, each written in the key it was found in.

RISE, the ship's theme (A minor): leaps upwards, wider each time, that step down again; eight bars in two
endings. HOME, its calm answer (C major): falls where the other rises. DANGER, the theme of what waits out
there (B minor): a half step and a false fifth.
"""

RISE = "A4:4 E5:6 D5:2 C5:2 B4:2 | C5:8 A4:4 C5:4 | G4:4 E5:6 D5:2 C5:2 D5:2 | D5:8 B4:4 G4:4"
RISE_ON = "A4:4 E5:6 D5:2 E5:2 G5:2 | A5:8 G5:4 F5:4 | F5:6 E5:6 D5:4 | E5:12 r:4"
RISE_END = "A4:4 E5:6 D5:2 E5:2 G5:2 | A5:6 B5:2 C6:8 | B5:6 A5:6 G5:4 | A5:16"
RISE_CHORDS = "Am | F | C | G | Am | F | Dm7 | Esus4:8 E:8"
RISE_CHORDS_END = "Am | F | C | G | Am | F | G | Am"
RISE_THIRDS = "E4:4 C5:6 B4:2 A4:2 G4:2 | A4:8 F4:4 A4:4 | E4:4 C5:6 B4:2 G4:2 B4:2 | B4:8 G4:4 D4:4"
RISE_THIRDS_END = "E4:4 C5:6 B4:2 C5:2 E5:2 | F5:6 G5:2 A5:8 | G5:6 F5:6 D5:4 | E5:16"
RISE_THIRDS_ON = "E4:4 C5:6 B4:2 C5:2 E5:2 | F5:8 E5:4 D5:4 | D5:6 C5:6 A4:4 | A4:8 G#4:8"

HOME = "A5:6 G5:2 E5:8 | G5:6 F5:2 D5:8 | E5:4 D5:4 B4:4 D5:4 | C5:12 r:4"
HOME_END = "A5:6 G5:2 E5:4 C5:4 | D5:6 E5:2 G5:8 | E5:6 C5:2 D5:6 B4:2 | C5:4 B4:4 A4:8"
HOME_CHORDS = "Fmaj7 | G | Em7 | Am7 | Fmaj7 | G | C:8 G/B:8 | Am7"

DANGER = "B4:6 C5:6 B4:4 | F#5:8 F5:8 | B4:6 C5:6 D5:4 | C5:8 A#4:8"
DANGER_END = "B4:6 C5:6 B4:4 | F#5:8 F5:8 | G5:6 F#5:6 E5:4 | F#5:16"
DANGER_CHORDS = "Bm | Bm:8 F:8 | Bm | C:8 F#:8"
DANGER_CHORDS_END = "Bm | Bm:8 F:8 | C:12 Em:4 | F#"
