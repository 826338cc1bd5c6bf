// Cutting deeper samples down to 16 bits with triangular noise (TPDF).
#pragma once

#include <QtGlobal>

#include <algorithm>
#include <cmath>

namespace kestrune {

// Noise of triangular density in (-1, 1) steps of the 16-bit scale. It depends on the sample's index in the
// file only, so that a decode from the middle gives the same bits as one from the start. The mixing steps are
// those of splitmix64 (Steele, Lea, Flood: Fast splittable pseudorandom number generators, 2014).
inline double TriangularNoise(quint64 sampleIndex) {
    quint64 mixed = (sampleIndex + 1) * Q_UINT64_C(0x9E3779B97F4A7C15);
    mixed = (mixed ^ (mixed >> 30)) * Q_UINT64_C(0xBF58476D1CE4E5B9);
    mixed = (mixed ^ (mixed >> 27)) * Q_UINT64_C(0x94D049BB133111EB);
    mixed ^= mixed >> 31;
    const auto high = static_cast<double>(mixed >> 32);
    const auto low = static_cast<double>(mixed & 0xFFFFFFFFU);
    return (high + low + 1.0) / 4294967296.0 - 1.0;
}

// `value` is on the 16-bit scale (full scale 32768); what is not a number becomes silence.
inline qint16 DitheredSample(double value, quint64 sampleIndex) {
    if (std::isnan(value)) {
        return 0;
    }
    const double noisy = std::floor(value + TriangularNoise(sampleIndex) + 0.5);
    return static_cast<qint16>(std::clamp(noisy, -32768.0, 32767.0));
}

} // namespace kestrune
