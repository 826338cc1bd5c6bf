#include "backends/sound/equalizer.h"

#include <algorithm>
#include <cmath>

namespace kestrune {

namespace {

// Of each of the two low passes of a glide: 95 % of the way takes 4.7 times as long.
constexpr double glideSeconds = 0.007;
// Where a glide snaps to its target. Less than half of the smallest step of a sample at full scale.
constexpr double arrivedDb = 0.0001;
// Far below the smallest step; smaller values only slow the processor down.
constexpr double inaudible = 1e-20;

double FactorOf(double gainDb) {
    return std::pow(10.0, gainDb / 20);
}

} // namespace

void Equalizer::Glide::Move(double part) {
    ahead += part * (target - ahead);
    value += part * (ahead - value);
    if (std::abs(target - value) < arrivedDb && std::abs(target - ahead) < arrivedDb) {
        Jump();
    }
}

void Equalizer::Start(int newSampleRateHz, int newChannels) {
    sampleRateHz_ = newSampleRateHz;
    channels_ = newChannels;
    Retarget();
    for (size_t band = 0; band < sections_.size(); ++band) {
        Section& section = sections_[band];
        section.gainDb.Jump();
        section.coefficients = CoefficientsOf(band);
        section.memory = {};
    }
    preGainDb_.Jump();
    preGain_ = FactorOf(preGainDb_.value);
}

void Equalizer::SetEnabled(bool isEnabled) {
    if (enabled_ != isEnabled) {
        enabled_ = isEnabled;
        Retarget();
    }
}

void Equalizer::SetGains(const EqualizerGains& gainsDb) {
    if (wantedDb_ != gainsDb) {
        wantedDb_ = gainsDb;
        Retarget();
    }
}

void Equalizer::Retarget() {
    response_ = SolveEqualizer(enabled_ ? wantedDb_ : EqualizerGains{}, sampleRateHz_);
    for (size_t band = 0; band < sections_.size(); ++band) {
        sections_[band].gainDb.target = response_.sections[band].gainDb;
    }
    preGainDb_.target = -response_.HighestDb();
}

bool Equalizer::IsMoving() const {
    return preGainDb_.IsMoving() ||
           std::any_of(sections_.begin(), sections_.end(),
                       [](const Section& section) { return section.gainDb.IsMoving(); });
}

bool Equalizer::IsBypassed() const {
    const auto isFlat = [](const Glide& glide) { return glide.value == 0 && glide.target == 0; };
    return isFlat(preGainDb_) && std::all_of(sections_.begin(), sections_.end(),
                                             [&](const Section& section) { return isFlat(section.gainDb); });
}

Equalizer::Coefficients Equalizer::CoefficientsOf(size_t band) const {
    const double gainDb = sections_[band].gainDb.value;
    const PeakingSection& place = response_.sections[band];
    if (gainDb == 0.0 || !place.isUsed) {
        return {};
    }
    const double amplitude = std::pow(10.0, gainDb / 40);
    const double alpha = std::sin(place.w0) / (2 * place.q);
    const double a0 = 1 + alpha / amplitude;
    const double middle = -2 * std::cos(place.w0) / a0;
    return {(1 + alpha * amplitude) / a0, middle, (1 - alpha * amplitude) / a0, middle,
            (1 - alpha / amplitude) / a0};
}

// Transposed direct form II: it stays quiet while the coefficients move.
inline Equalizer::Pair Equalizer::Tick(const Coefficients& c, Memory& memory, Pair in) {
    const Pair out = c.b0 * in + memory.z1;
    memory.z1 = c.b1 * in - c.a1 * out + memory.z2;
    memory.z2 = c.b2 * in - c.a2 * out;
    return out;
}

// Four sections in one pass, since one waits for its own last frame for most of the time.
void Equalizer::FilterFour(Section* four, Chunk& chunk, size_t frames) {
    Memory first = four[0].memory;
    Memory second = four[1].memory;
    Memory third = four[2].memory;
    Memory fourth = four[3].memory;
    for (size_t frame = 0; frame < frames; ++frame) {
        Pair value = Tick(four[0].coefficients, first, chunk[frame]);
        value = Tick(four[1].coefficients, second, value);
        value = Tick(four[2].coefficients, third, value);
        chunk[frame] = Tick(four[3].coefficients, fourth, value);
    }
    four[0].memory = first;
    four[1].memory = second;
    four[2].memory = third;
    four[3].memory = fourth;
}

// One step of the glides. Within it pre-gain and coefficients go in a straight line from frame to frame.
void Equalizer::MoveChunk(Chunk& chunk, size_t frames) {
    const double share = 1.0 / static_cast<double>(frames);
    const double part = 1 - std::exp(-static_cast<double>(frames) / (glideSeconds * sampleRateHz_));
    preGainDb_.Move(part);
    const double nextPreGain = FactorOf(preGainDb_.value);
    for (size_t frame = 0; frame < frames; ++frame) {
        chunk[frame] *= preGain_ + (nextPreGain - preGain_) * share * static_cast<double>(frame + 1);
    }
    preGain_ = nextPreGain;
    for (size_t band = 0; band < sections_.size(); ++band) {
        Section& section = sections_[band];
        section.gainDb.Move(part);
        const Coefficients next = CoefficientsOf(band);
        Coefficients now = section.coefficients;
        const Coefficients change = {(next.b0 - now.b0) * share, (next.b1 - now.b1) * share,
                                     (next.b2 - now.b2) * share, (next.a1 - now.a1) * share,
                                     (next.a2 - now.a2) * share};
        for (size_t frame = 0; frame < frames; ++frame) {
            now = {now.b0 + change.b0, now.b1 + change.b1, now.b2 + change.b2, now.a1 + change.a1,
                   now.a2 + change.a2};
            chunk[frame] = Tick(now, section.memory, chunk[frame]);
        }
        section.coefficients = next;
    }
}

void Equalizer::ProcessChunk(double* samples, size_t frames) {
    Chunk chunk;
    const auto step = static_cast<size_t>(channels_);
    for (size_t frame = 0; frame < frames; ++frame) {
        chunk[frame] = Pair{samples[frame * step], samples[frame * step + step - 1]};
    }
    if (IsMoving()) {
        MoveChunk(chunk, frames);
    } else {
        for (size_t frame = 0; frame < frames; ++frame) {
            chunk[frame] *= preGain_;
        }
        for (size_t band = 0; band < sections_.size(); band += sectionsAtOnce) {
            FilterFour(&sections_[band], chunk, frames);
        }
    }
    for (size_t frame = 0; frame < frames; ++frame) {
        samples[frame * step] = chunk[frame][0];
        samples[frame * step + step - 1] = chunk[frame][step - 1];
    }
}

void Equalizer::ForgetTheInaudible() {
    const auto forget = [](Pair& pair) {
        for (int side = 0; side < 2; ++side) {
            if (std::abs(pair[side]) < inaudible) {
                pair[side] = 0;
            }
        }
    };
    for (Section& section : sections_) {
        forget(section.memory.z1);
        forget(section.memory.z2);
    }
}

void Equalizer::Process(double* samples, qint64 frames) {
    for (qint64 done = 0; done < frames; done += stepFrames) {
        ProcessChunk(samples + done * channels_, static_cast<size_t>(std::min(stepFrames, frames - done)));
    }
    ForgetTheInaudible();
}

} // namespace kestrune
