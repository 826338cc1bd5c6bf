#include "display/audio_display_bands.h"

#include <algorithm>
#include <cmath>

namespace kestrune {

namespace {

// The parabola through a bin and its neighbours. The spectrum of real samples mirrors itself at both ends.
struct Parabola {
    double middle;
    double slope;
    double bend;

    Parabola(std::span<const float> levelsDb, int bin) {
        const auto at = [&levelsDb](int k) {
            const int last = static_cast<int>(levelsDb.size()) - 1;
            const int mirrored = k > last ? 2 * last - k : std::abs(k);
            return static_cast<double>(levelsDb[static_cast<size_t>(mirrored)]);
        };
        middle = at(bin);
        slope = (at(bin + 1) - at(bin - 1)) / 2;
        bend = at(bin + 1) - 2 * middle + at(bin - 1);
    }
    double At(double offset) const { return middle + offset * (slope + offset * bend / 2); }
    bool HasTop() const { return bend < 0 && std::abs(slope) <= -bend / 2; }
    double Top() const { return -slope / bend; } // bins from the middle, -0.5 to 0.5
};

} // namespace

void DisplayBands::Lay(int bandCount, int blockSize) {
    binsOfHalfRate_ = blockSize / 2.0;
    edges_.clear();
    for (int i = 0; i <= bandCount; ++i) {
        const double part = static_cast<double>(i) / std::max(bandCount, 1);
        edges_.push_back(lowestBand * std::pow(highestBand / lowestBand, part) * binsOfHalfRate_);
    }
}

int DisplayBands::BandOf(double frequency) const {
    const double bin = frequency * binsOfHalfRate_;
    if (edges_.empty() || bin < edges_.front() || bin >= edges_.back()) {
        return -1;
    }
    return static_cast<int>(std::upper_bound(edges_.begin(), edges_.end(), bin) - edges_.begin()) - 1;
}

double DisplayBands::LevelDb(std::span<const float> levelsDb, int band) const {
    const double low = edges_[static_cast<size_t>(band)];
    const double high = edges_[static_cast<size_t>(band) + 1];
    const auto curve = [&levelsDb](double place) {
        const auto bin = static_cast<int>(std::lround(place));
        return Parabola(levelsDb, bin).At(place - bin);
    };
    double highest = std::max(curve(low), curve(high));
    const auto first = static_cast<int>(std::lround(low));
    const auto last = static_cast<int>(std::lround(high));
    for (int bin = first; bin <= last; ++bin) {
        const double level = levelsDb[static_cast<size_t>(bin)];
        // A top rises less than 2 dB above its bin in any window in use: most bins are out of the running.
        if (level < highest - 2) {
            continue;
        }
        const Parabola parabola(levelsDb, bin);
        const double top = parabola.HasTop() ? bin + parabola.Top() : bin;
        if (top >= low && top <= high) {
            highest = std::max(highest, parabola.At(top - bin));
        }
    }
    return highest;
}

} // namespace kestrune
