// What a look at an audio file finds.
#pragma once

#include <QString>
#include <QtGlobal>

namespace kestrune {

struct AudioFacts {
    QString kind;          // name of the coding, as users read it
    int formatTag = 0;     // WAVE format number of the coding; 0 if there is none
    int rateHz = 0;        // above 0 in a valid file
    int channels = 0;      // above 0 in a valid file
    int bitsPerSample = 0; // 16 for lossy codings
    int bitrateBps = 0;    // of the audio; 0 if unknown
    qint64 durationMs = 0;
    qint64 frames = 0; // sample frames
    QString title;
    QString artist;
};

// Above any real length; broken files claim more, and figures within it multiply without overflow.
inline constexpr qint64 mostFrames = 1LL << 45;
inline constexpr qint64 mostDurationMs = 1LL << 35;

// Milliseconds that `frames` take at `rateHz`, rounded to the nearest; 0 without a rate.
constexpr qint64 DurationOfFrames(qint64 frames, int rateHz) {
    return rateHz <= 0 ? 0 : (frames / rateHz * 1000) + ((frames % rateHz * 1000 + rateHz / 2) / rateHz);
}

// Sample frames in `durationMs`, rounded to the nearest.
constexpr qint64 FramesOfDuration(qint64 durationMs, int rateHz) {
    return (durationMs / 1000 * rateHz) + ((durationMs % 1000 * rateHz + 500) / 1000);
}

} // namespace kestrune
