// Keeps peaks within 16 bits without cutting their tops.
#pragma once

#include <QtGlobal>
#include <vector>

namespace kestrune {

// Lowers the level for a moment where a peak would not fit: it glides down over the last milliseconds before
// the peak and comes back within a second. It sees no further than the block it is given, so with a peak at
// the very beginning of a block the way down is as short as that. Adds no delay; all channels move together.
// Not thread-safe; used by one thread at a time.
class PeakGuard {
public:
    // Rate in Hz, 1 or 2 channels.
    void Start(int sampleRateHz, int channels);
    // True while the level is not lowered.
    bool IsAtRest() const { return gain_ == 1.0; }
    // In place, interleaved, in units of 16-bit samples. Afterwards no value is beyond 32767 either way.
    void Process(double* values, qint64 frames);

private:
    double Size(const double* frame) const;
    void LookAhead(const double* values, qint64 frames);

    std::vector<double> gains_; // one for each frame of a block
    double gain_ = 1.0;         // of the last frame
    double fallStep_ = 1.0;     // most that the gain falls from frame to frame, seen ahead
    double riseStep_ = 1.0;
    int holdFrames_ = 0;
    int channels_ = 2;
};

} // namespace kestrune
