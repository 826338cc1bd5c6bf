#include "backends/codecs/dsp/truespeech_weight.h"

#include <algorithm>

namespace kestrune {

namespace {

constexpr float errorZero = 0.9F;
constexpr float errorPole = 0.6F;
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

using Memory = std::array<float, trueSpeechOrder>;

float Predicted(const PredictorTaps& taps, const Memory& memory) {
    float sum = 0;
    for (size_t tap = 0; tap < taps.size(); ++tap) {
        sum += taps[tap] * memory[tap];
    }
    return sum;
}

void Push(Memory& memory, float value) {
    std::copy_backward(memory.begin(), memory.end() - 1, memory.end());
    memory[0] = value;
}

// (1 - zeros) / (1 - poles), with the memories of what went in and what came out.
void Filter(const PredictorTaps& zeros, const PredictorTaps& poles, Memory& entered, Memory& left,
            SubframeValues& values) {
    for (float& value : values) {
        const float result = value - Predicted(zeros, entered) + Predicted(poles, left);
        Push(entered, value);
        Push(left, result);
        value = result;
    }
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
    Memory entered = {};
    Memory left = {};
    Filter({}, taps, entered, left, values);
    entered = left = {};
    Filter(Decayed(taps, soundZero), Decayed(taps, soundPole), entered, left, values);
    for (size_t sample = values.size(); sample-- > 0;) {
        values[sample] = soundGain * (values[sample] + (sample > 0 ? tilt * values[sample - 1] : 0));
    }
    return ErrorWeight().Run(taps, values);
}

} // namespace kestrune
