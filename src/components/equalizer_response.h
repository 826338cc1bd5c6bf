// What an equalizer of twelve bands does to each frequency, and how its sections have to be set for that.
//
// The equalizer is a chain of peaking filters of second order, one at each centre, each with the bandwidth of
// its band. Source of the filter: Robert Bristow-Johnson, "Cookbook formulae for audio equalizer biquad
// filter coefficients", peakingEQ with the bandwidth in octaves. Over x = Q (t - 1 / t), t = tan(w / 2) /
// tan(w0 / 2), such a filter of gain g dB has |H|^2 = (x^2 + A) / (x^2 + 1 / A), A = 10^(g / 20).
//
// Each filter reaches into the bands beside its own. So the gains of the sections are not the gains that are
// wanted: they solve "the sum of all sections at each centre is the gain that is wanted there".
#pragma once

#include "components/equalizer.h"

#include <array>

namespace kestrune {

struct PeakingSection {
    bool isUsed = false; // false for a centre at or above 0.45 of the sample rate
    double w0 = 0;       // 2 pi centre / rate
    double q = 1;
    double gainDb = 0; // of this section alone
};

// Values only; copies are independent.
struct EqualizerResponse {
    std::array<PeakingSection, equalizerBands> sections;
    int sampleRateHz = 44100;

    // In dB. Frequencies from above 0 to half the rate.
    double At(double hz) const;
    // The highest point between 10 Hz and half the rate, in dB, to 0.05 dB; 0 when nothing is raised.
    double HighestDb() const;
};

// The sections for gains in dB, each cut to what the equalizer allows; a gain that is not a number counts as
// 0. The response meets the wanted gain at the centre of each band that is used; all gains 0 give sections of
// exactly 0. Rates of 1,000 Hz and above.
EqualizerResponse SolveEqualizer(const EqualizerGains& gainsDb, int sampleRateHz);

} // namespace kestrune
