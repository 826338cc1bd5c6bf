// A spectrum by halving in double precision, as plain as it can be.
#pragma once

#include "components/spectrum.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <complex>
#include <numbers>
#include <numeric>
#include <vector>

namespace kestrune {

class FakeSpectrum : public Spectrum {
public:
    int analysed = 0; // blocks

    Outcome SetSize(int samples) override {
        if (samples < leastSpectrumSize || samples > largestSpectrumSize ||
            !std::has_single_bit(static_cast<unsigned>(samples))) {
            return Outcome::NotSupported;
        }
        size = samples;
        return Outcome::Ok;
    }
    int Size() const override { return size; }
    std::span<const float> LevelsDb(std::span<const float> samples) override {
        ++analysed;
        const auto room = static_cast<size_t>(size);
        samples = samples.last(std::min(samples.size(), room));
        std::vector<std::complex<double>> values(room);
        std::vector<double> window(room);
        double constant = 0;
        double weight = 0;
        for (size_t i = 0; i < room; ++i) {
            const double turn = 2 * std::numbers::pi * static_cast<double>(i) / size;
            window[i] = 0.35875 - 0.48829 * std::cos(turn) + 0.14128 * std::cos(2 * turn) -
                        0.01168 * std::cos(3 * turn);
            if (i < samples.size()) {
                constant += window[i] * samples[i];
                weight += window[i];
            }
        }
        for (size_t i = 0; i < samples.size(); ++i) {
            values[i] = window[i] * (samples[i] - constant / weight);
        }
        const double windowSum = std::accumulate(window.begin(), window.end(), 0.0);
        values = Transformed(values);
        levelsDb.clear();
        for (size_t bin = 0; bin <= room / 2; ++bin) {
            const double level = std::abs(values[bin]) * 2 / windowSum;
            levelsDb.push_back(level > 1e-8 ? static_cast<float>(20 * std::log10(level)) : spectrumFloorDb);
        }
        return levelsDb;
    }

private:
    using Values = std::vector<std::complex<double>>;
    static Values Transformed(const Values& values) {
        if (values.size() == 1) {
            return values;
        }
        Values even;
        Values odd;
        for (size_t i = 0; i < values.size(); i += 2) {
            even.push_back(values[i]);
            odd.push_back(values[i + 1]);
        }
        even = Transformed(even);
        odd = Transformed(odd);
        Values all(values.size());
        for (size_t i = 0; i < even.size(); ++i) {
            const double turn =
                -2 * std::numbers::pi * static_cast<double>(i) / static_cast<double>(all.size());
            const std::complex<double> turned = std::polar(1.0, turn) * odd[i];
            all[i] = even[i] + turned;
            all[i + even.size()] = even[i] - turned;
        }
        return all;
    }

    int size = 4096;
    std::vector<float> levelsDb;
};

} // namespace kestrune
