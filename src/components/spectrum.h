// The frequency content of a block of samples.
#pragma once

#include "components/outcome.h"

#include <span>

namespace kestrune {

inline constexpr int leastSpectrumSize = 64;
inline constexpr int largestSpectrumSize = 16384;
// What silence reads.
inline constexpr float spectrumFloorDb = -160.0F;

// One object analyses blocks of one size at a time. Any thread, one at a time.
class Spectrum {
public:
    virtual ~Spectrum() = default;

    // Sets the count of samples to a block: a power of two from 64 to 16384. NotSupported for any other, and
    // the size then stays. 4096 at the start.
    virtual Outcome SetSize(int samples) = 0;
    virtual int Size() const = 0;

    // Levels of Size() / 2 + 1 bins, bin k lying at k / Size() of the sample rate, in dB of a full-scale sine
    // (one whose peak is 1.0); never below spectrumFloorDb. The constant part of the block is taken out and a
    // Blackman-Harris window laid over it, so a sine spreads over four bins to either side, and its level is
    // the top of the curve through the bins in dB: a parabola through the highest bin and its neighbours
    // meets it within 0.05 dB from 4 bins above 0 to 4 below half the rate. A block of less than Size() is
    // taken as followed by silence, of more the last Size() samples count. The result stays valid until the
    // next call.
    virtual std::span<const float> LevelsDb(std::span<const float> samples) = 0;
};

} // namespace kestrune
