#include "backends/codecs/dsp/truespeech_synthesis.h"

#include "backends/codecs/dsp/truespeech_tables.h"

#include <algorithm>

namespace kestrune {

namespace {

constexpr int peak = 0x7FFE;
constexpr int predictorBits = 12;
constexpr int tableBits = 15;
// Two thirds and one third, times 32768.
constexpr int largerShare = 21846;
constexpr int smallerShare = 10923;

// Sums run around as 32-bit words do, whatever the samples.
quint32 Product(int left, int right) {
    return static_cast<quint32>(left) * static_cast<quint32>(right);
}

int Rounded(quint32 sum) {
    return static_cast<int>(sum + (1U << (predictorBits - 1))) >> predictorBits;
}

qint16 Limited(int sample) {
    return static_cast<qint16>(std::clamp(sample, -peak, peak));
}

template <typename Memory>
void Push(Memory& memory, qint16 sample) {
    std::copy_backward(memory.begin(), memory.end() - 1, memory.end());
    memory[0] = sample;
}

template <typename Memory, typename Taps>
quint32 Sum(const Memory& memory, const Taps& taps) {
    quint32 sum = 0;
    for (size_t tap = 0; tap < memory.size(); ++tap) {
        sum += Product(memory[tap], taps[tap]);
    }
    return sum;
}

std::array<int, trueSpeechOrder> Decayed(const TrueSpeechPredictor& predictor,
                                         const std::array<int, trueSpeechOrder>& decay) {
    std::array<int, trueSpeechOrder> taps;
    for (size_t tap = 0; tap < taps.size(); ++tap) {
        taps[tap] = decay[tap] * predictor[tap] >> tableBits;
    }
    return taps;
}

qint16 Mixed(qint16 larger, qint16 smaller) {
    return static_cast<qint16>((larger * largerShare + smaller * smallerShare + (1 << (tableBits - 1))) >>
                               tableBits);
}

} // namespace

TrueSpeechPredictor PredictorOf(const std::array<int, trueSpeechOrder>& reflectionEntries) {
    constexpr int eighth = 3; // from 32768 to 4096
    TrueSpeechPredictor predictor = {};
    for (size_t stage = 0; stage < predictor.size(); ++stage) {
        const int reflection =
            TrueSpeechReflections(static_cast<int>(stage))[static_cast<size_t>(reflectionEntries[stage])];
        const auto before = predictor;
        for (size_t tap = 0; tap < stage; ++tap) {
            const int change = (before[stage - tap - 1] * reflection + (1 << (tableBits - 1))) >> tableBits;
            predictor[tap] = static_cast<qint16>(predictor[tap] + change);
        }
        predictor[stage] = static_cast<qint16>(((1 << eighth) - reflection) >> eighth);
    }
    for (size_t tap = 0; tap < predictor.size(); ++tap) {
        predictor[tap] = static_cast<qint16>(predictor[tap] * trueSpeechPredictorDecay[tap] >> tableBits);
    }
    return predictor;
}

void TrueSpeechSynthesis::StartBlock(const TrueSpeechBlock& block) {
    const auto predictor = PredictorOf(block.reflection);
    predictors_.fill(predictor);
    predictors_[0] = predictors_[1] = lastPredictor_;
    if (block.blended) {
        for (size_t tap = 0; tap < predictor.size(); ++tap) {
            predictors_[0][tap] = Mixed(predictor[tap], lastPredictor_[tap]);
            predictors_[1][tap] = Mixed(lastPredictor_[tap], predictor[tap]);
        }
    }
    lastPredictor_ = predictor;
    firstReflection_ = TrueSpeechReflections(0)[static_cast<size_t>(block.reflection[0])];
}

float TrueSpeechSynthesis::Tilt() const {
    constexpr float share = 0.375F;
    return share * static_cast<float>(firstReflection_) / (1 << tableBits);
}

TrueSpeechSamples TrueSpeechSynthesis::Repeated(int lag, int pitch) const {
    constexpr int filterBits = 14;
    TrueSpeechSamples repeated = {};
    if (pitch == trueSpeechNoPitch) {
        return repeated;
    }
    std::array<qint16, trueSpeechHistory + trueSpeechSubframeSamples> line;
    std::copy(excitation_.begin(), excitation_.end(), line.begin());
    const PitchFilter filter = trueSpeechPitchFilters25[static_cast<size_t>(pitch % trueSpeechPitchFilters)];
    const int distance =
        std::min(lag + pitch / trueSpeechPitchFilters + trueSpeechShortestLag, trueSpeechHistory - 1);
    auto from = line.begin() + (trueSpeechHistory - 1 - distance);
    for (size_t sample = 0; sample < repeated.size(); ++sample, ++from) {
        const int sum = from[0] * filter.further + from[1] * filter.nearer + (1 << (filterBits - 1));
        repeated[sample] = static_cast<qint16>(sum >> filterBits);
        line[trueSpeechHistory + sample] = repeated[sample];
    }
    return repeated;
}

TrueSpeechSamples TrueSpeechSynthesis::Pulses(const TrueSpeechSubframe& subframe) {
    TrueSpeechSamples pulses = {};
    const PulsePositions positions = PulsePositionsOf(subframe.pulsePlaces);
    const int unit = trueSpeechPulseUnits[static_cast<size_t>(subframe.pulseGain)];
    // A pulse without a place of its own hands its size on to the next that has one.
    int shift = 2 * trueSpeechPulses;
    for (const int position : positions) {
        if (position >= 0) {
            shift -= 2;
            const auto level = static_cast<size_t>(subframe.pulseSizes >> shift & 3);
            pulses[static_cast<size_t>(position)] = static_cast<qint16>(unit * trueSpeechPulseLevels[level]);
        }
    }
    return pulses;
}

TrueSpeechSamples TrueSpeechSynthesis::Decode(int subframe, const TrueSpeechSamples& repeated,
                                              const TrueSpeechSamples& pulses) {
    constexpr int lostShare = 3; // an eighth of what is repeated does not come back
    TrueSpeechSamples samples;
    std::copy(excitation_.begin() + trueSpeechSubframeSamples, excitation_.end(), excitation_.begin());
    auto latest = excitation_.end() - trueSpeechSubframeSamples;
    for (size_t sample = 0; sample < samples.size(); ++sample) {
        const int kept = repeated[sample] - (repeated[sample] >> lostShare);
        *latest++ = static_cast<qint16>(pulses[sample] + kept);
        samples[sample] = static_cast<qint16>(pulses[sample] + repeated[sample]);
    }
    Predict(subframe, samples);
    TakeFormants(subframe, samples);
    GiveFormants(subframe, samples);
    return samples;
}

void TrueSpeechSynthesis::Predict(int subframe, TrueSpeechSamples& samples) {
    for (qint16& sample : samples) {
        sample = Limited(sample + Rounded(Sum(predicted_, Predictor(subframe))));
        Push(predicted_, sample);
    }
}

void TrueSpeechSynthesis::TakeFormants(int subframe, TrueSpeechSamples& samples) {
    const auto taps = Decayed(Predictor(subframe), trueSpeechZeroDecay);
    for (qint16& sample : samples) {
        const quint32 sum = Sum(taken_, taps);
        Push(taken_, sample);
        sample = static_cast<qint16>(sample + (static_cast<int>(0U - sum) >> predictorBits));
    }
}

void TrueSpeechSynthesis::GiveFormants(int subframe, TrueSpeechSamples& samples) {
    const auto taps = Decayed(Predictor(subframe), trueSpeechPoleDecay);
    const int tilt = firstReflection_ - (firstReflection_ >> 2);
    for (qint16& sample : samples) {
        quint32 sum = Product(sample, 1 << predictorBits) + Sum(given_, taps);
        const int before = given_[0];
        Push(given_, Limited(Rounded(sum)));
        sum += static_cast<quint32>(static_cast<int>(Product(before, tilt)) >> 4);
        sum -= static_cast<quint32>(static_cast<int>(sum) >> 3);
        sample = Limited(Rounded(sum));
    }
}

} // namespace kestrune
