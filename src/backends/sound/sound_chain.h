// What happens to samples on their way to the device: equalizer with its pre-gain, then volume, then a guard
// against the rare peak that is still beyond 16 bits.
#pragma once

#include "backends/sound/equalizer.h"
#include "backends/sound/peak_guard.h"

#include <vector>

namespace kestrune {

// Not thread-safe; used by one thread at a time.
class SoundChain {
public:
    // Rate in Hz, 1 or 2 channels. Volume and gains set last hold at once, without a ramp.
    void Start(int sampleRateHz, int channels);
    // 0 to fullVolume, linear in amplitude; beyond is cut. Takes effect over 5 ms.
    void SetVolume(qint32 volume);
    void EnableEqualizer(bool isEnabled) { equalizer_.SetEnabled(isEnabled); }
    void SetEqualizer(const EqualizerGains& gainsDb) { equalizer_.SetGains(gainsDb); }
    // How far the equalizer lowers everything, in dB, to make room for what it raises; 0 or below.
    double PreGainDb() const { return equalizer_.PreGainDb(); }
    // In place, interleaved. Rounds to nearest; at full volume with the equalizer off or flat nothing is
    // touched.
    void Process(qint16* samples, qint64 frames);

private:
    void ApplyGain(double* values, qint64 frames);

    Equalizer equalizer_;
    PeakGuard guard_;
    std::vector<double> work_;
    double gain_ = 1.0;
    double targetGain_ = 1.0;
    double rampStep_ = 1.0; // most that the gain moves from one frame to the next
    int channels_ = 2;
};

} // namespace kestrune
