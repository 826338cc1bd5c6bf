#include "backends/speech/truespeech_weight.h"

#include <algorithm>

namespace kestrune {

namespace {

constexpr float errorZero = 0.92F;
constexpr float errorPole = 0.7F;
// Of the decoder's last filters.
constexpr float soundZero = 0.55F;
constexpr float soundPole = 0.75F;
constexpr float soundGain = 0.875F;

PredictorTaps Decayed(const PredictorTaps& taps, float decay) {
    PredictorTaps decayed;
    float power = 1;
    for (size_t tap = 0; tap < taps.size(); ++tap) {
        power *= decay;
        decayed[tap] = taps[tap] * power;
    }
    return decayed;
}

// Values with as many before them as the filters reach back, oldest first.
using Line = std::array<float, trueSpeechOrder + trueSpeechSubframeSamples>;

Line LineOf(const FilterPast& past, const SubframeValues& values) {
    Line line;
    std::copy(values.begin(), values.end(), std::copy(past.begin(), past.end(), line.begin()));
    return line;
}

void Keep(FilterPast& past, const Line& line) {
    std::copy(line.end() - trueSpeechOrder, line.end(), past.begin());
}

// (1 - zeros) / (1 - poles), with what went in before and what came out.
void Filter(const PredictorTaps& zeros, const PredictorTaps& poles, FilterPast& entered, FilterPast& left,
            SubframeValues& values) {
    const Line in = LineOf(entered, values);
    for (size_t tap = 0; tap < trueSpeechOrder; ++tap) {
        for (size_t sample = 0; sample < values.size(); ++sample) {
            values[sample] -= zeros[tap] * in[sample + trueSpeechOrder - 1 - tap];
        }
    }
    Line out = LineOf(left, values);
    for (size_t sample = trueSpeechOrder; sample < out.size(); ++sample) {
        // The latest sample last, since it is the one that has to be waited for.
        float sum = out[sample];
        for (size_t tap = trueSpeechOrder; tap-- > 0;) {
            sum += poles[tap] * out[sample - 1 - tap];
        }
        out[sample] = sum;
    }
    std::copy(out.begin() + trueSpeechOrder, out.end(), values.begin());
    Keep(entered, in);
    Keep(left, out);
}

} // namespace

PredictorTaps TapsOf(const std::array<qint16, trueSpeechOrder>& predictor) {
    constexpr float whole = 4096;
    PredictorTaps taps;
    std::transform(predictor.begin(), predictor.end(), taps.begin(),
                   [](qint16 tap) { return static_cast<float>(tap) / whole; });
    return taps;
}

SubframeValues ErrorWeight::Run(const PredictorTaps& taps, const SubframeValues& errors) {
    SubframeValues values = errors;
    Filter(Decayed(taps, errorZero), Decayed(taps, errorPole), errors_, weighted_, values);
    return values;
}

SubframeValues WeightedResponse(const PredictorTaps& taps, float tilt) {
    SubframeValues values = {1};
    FilterPast entered = {};
    FilterPast left = {};
    Filter({}, taps, entered, left, values);
    entered = left = {};
    Filter(Decayed(taps, soundZero), Decayed(taps, soundPole), entered, left, values);
    for (size_t sample = values.size(); sample-- > 0;) {
        values[sample] = soundGain * (values[sample] + (sample > 0 ? tilt * values[sample - 1] : 0));
    }
    return ErrorWeight().Run(taps, values);
}

} // namespace kestrune
