// The instruments.
#pragma once

#include "sound.h"

namespace kestrune {

struct Note {
    double startSeconds = 0;
    int key = 60;        // MIDI number: 69 is 440 Hz, a semitone each
    double seconds = 1;  // until it is damped
    double loudness = 1; // 1 is an ordinary note
    double pan = 0;      // -1 left to 1 right
};

// A plucked string: a burst of noise going round a delay line that dulls it (Karplus and Strong).
void AddPluck(Sound& sound, const Note& note);
// A small bell: one sine bending another's phase, the bending dying away first.
void AddBell(Sound& sound, const Note& note);
// A soft, slowly swelling tone of a few partials, slightly apart in tune.
void AddPad(Sound& sound, const Note& note);
// A round low tone.
void AddBass(Sound& sound, const Note& note);

} // namespace kestrune
