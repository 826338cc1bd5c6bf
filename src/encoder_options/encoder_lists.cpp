#include "encoder_options/encoder_lists.h"

#include <algorithm>

namespace kestrune {

qint32 BitRateAt(int index) {
    return bitRatesKbps[static_cast<size_t>(std::clamp(index, 0, lastBitRateIndex))];
}

std::optional<int> BitRateIndex(qint32 kbps) {
    const auto* const found = std::find(bitRatesKbps.begin(), bitRatesKbps.end(), kbps);
    if (found == bitRatesKbps.end()) {
        return std::nullopt;
    }
    return static_cast<int>(found - bitRatesKbps.begin());
}

qint32 SamplingFrequencyAt(int index) {
    return samplingFrequencies[static_cast<size_t>(std::clamp(index, 0, lastFrequencyIndex))].hz;
}

int SamplingFrequencyIndex(qint32 hz) {
    int index = 0;
    while (index < lastFrequencyIndex && SamplingFrequencyAt(index) != hz) {
        ++index;
    }
    return index;
}

int IndexInList(int index, size_t count, int current) {
    return index >= 0 && static_cast<size_t>(index) < count ? index : current;
}

} // namespace kestrune
