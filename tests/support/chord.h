// A sound that is known at any sample rate, so that what was resampled has something to be held against.
#pragma once

#include <QtGlobal>

#include <vector>

namespace kestrune {

// Many partials of seeded frequencies, phases and loudness up to `highestHz`, falling towards the high ones
// as music does, swelling and fading over about a second, at about a seventh of full scale on average.
class Chord {
public:
    explicit Chord(quint32 seed, double highestHz = 3200.0);

    // 16-bit frames, interleaved. The two channels share half of the partials. One channel is the mean of
    // the two.
    std::vector<qint16> Samples(int frames, int channels, int rateHz) const;

private:
    struct Partial {
        double hz;
        double phase;
        double swellHz;
        double level; // 1 is full scale
        double left;  // share of each channel
        double right;
    };
    std::vector<Partial> partials_;
};

} // namespace kestrune
