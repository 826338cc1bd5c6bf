#include "backends/speech/truespeech_coder.h"

#include "backends/speech/truespeech_prediction.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace kestrune {

namespace {

constexpr size_t triedLags = 3;    // of a half
constexpr size_t triedPitches = 2; // of a subframe
// With the highest pulse on top it stays below the 16 bits that decoders have.
constexpr int loudestRepetition = 25000;

// What a predictor leaves of samples that have `trueSpeechOrder` before them.
float LeftBy(const PredictorTaps& taps, const float* samples) {
    float power = 0;
    for (int sample = 0; sample < trueSpeechSubframeSamples; ++sample) {
        float left = samples[sample];
        for (int tap = 0; tap < trueSpeechOrder; ++tap) {
            left -= taps[static_cast<size_t>(tap)] * samples[sample - 1 - tap];
        }
        power += left * left;
    }
    return power;
}

} // namespace

TrueSpeechBytes TrueSpeechCoder::Encode(BlockSamples block, BlockSamples next) {
    ChoosePredictor(block, next);
    SetSubframes(block);
    EncodeHalf(0);
    EncodeHalf(1);
    return PackTrueSpeech(best_.block);
}

void TrueSpeechCoder::ChoosePredictor(BlockSamples block, BlockSamples next) {
    std::array<float, trueSpeechOrder + 2 * trueSpeechBlockSamples> samples;
    const auto first = std::copy(past_.begin(), past_.end(), samples.begin());
    const auto second = std::copy(block.begin(), block.end(), first);
    std::copy(next.begin(), next.end(), second);
    std::copy(second - trueSpeechOrder, second, past_.begin());
    best_.block = {};
    best_.block.reflection = ChooseReflections(
        std::span(samples).subspan<trueSpeechOrder + trueSpeechWindowOffset, trueSpeechWindowSamples>());
    // The first two subframes may keep to the predictor before, or come halfway to the new one.
    std::array<float, 2> left = {};
    bool mixes = true;
    for (const bool blended : {false, true}) {
        TrueSpeechSynthesis synthesis = best_.synthesis;
        best_.block.blended = blended;
        synthesis.StartBlock(best_.block);
        left[blended ? 1 : 0] = LeftBy(TapsOf(synthesis.Predictor(0)), first) +
                                LeftBy(TapsOf(synthesis.Predictor(1)), first + trueSpeechSubframeSamples);
        mixes = DiesAway(synthesis.Predictor(0)) && DiesAway(synthesis.Predictor(1));
    }
    best_.block.blended = mixes && left[1] < left[0];
    best_.synthesis.StartBlock(best_.block);
}

void TrueSpeechCoder::SetSubframes(BlockSamples block) {
    const float tilt = best_.synthesis.Tilt();
    for (int subframe = 0; subframe < trueSpeechSubframes; ++subframe) {
        Setting& setting = settings_[static_cast<size_t>(subframe)];
        setting.taps = TapsOf(best_.synthesis.Predictor(subframe));
        setting.response = WeightedResponse(setting.taps, tilt);
        setting.pulses.SetResponse(setting.response);
        std::copy_n(block.begin() + subframe * trueSpeechSubframeSamples, trueSpeechSubframeSamples,
                    setting.original.begin());
        setting.weighted = originalWeight_.Run(setting.taps, setting.original);
    }
}

SubframeValues TrueSpeechCoder::WantedFrom(const Trial& trial, int subframe) const {
    const Setting& setting = settings_[static_cast<size_t>(subframe)];
    TrueSpeechSynthesis synthesis = trial.synthesis;
    const TrueSpeechSamples ringing = synthesis.Decode(subframe, {}, {});
    SubframeValues wanted;
    std::transform(setting.original.begin(), setting.original.end(), ringing.begin(), wanted.begin(),
                   [](float original, qint16 rung) { return original - rung; });
    ErrorWeight weight = trial.weight;
    return weight.Run(setting.taps, wanted);
}

void TrueSpeechCoder::EncodeHalf(int half) {
    const int early = 2 * half;
    const int late = early + 1;
    const SubframeValues wanted = WantedFrom(best_, early);
    pitch_.Prepare(best_.synthesis.Excitation(), settings_[static_cast<size_t>(early)].response, wanted, 0,
                   trueSpeechLags - 1);
    Trial best;
    best.error = std::numeric_limits<float>::infinity();
    for (const int lag : LagsWorthTrying(pitch_, half)) {
        Trial trial = best_;
        trial.error = 0;
        trial.block.lag[static_cast<size_t>(half)] = lag;
        EncodeSubframe(trial, early, wanted, pitch_);
        if (trial.error >= best.error) {
            continue;
        }
        const SubframeValues wantedLater = WantedFrom(trial, late);
        laterPitch_.Prepare(trial.synthesis.Excitation(), settings_[static_cast<size_t>(late)].response,
                            wantedLater, lag, lag);
        EncodeSubframe(trial, late, wantedLater, laterPitch_);
        if (trial.error < best.error) {
            best = trial;
        }
    }
    best_ = best;
    const auto past = std::copy(weightedPast_.begin() + 2 * trueSpeechSubframeSamples, weightedPast_.end(),
                                weightedPast_.begin());
    const auto& first = settings_[static_cast<size_t>(early)].weighted;
    const auto& second = settings_[static_cast<size_t>(late)].weighted;
    std::copy(second.begin(), second.end(), std::copy(first.begin(), first.end(), past));
}

// For the second subframe of a half, whose excitation is not known yet, the original stands in.
std::array<float, trueSpeechLags + trueSpeechLagSteps - 1> TrueSpeechCoder::GainedLater(int half) const {
    std::array<float, trueSpeechHistory + 2 * trueSpeechSubframeSamples> line;
    auto end = std::copy(weightedPast_.begin(), weightedPast_.end(), line.begin());
    for (int subframe = 2 * half; subframe < 2 * half + 2; ++subframe) {
        const SubframeValues& weighted = settings_[static_cast<size_t>(subframe)].weighted;
        end = std::copy(weighted.begin(), weighted.end(), end);
    }
    const std::span all(line);
    const auto now = all.last<trueSpeechSubframeSamples>();
    std::array<float, trueSpeechLags + trueSpeechLagSteps - 1> gained;
    double power = 0;
    for (size_t lag = 0; lag < gained.size(); ++lag) {
        const auto past = all.subspan(line.size() - trueSpeechSubframeSamples - trueSpeechShortestLag - lag)
                              .first<trueSpeechSubframeSamples>();
        const float common = Product(past, now);
        // From lag to lag one sample enters and one leaves.
        const double entering = past.front();
        const double leaving = *(past.data() + past.size());
        power = lag == 0 ? Product(past, past) : power + entering * entering - leaving * leaving;
        gained[lag] = common > 0 ? common * common / static_cast<float>(power + 1) : 0;
    }
    return gained;
}

std::vector<int> TrueSpeechCoder::LagsWorthTrying(const PitchSearch& search, int half) const {
    const auto early = search.GainedByLag();
    const auto late = GainedLater(half);
    std::array<float, trueSpeechLags> gained;
    for (size_t lag = 0; lag < gained.size(); ++lag) {
        gained[lag] = *std::max_element(early.data() + lag, early.data() + lag + trueSpeechLagSteps) +
                      *std::max_element(late.data() + lag, late.data() + lag + trueSpeechLagSteps);
    }
    // One step of a subframe reaches from each tried lag to those beside it.
    constexpr std::ptrdiff_t alike = 3;
    std::vector<int> lags;
    while (lags.size() < triedLags) {
        const auto best = std::max_element(gained.begin(), gained.end()) - gained.begin();
        lags.push_back(static_cast<int>(best));
        const auto from = std::max<std::ptrdiff_t>(0, best - alike);
        const auto to = std::min<std::ptrdiff_t>(trueSpeechLags, best + alike + 1);
        std::fill(gained.begin() + from, gained.begin() + to, -1.0F);
    }
    return lags;
}

void TrueSpeechCoder::EncodeSubframe(Trial& trial, int subframe, const SubframeValues& wanted,
                                     const PitchSearch& search) const {
    const Setting& setting = settings_[static_cast<size_t>(subframe)];
    const int lag = trial.block.lag[static_cast<size_t>(subframe / 2)];
    const SubframeValues sums = setting.pulses.Sums(wanted);
    auto pitches = search.Best(lag, triedPitches);
    std::array<TrueSpeechSamples, triedPitches> repeated;
    std::array<PulseTarget, triedPitches> targets;
    for (size_t tried = 0; tried < triedPitches; ++tried) {
        Repetition repetition = trial.synthesis.Repeated(lag, pitches[tried].pitch);
        if (repetition.peak > loudestRepetition) {
            pitches[tried] = {};
            repetition = {};
        }
        repeated[tried] = repetition.samples;
        targets[tried] = {setting.pulses.Without(sums, repeated[tried]), pitches[tried].gained};
    }
    const PulseChoice pulses = setting.pulses.Choose(targets);
    const TrueSpeechSubframe chosen = {pitches[pulses.target].pitch, pulses.gain, pulses.sizes,
                                       pulses.places};
    trial.block.subframes[static_cast<size_t>(subframe)] = chosen;
    const TrueSpeechSamples decoded =
        trial.synthesis.Decode(subframe, repeated[pulses.target], TrueSpeechSynthesis::Pulses(chosen));
    SubframeValues errors;
    std::transform(setting.original.begin(), setting.original.end(), decoded.begin(), errors.begin(),
                   [](float original, qint16 sample) { return original - sample; });
    errors = trial.weight.Run(setting.taps, errors);
    trial.error += Product(errors, errors);
}

} // namespace kestrune
