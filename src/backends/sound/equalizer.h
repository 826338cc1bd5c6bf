// The twelve-band equalizer over 16-bit frames.
//
// Each band is a peaking filter of second order; components/equalizer_response.h says how they are set so
// that the response meets the wanted gain at every centre, whatever the bands beside it do.
//
// Headroom: what is raised would not fit into 16 bits, so all is lowered by the highest point of the response
// (the pre-gain). A response that raises nothing keeps its level.
#pragma once

#include "components/equalizer.h"
#include "components/equalizer_response.h"

#include <array>

namespace kestrune {

// Not thread-safe; used by one thread at a time.
class Equalizer {
public:
    // Rate in Hz, 1 or 2 channels. Forgets the past of the filters and takes the gains set last at once.
    void Start(int sampleRateHz, int channels);
    // Both take effect over some 40 ms.
    void SetEnabled(bool isEnabled);
    void SetGains(const EqualizerGains& gainsDb);
    // Where it is going to, in dB, 0 or below.
    double PreGainDb() const { return preGainDb_.target; }
    // True while samples would pass unchanged: off or flat, and any change to that has faded out.
    bool IsBypassed() const;
    // Filters `frames` interleaved frames in place. Values may go beyond the 16-bit range: the pre-gain is
    // exact for tones, while a wave of many tones can peak higher after its phases have moved.
    void Process(double* samples, qint64 frames);

private:
    // The left and the right sample side by side. With one channel both are the same.
    using Pair = double __attribute__((vector_size(16)));

    struct Coefficients {
        double b0 = 1, b1 = 0, b2 = 0, a1 = 0, a2 = 0;
    };
    struct Memory {
        Pair z1 = {0, 0};
        Pair z2 = {0, 0};
    };
    // Moves to its target in an S: two low passes in a row, so that neither the value nor its speed jumps.
    struct Glide {
        double target = 0;
        double ahead = 0;
        double value = 0;
        bool IsMoving() const { return value != target; }
        void Jump() { value = ahead = target; }
        void Move(double part);
    };
    struct Section {
        Glide gainDb;
        Coefficients coefficients; // of gainDb.value
        Memory memory;
    };
    static constexpr size_t sectionsAtOnce = 4;
    static_assert(equalizerBands % sectionsAtOnce == 0);
    static constexpr qint64 stepFrames = 32;
    using Chunk = std::array<Pair, stepFrames>;

    void Retarget();
    bool IsMoving() const;
    Coefficients CoefficientsOf(size_t band) const;
    void ProcessChunk(double* samples, size_t frames);
    void MoveChunk(Chunk& chunk, size_t frames);
    void FilterFour(Section* four, Chunk& chunk, size_t frames);
    void ForgetTheInaudible();
    static Pair Tick(const Coefficients& c, Memory& memory, Pair in);

    std::array<Section, equalizerBands> sections_;
    Glide preGainDb_;
    double preGain_ = 1; // of preGainDb_.value, as a factor
    EqualizerResponse response_;
    EqualizerGains wantedDb_{};
    int sampleRateHz_ = 44100;
    int channels_ = 2;
    bool enabled_ = false;
};

} // namespace kestrune
