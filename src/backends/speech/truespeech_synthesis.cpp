#include "backends/speech/truespeech_synthesis.h"

#include "backends/speech/truespeech_tables.h"

#include <algorithm>
#include <cstdlib>

namespace kestrune {

namespace {

constexpr int peak = 0x7FFE;
constexpr int predictorBits = 12;
constexpr int tableBits = 15;
// Two thirds and one third, times 32768.
constexpr int largerShare = 21846;
constexpr int smallerShare = 10923;

int Rounded(quint32 sum) {
    return static_cast<int>(sum + (1U << (predictorBits - 1))) >> predictorBits;
}

qint16 Limited(int sample) {
    return static_cast<qint16>(std::clamp(sample, -peak, peak));
}

using Taps = std::array<qint16, trueSpeechOrder>;

// Samples with those before them that a filter reaches back to, oldest first.
class Line {
public:
    explicit Line(const Taps& memory) { std::copy(memory.begin(), memory.end(), samples_.begin()); }
    void Put(size_t sample, qint16 value) { samples_[trueSpeechOrder + sample] = value; }
    qint16 Before(size_t sample) const { return samples_[trueSpeechOrder - 1 + sample]; }
    // `taps` in the order of the samples. Sums run around as 32-bit words do.
    quint32 Sum(size_t sample, const Taps& taps) const {
        quint32 sum = 0;
        for (size_t tap = 0; tap < taps.size(); ++tap) {
            sum += static_cast<quint32>(samples_[sample + tap] * taps[tap]);
        }
        return sum;
    }
    void Keep(Taps& memory) const {
        std::copy(samples_.end() - trueSpeechOrder, samples_.end(), memory.begin());
    }

private:
    std::array<qint16, trueSpeechOrder + trueSpeechSubframeSamples> samples_;
};

Taps Reversed(const TrueSpeechPredictor& predictor) {
    Taps taps;
    std::reverse_copy(predictor.begin(), predictor.end(), taps.begin());
    return taps;
}

Taps Decayed(const TrueSpeechPredictor& predictor, const std::array<int, trueSpeechOrder>& decay) {
    TrueSpeechPredictor decayed;
    for (size_t tap = 0; tap < decayed.size(); ++tap) {
        decayed[tap] = static_cast<qint16>(decay[tap] * predictor[tap] >> tableBits);
    }
    return Reversed(decayed);
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

Repetition TrueSpeechSynthesis::Repeated(int lag, int pitch) const {
    constexpr int filterBits = 14;
    Repetition repeated;
    if (pitch == trueSpeechNoPitch) {
        return repeated;
    }
    std::array<qint16, trueSpeechHistory + trueSpeechSubframeSamples> line;
    std::copy(excitation_.begin(), excitation_.end(), line.begin());
    const PitchFilter filter = trueSpeechPitchTaps[static_cast<size_t>(pitch % trueSpeechPitchFilters)];
    const int distance =
        std::min(lag + pitch / trueSpeechPitchFilters + trueSpeechShortestLag, trueSpeechHistory - 1);
    auto from = line.begin() + (trueSpeechHistory - 1 - distance);
    for (size_t sample = 0; sample < repeated.samples.size(); ++sample, ++from) {
        const int sum =
            (from[0] * filter.further + from[1] * filter.nearer + (1 << (filterBits - 1))) >> filterBits;
        repeated.samples[sample] = static_cast<qint16>(sum);
        repeated.peak = std::max(repeated.peak, std::abs(sum));
        line[trueSpeechHistory + sample] = repeated.samples[sample];
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
    const Taps taps = Reversed(Predictor(subframe));
    Line line(predicted_);
    for (size_t sample = 0; sample < samples.size(); ++sample) {
        samples[sample] = Limited(samples[sample] + Rounded(line.Sum(sample, taps)));
        line.Put(sample, samples[sample]);
    }
    line.Keep(predicted_);
}

void TrueSpeechSynthesis::TakeFormants(int subframe, TrueSpeechSamples& samples) {
    const Taps taps = Decayed(Predictor(subframe), trueSpeechZeroDecay);
    Line line(taken_);
    for (size_t sample = 0; sample < samples.size(); ++sample) {
        line.Put(sample, samples[sample]);
        const int sum = static_cast<int>(0U - line.Sum(sample, taps)) >> predictorBits;
        samples[sample] = static_cast<qint16>(samples[sample] + sum);
    }
    line.Keep(taken_);
}

void TrueSpeechSynthesis::GiveFormants(int subframe, TrueSpeechSamples& samples) {
    const Taps taps = Decayed(Predictor(subframe), trueSpeechPoleDecay);
    const int tilt = firstReflection_ - (firstReflection_ >> 2);
    Line line(given_);
    for (size_t sample = 0; sample < samples.size(); ++sample) {
        quint32 sum = (static_cast<quint32>(samples[sample]) << predictorBits) + line.Sum(sample, taps);
        line.Put(sample, Limited(Rounded(sum)));
        sum += static_cast<quint32>(line.Before(sample) * tilt >> 4);
        sum -= static_cast<quint32>(static_cast<int>(sum) >> 3);
        samples[sample] = Limited(Rounded(sum));
    }
    line.Keep(given_);
}

} // namespace kestrune
