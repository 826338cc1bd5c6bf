#include "components/equalizer_response.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace kestrune {

namespace {

// Width of a section between the points of half its gain in dB, in octaves: somewhat more than the distance
// of two centres. Wider, neighbours at opposite ends would need sections far beyond what is heard; narrower,
// equal gains would show a ripple.
constexpr double bandwidthOctaves = 1.0;
constexpr double highestPartOfRate = 0.45;
constexpr double lowestHz = 10;
constexpr int pointsPerOctave = 24;
constexpr int mostIterations = 30;
constexpr double exactEnoughDb = 1e-6;
// The largest change of a section's gain in one step of the iteration.
constexpr double largestStepDb = 12;

using Row = std::array<double, equalizerBands>;
using Matrix = std::array<Row, equalizerBands>;

// x^2 of the formula above.
double DistanceSquared(const PeakingSection& section, double tangent) {
    const double ratio = tangent / std::tan(section.w0 / 2);
    const double x = section.q * (ratio - 1 / ratio);
    return x * x;
}

double SquaredMagnitude(double distanceSquared, double gainDb) {
    const double a = std::pow(10.0, gainDb / 20);
    return (distanceSquared + a) / (distanceSquared + 1 / a);
}

// How much the response at this distance changes with the section's gain, dB per dB.
double Slope(double distanceSquared, double gainDb) {
    const double a = std::pow(10.0, gainDb / 20);
    return 0.5 * (a / (distanceSquared + a) + 1 / (a * distanceSquared + 1));
}

double Decibels(double squaredMagnitude) {
    return 10 * std::log10(squaredMagnitude);
}

// Solves matrix * x = values in place by elimination with the largest pivot.
void SolveLinear(Matrix& matrix, Row& values, size_t size) {
    for (size_t column = 0; column < size; ++column) {
        size_t pivot = column;
        for (size_t row = column + 1; row < size; ++row) {
            if (std::abs(matrix[row][column]) > std::abs(matrix[pivot][column])) {
                pivot = row;
            }
        }
        std::swap(matrix[pivot], matrix[column]);
        std::swap(values[pivot], values[column]);
        for (size_t row = column + 1; row < size; ++row) {
            const double factor = matrix[row][column] / matrix[column][column];
            for (size_t k = column; k < size; ++k) {
                matrix[row][k] -= factor * matrix[column][k];
            }
            values[row] -= factor * values[column];
        }
    }
    for (size_t row = size; row-- > 0;) {
        for (size_t k = row + 1; k < size; ++k) {
            values[row] -= matrix[row][k] * values[k];
        }
        values[row] /= matrix[row][row];
    }
}

// The used bands are the lowest ones, so they are sections 0 to count - 1.
size_t PlaceSections(EqualizerResponse& response) {
    size_t count = 0;
    for (size_t band = 0; band < response.sections.size(); ++band) {
        PeakingSection& section = response.sections[band];
        section.isUsed = equalizerCentresHz[band] < highestPartOfRate * response.sampleRateHz;
        if (!section.isUsed) {
            continue;
        }
        section.w0 = 2 * std::numbers::pi * equalizerCentresHz[band] / response.sampleRateHz;
        section.q =
            1 / (2 * std::sinh(std::numbers::ln2 / 2 * bandwidthOctaves * section.w0 / std::sin(section.w0)));
        ++count;
    }
    return count;
}

} // namespace

double EqualizerResponse::At(double hz) const {
    const double tangent =
        std::tan(std::min(std::numbers::pi * hz / sampleRateHz, std::numbers::pi / 2 - 1e-9));
    double squared = 1;
    for (const PeakingSection& section : sections) {
        if (section.isUsed && section.gainDb != 0) {
            squared *= SquaredMagnitude(DistanceSquared(section, tangent), section.gainDb);
        }
    }
    return Decibels(squared);
}

double EqualizerResponse::HighestDb() const {
    if (std::all_of(sections.begin(), sections.end(),
                    [](const auto& section) { return section.gainDb <= 0; })) {
        return 0;
    }
    double highestDb = 0;
    const double factor = std::exp2(1.0 / pointsPerOctave);
    for (double hz = lowestHz; hz < sampleRateHz / 2.0; hz *= factor) {
        highestDb = std::max(highestDb, At(hz));
    }
    for (size_t band = 0; band < sections.size() && sections[band].isUsed; ++band) {
        highestDb = std::max(highestDb, At(equalizerCentresHz[band]));
    }
    return highestDb;
}

EqualizerResponse SolveEqualizer(const EqualizerGains& gainsDb, int sampleRateHz) {
    EqualizerResponse response;
    response.sampleRateHz = sampleRateHz;
    const size_t count = PlaceSections(response);
    Row wantedDb{};
    Matrix distances{};
    for (size_t centre = 0; centre < count; ++centre) {
        const float gainDb = std::isfinite(gainsDb[centre]) ? gainsDb[centre] : 0.0F;
        wantedDb[centre] = std::clamp(gainDb, -equalizerLargestGainDb, equalizerLargestGainDb);
        const double tangent = std::tan(response.sections[centre].w0 / 2);
        for (size_t band = 0; band < count; ++band) {
            distances[centre][band] = DistanceSquared(response.sections[band], tangent);
        }
    }
    // Newton's method: the response at the centres is nearly linear in the gains of the sections.
    for (int iteration = 0; iteration < mostIterations; ++iteration) {
        Matrix slopes{};
        Row missingDb{};
        double worstDb = 0;
        for (size_t centre = 0; centre < count; ++centre) {
            double squared = 1;
            for (size_t band = 0; band < count; ++band) {
                const double gainDb = response.sections[band].gainDb;
                squared *= SquaredMagnitude(distances[centre][band], gainDb);
                slopes[centre][band] = Slope(distances[centre][band], gainDb);
            }
            missingDb[centre] = wantedDb[centre] - Decibels(squared);
            worstDb = std::max(worstDb, std::abs(missingDb[centre]));
        }
        if (worstDb < exactEnoughDb) {
            break;
        }
        SolveLinear(slopes, missingDb, count);
        for (size_t band = 0; band < count; ++band) {
            response.sections[band].gainDb += std::clamp(missingDb[band], -largestStepDb, largestStepDb);
        }
    }
    return response;
}

} // namespace kestrune
