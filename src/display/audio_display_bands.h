// The bands of the spectra: steps of equal pitch over the bins of a spectrum.
#pragma once

#include <span>
#include <vector>

namespace kestrune {

// The axis, in parts of half the sample rate: about 44 Hz to 18.7 kHz at 44,100 Hz.
inline constexpr double lowestBand = 0.002;
inline constexpr double highestBand = 0.85;

class DisplayBands {
public:
    // `bandCount` bands over blocks of `blockSize` samples; there are as many as the picture has room for
    // (BandRoom of each).
    void Lay(int bandCount, int blockSize);
    int Count() const { return edges_.empty() ? 0 : static_cast<int>(edges_.size()) - 1; }
    // The band that a frequency, in parts of half the sample rate, falls into; -1 outside the axis.
    int BandOf(double frequency) const;
    // The highest point, in dB, that the curve through the bins reaches within a band. `levelsDb` are the
    // bins of a block, blockSize / 2 + 1 of them. Of a sine that is its own level, wherever it lies between
    // two bins; a band that is narrower than a bin takes its part of the curve.
    double LevelDb(std::span<const float> levelsDb, int band) const;

private:
    std::vector<double> edges_; // bins
    double binsOfHalfRate_ = 0;
};

} // namespace kestrune
