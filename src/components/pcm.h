// The one sample format that components pass to each other: 16-bit signed, little-endian, interleaved, one or
// two channels. All byte positions and lengths are counted in it.
#pragma once

#include <QtGlobal>

namespace kestrune {

inline constexpr int bytesPerSample = 2;

// Bytes of one frame (one sample of each channel).
constexpr qint64 frameBytes(int channels) {
    return static_cast<qint64>(bytesPerSample) * channels;
}

// Bytes of a span of time, cut down to a whole frame. The span may be negative; the result then is too.
constexpr qint64 pcmBytesForMs(qint64 ms, int sampleRateHz, int channels) {
    return ms * sampleRateHz / 1000 * frameBytes(channels);
}

// Milliseconds of a byte count, cut down; 0 when the format is not set.
constexpr qint64 pcmMsForBytes(qint64 bytes, int sampleRateHz, int channels) {
    if (sampleRateHz <= 0 || channels <= 0) {
        return 0;
    }
    return bytes / frameBytes(channels) * 1000 / sampleRateHz;
}

} // namespace kestrune
