// The twelve-band equalizer over 16-bit frames.
//
// Each band is a peaking filter of second order. Source of the formula: Robert Bristow-Johnson, "Cookbook
// formulae for audio equalizer biquad filter coefficients", section peakingEQ.
#pragma once

#include "components/audio_player.h"

#include <array>

namespace kestrune {

// Centre of each band in Hz, equally far apart on a logarithmic scale.
inline constexpr std::array<double, equalizerBands> equalizerCentresHz = {31,  55,   97,   171,  301,  531,
                                                                          936, 1650, 2909, 5129, 9042, 15942};
// Gains beyond this are cut to it.
inline constexpr float equalizerMaxGainDb = 24.0F;

// Not thread-safe; used by one thread at a time.
class Equalizer {
public:
    // Rate in Hz, 1 or 2 channels. Forgets the past of the filters and takes the gains set last at once.
    void Start(int sampleRateHz, int channels);
    void SetEnabled(bool isEnabled) { enabled = isEnabled; }
    void SetGains(const EqualizerGains& gainsDb);
    // True while samples would pass unchanged: off or flat, and any change to that has faded out.
    bool IsBypassed() const;
    // Filters `frames` interleaved frames in place. Values may go beyond the 16-bit range.
    void Process(double* samples, qint64 frames);

private:
    struct Coefficients {
        double b0 = 1, b1 = 0, b2 = 0, a1 = 0, a2 = 0;
    };
    struct Memory {
        double z1 = 0, z2 = 0;
    };
    struct Band {
        double gainDb = 0; // what the coefficients stand for
        Coefficients coefficients;
        std::array<Memory, 2> memory;
    };

    double TargetDb(int band) const;
    bool IsAudible(int band) const;
    bool IsMoving() const;
    void MoveTowardsTargets(qint64 frames);
    void SetBandGain(int band, double gainDb);
    void Filter(Band& band, double* samples, qint64 frames) const;

    std::array<Band, equalizerBands> bands;
    EqualizerGains wantedDb{};
    int sampleRateHz = 44100;
    int channels = 2;
    bool enabled = false;
};

} // namespace kestrune
