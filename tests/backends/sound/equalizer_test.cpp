// What the equalizer does to sound, measured on the whole way that samples take to the device.
#include "backends/sound/feeder.h"
#include "backends/sound/sound_chain.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>
#include <random>
#include <vector>

namespace kestrune {

namespace {

constexpr int rateHz = 44100;
constexpr double twoPi = 2 * std::numbers::pi;

struct Setting {
    const char* name;
    EqualizerGains gainsDb;
};

EqualizerGains Every(float gainDb) {
    EqualizerGains gainsDb{};
    gainsDb.fill(gainDb);
    return gainsDb;
}

EqualizerGains Alternating(float even, float odd) {
    EqualizerGains gainsDb{};
    for (size_t band = 0; band < gainsDb.size(); ++band) {
        gainsDb[band] = band % 2 == 0 ? even : odd;
    }
    return gainsDb;
}

EqualizerGains Random(unsigned seed) {
    std::mt19937 random(seed);
    EqualizerGains gainsDb{};
    for (float& gainDb : gainsDb) {
        gainDb = static_cast<float>(static_cast<int>(random() % 61) - 30) / 2;
    }
    return gainsDb;
}

std::vector<Setting> Settings() {
    std::vector<Setting> settings = {
        {"all up", Every(15)},
        {"all down", Every(-15)},
        {"all a little", Every(3)},
        {"alternating", Alternating(15, -15)},
        {"alternating the other way", Alternating(-15, 15)},
        {"alternating with flat", Alternating(12, 0)},
        {"neighbours at opposite ends", {0, 0, 0, 0, 0, 15, -15, 0, 0, 0, 0, 0}},
        {"the lowest two", {-15, 15}},
        {"the highest two", {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, -15, 15}},
        {"slope", {-15, -12, -9, -7, -4, -1, 1, 4, 7, 9, 12, 15}},
        {"bass and treble", {9, 7, 5, 2, 0, -1, -1, 0, 2, 4, 6, 8}},
        {"random 1", Random(1)},
        {"random 2", Random(2)},
    };
    for (int band = 0; band < equalizerBands; ++band) {
        EqualizerGains one{};
        one[band] = band % 2 == 0 ? 12.0F : -12.0F;
        settings.push_back({"one band", one});
    }
    return settings;
}

bool IsInSignal(int band, int sampleRateHz) {
    return equalizerCentresHz[band] < 0.45 * sampleRateHz;
}

std::vector<qint16> Sine(double hz, double amplitude, int sampleRateHz, int frames) {
    std::vector<qint16> sine(static_cast<size_t>(frames));
    for (int i = 0; i < frames; ++i) {
        sine[i] = static_cast<qint16>(std::lround(amplitude * std::sin(twoPi * hz * i / sampleRateHz)));
    }
    return sine;
}

// Amplitude of the part at one frequency, over whole periods from `from` on, and what is left beside it.
struct Tone {
    double amplitude = 0;
    double restRms = 0;
};

Tone MeasureTone(const std::vector<qint16>& samples, size_t from, double hz, int sampleRateHz) {
    const double periods = std::floor(static_cast<double>(samples.size() - from) * hz / sampleRateHz);
    const auto count = static_cast<size_t>(std::lround(periods * sampleRateHz / hz));
    double sine = 0;
    double cosine = 0;
    for (size_t i = 0; i < count; ++i) {
        const double phase = twoPi * hz * static_cast<double>(i) / sampleRateHz;
        sine += samples[from + i] * std::sin(phase);
        cosine += samples[from + i] * std::cos(phase);
    }
    sine *= 2.0 / static_cast<double>(count);
    cosine *= 2.0 / static_cast<double>(count);
    double rest = 0;
    for (size_t i = 0; i < count; ++i) {
        const double phase = twoPi * hz * static_cast<double>(i) / sampleRateHz;
        const double left = samples[from + i] - sine * std::sin(phase) - cosine * std::cos(phase);
        rest += left * left;
    }
    return {std::hypot(sine, cosine), std::sqrt(rest / static_cast<double>(count))};
}

SoundChain MakeChain(const EqualizerGains& gainsDb, int sampleRateHz, int channels) {
    SoundChain chain;
    chain.SetEqualizer(gainsDb);
    chain.EnableEqualizer(true);
    chain.Start(sampleRateHz, channels);
    return chain;
}

double Decibels(double amplitude) {
    return 20 * std::log10(amplitude);
}

// Of a tone through the chain, above the pre-gain.
double ResponseDb(const EqualizerGains& gainsDb, double hz, int sampleRateHz) {
    SoundChain chain = MakeChain(gainsDb, sampleRateHz, 1);
    std::vector<qint16> samples = Sine(hz, 20000, sampleRateHz, sampleRateHz);
    const auto settled = static_cast<size_t>(sampleRateHz / 2);
    const double before = MeasureTone(samples, settled, hz, sampleRateHz).amplitude;
    chain.Process(samples.data(), static_cast<qint64>(samples.size()));
    return Decibels(MeasureTone(samples, settled, hz, sampleRateHz).amplitude / before) - chain.PreGainDb();
}

// --- Response ---

TEST(Equalizer, MeetsEveryGainAtItsCentre) {
    for (const int sampleRateHz : {8000, 22050, 44100, 48000, 96000}) {
        double worstDb = 0;
        for (const Setting& setting : Settings()) {
            for (int band = 0; band < equalizerBands; ++band) {
                if (!IsInSignal(band, sampleRateHz)) {
                    continue;
                }
                const double gotDb = ResponseDb(setting.gainsDb, equalizerCentresHz[band], sampleRateHz);
                EXPECT_NEAR(gotDb, setting.gainsDb[band], 0.1)
                    << setting.name << ", band " << band << " at " << sampleRateHz;
                worstDb = std::max(worstDb, std::abs(gotDb - setting.gainsDb[band]));
            }
        }
        RecordProperty("worstDbAt" + std::to_string(sampleRateHz), std::to_string(worstDb));
    }
}

TEST(Equalizer, IsBetweenTheCentresWhatWasCalculated) {
    for (const Setting& setting : Settings()) {
        const EqualizerResponse response = SolveEqualizer(setting.gainsDb, rateHz);
        for (const double hz : {23.0, 75.0, 410.0, 1234.0, 3900.0, 12000.0, 19000.0}) {
            EXPECT_NEAR(ResponseDb(setting.gainsDb, hz, rateHz), response.At(hz), 0.1)
                << setting.name << " at " << hz;
        }
    }
}

TEST(Equalizer, StaysNearTheGainsBetweenTheCentres) {
    const EqualizerResponse response = SolveEqualizer(Every(12), rateHz);
    for (double hz = 31; hz < 16000; hz *= 1.01) {
        EXPECT_NEAR(response.At(hz), 12, 1.5) << hz;
    }
}

TEST(Equalizer, LeavesTheDistanceAlone) {
    EqualizerGains gainsDb{};
    gainsDb[5] = 12; // 530 Hz
    for (const double hz : {31.0, 97.0, 2900.0, 9000.0, 16000.0}) {
        EXPECT_NEAR(ResponseDb(gainsDb, hz, rateHz), 0, 0.2) << hz;
    }
}

TEST(Equalizer, SkipsBandsAboveTheSignal) {
    EqualizerGains gainsDb{};
    gainsDb[equalizerBands - 1] = 12; // 16 kHz
    EXPECT_NEAR(ResponseDb(gainsDb, 3000, 8000), 0, 0.01);
}

TEST(Equalizer, CutsGainsToItsRangeAndTakesNoNumberForFlat) {
    EXPECT_NEAR(ResponseDb(Every(100), 940, rateHz), equalizerLargestGainDb, 0.1);
    EXPECT_NEAR(ResponseDb(Every(-100), 940, rateHz), -equalizerLargestGainDb, 0.1);
    for (const float odd :
         {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()}) {
        const std::vector<qint16> source = Sine(940, 20000, rateHz, 1000);
        std::vector<qint16> out = source;
        MakeChain(Every(odd), rateHz, 1).Process(out.data(), 1000);
        EXPECT_EQ(out, source);
    }
}

// --- Exactness ---

std::vector<qint16> Noise(int samples, quint32 seed) {
    std::mt19937 random(seed);
    std::vector<qint16> noise(static_cast<size_t>(samples));
    for (qint16& sample : noise) {
        sample = static_cast<qint16>(random());
    }
    return noise;
}

TEST(Equalizer, TouchesNothingWhenFlatAndAgainAfterAChange) {
    const std::vector<qint16> source = Noise(rateHz * 2, 1);
    for (const Setting& setting : Settings()) {
        SoundChain chain = MakeChain({}, rateHz, 2);
        std::vector<qint16> out = source;
        chain.Process(out.data(), rateHz / 4);
        EXPECT_TRUE(std::equal(out.begin(), out.begin() + rateHz / 2, source.begin())) << "flat";
        chain.SetEqualizer(setting.gainsDb);
        chain.Process(out.data() + rateHz / 2, rateHz / 4);
        chain.SetEqualizer({});
        chain.Process(out.data() + rateHz, rateHz / 2);
        EXPECT_FALSE(std::equal(out.begin(), out.end(), source.begin())) << setting.name;
        EXPECT_TRUE(std::equal(out.end() - rateHz / 4, out.end(), source.end() - rateHz / 4)) << setting.name;
    }
}

TEST(Equalizer, GivesTheSameInBlocksOfAnySize) {
    const std::vector<qint16> source = Sine(440, 9000, rateHz, rateHz);
    std::vector<qint16> whole = source;
    MakeChain(Random(3), rateHz, 2).Process(whole.data(), rateHz / 2);
    for (const qint64 blockFrames : {1, 7, 32, 33, 1764}) {
        SoundChain chain = MakeChain(Random(3), rateHz, 2);
        std::vector<qint16> out = source;
        for (qint64 done = 0; done < rateHz / 2; done += blockFrames) {
            chain.Process(out.data() + done * 2, std::min(blockFrames, rateHz / 2 - done));
        }
        EXPECT_EQ(out, whole) << blockFrames;
    }
}

TEST(Equalizer, KeepsTheChannelsApart) {
    const std::vector<qint16> left = Sine(440, 5000, rateHz, rateHz / 2);
    const std::vector<qint16> right = Sine(3000, 5000, rateHz, rateHz / 2);
    std::vector<qint16> both;
    for (size_t i = 0; i < left.size(); ++i) {
        both.insert(both.end(), {left[i], right[i]});
    }
    MakeChain(Random(4), rateHz, 2).Process(both.data(), rateHz / 2);
    std::vector<qint16> alone[2] = {left, right};
    for (size_t channel = 0; channel < 2; ++channel) {
        MakeChain(Random(4), rateHz, 1).Process(alone[channel].data(), rateHz / 2);
        for (size_t i = 0; i < left.size(); ++i) {
            ASSERT_EQ(both[i * 2 + channel], alone[channel][i]) << i;
        }
    }
}

// --- Headroom ---

TEST(Equalizer, LowersAllByTheHighestPointOfTheResponse) {
    EXPECT_EQ(MakeChain({}, rateHz, 2).PreGainDb(), 0);
    EXPECT_EQ(MakeChain(Every(-6), rateHz, 2).PreGainDb(), 0);
    EXPECT_NEAR(MakeChain(Every(6), rateHz, 2).PreGainDb(), -6, 0.1);
    EqualizerGains one{};
    one[4] = 9;
    EXPECT_NEAR(MakeChain(one, rateHz, 2).PreGainDb(), -9, 0.1);
    SoundChain off = MakeChain(Every(6), rateHz, 2);
    off.EnableEqualizer(false);
    EXPECT_EQ(off.PreGainDb(), 0);
}

TEST(Equalizer, KeepsATonePureAtFullScale) {
    for (const Setting& setting : Settings()) {
        for (int band = 0; band < equalizerBands; ++band) {
            const double hz = equalizerCentresHz[band];
            SoundChain chain = MakeChain(setting.gainsDb, rateHz, 1);
            std::vector<qint16> out = Sine(hz, 32767, rateHz, rateHz);
            chain.Process(out.data(), rateHz);
            const Tone tone = MeasureTone(out, rateHz / 2, hz, rateHz);
            EXPECT_NEAR(Decibels(tone.amplitude / 32767), setting.gainsDb[band] + chain.PreGainDb(), 0.1)
                << setting.name << ' ' << hz;
            // The rounding to 16 bits, of what came in and of what went out, and nothing else.
            EXPECT_LT(tone.restRms, 4) << setting.name << ' ' << hz;
        }
    }
}

// A wave of full height whose phases the filters move, so that it peaks higher than its strongest tone.
std::vector<qint16> Square(double hz, int frames) {
    std::vector<qint16> square(static_cast<size_t>(frames));
    for (int i = 0; i < frames; ++i) {
        square[i] = std::fmod(hz * i / rateHz, 1.0) < 0.5 ? 32767 : -32767;
    }
    return square;
}

// The longest run of samples that stand at the end of the range, where the wave would have gone further.
int LongestFlatTop(const std::vector<qint16>& samples, size_t from) {
    int longest = 0;
    int run = 0;
    for (size_t i = from; i < samples.size(); ++i) {
        run = std::abs(samples[i]) >= 32766 ? run + 1 : 0;
        longest = std::max(longest, run);
    }
    return longest;
}

TEST(Equalizer, CutsNoTopsOfWavesThatPeakHigher) {
    int overs = 0;
    for (const EqualizerGains& gainsDb : {Every(-6), Alternating(-12, 0), Alternating(12, -12), Random(5)}) {
        for (const double hz : {50.0, 110.0, 441.0, 997.0}) {
            SoundChain chain = MakeChain(gainsDb, rateHz, 1);
            std::vector<qint16> out = Square(hz, rateHz);
            for (int done = 0; done < rateHz; done += 1764) {
                chain.Process(out.data() + done, std::min(1764, rateHz - done));
            }
            EXPECT_LE(LongestFlatTop(out, rateHz / 2), 2) << hz;
            overs += LongestFlatTop(out, 0) > 0 ? 1 : 0;
        }
    }
    EXPECT_GT(overs, 3) << "no wave came near the end of the range: nothing was tested";
}

// --- Changes ---

// Radix-2, in place; the size is a power of 2.
void Transform(std::vector<std::complex<double>>& values) {
    const size_t size = values.size();
    if (size == 1) {
        return;
    }
    std::vector<std::complex<double>> even(size / 2);
    std::vector<std::complex<double>> odd(size / 2);
    for (size_t i = 0; i < size / 2; ++i) {
        even[i] = values[2 * i];
        odd[i] = values[2 * i + 1];
    }
    Transform(even);
    Transform(odd);
    for (size_t i = 0; i < size / 2; ++i) {
        const auto turned =
            std::polar(1.0, -twoPi * static_cast<double>(i) / static_cast<double>(size)) * odd[i];
        values[i] = even[i] + turned;
        values[i + size / 2] = even[i] - turned;
    }
}

// Power farther than `widthHz` from a tone, against all power, in dB.
double PowerBesideDb(const std::vector<qint16>& samples, double toneHz, double widthHz) {
    std::vector<std::complex<double>> values(samples.size());
    for (size_t i = 0; i < samples.size(); ++i) {
        const double phase = twoPi * static_cast<double>(i) / static_cast<double>(samples.size());
        // Blackman-Harris, whose own side lobes are below -92 dB.
        values[i] = samples[i] * (0.35875 - 0.48829 * std::cos(phase) + 0.14128 * std::cos(2 * phase) -
                                  0.01168 * std::cos(3 * phase));
    }
    Transform(values);
    double all = 0;
    double beside = 0;
    for (size_t i = 1; i < values.size() / 2; ++i) {
        const double hz = static_cast<double>(i) * rateHz / static_cast<double>(values.size());
        all += std::norm(values[i]);
        beside += std::abs(hz - toneHz) > widthHz ? std::norm(values[i]) : 0;
    }
    return 10 * std::log10(beside / all);
}

// A drag as a hand makes it: a new gain with each block of the writer's 40 ms, or of 8 ms.
TEST(Equalizer, MovesABandWithoutNoise) {
    for (const double toneHz : {200.0, 940.0, 4000.0}) {
        for (const int blockFrames : {353, 1764}) {
            SoundChain chain = MakeChain({}, rateHz, 1);
            std::vector<qint16> out = Sine(toneHz, 20000, rateHz, 65536);
            float gainDb = 0;
            float stepDb = 1.5F;
            for (int done = 0; done < 65536; done += blockFrames) {
                gainDb += stepDb;
                stepDb = std::abs(gainDb) >= 15 ? -stepDb : stepDb;
                EqualizerGains gainsDb{};
                gainsDb[6] = gainDb; // 940 Hz
                chain.SetEqualizer(gainsDb);
                chain.Process(out.data() + done, std::min(blockFrames, 65536 - done));
            }
            // Rounding to 16 bits alone makes -78.
            EXPECT_LT(PowerBesideDb(out, toneHz, 150), -76) << toneHz << ' ' << blockFrames;
        }
    }
}

TEST(Equalizer, JumpsFromEndToEndWithoutAClick) {
    for (const double toneHz : {200.0, 940.0, 4000.0}) {
        SoundChain chain = MakeChain(Alternating(-15, 15), rateHz, 1);
        std::vector<qint16> out = Sine(toneHz, 20000, rateHz, 65536);
        chain.Process(out.data(), 20000);
        chain.SetEqualizer(Alternating(15, -15));
        chain.Process(out.data() + 20000, 15000);
        chain.EnableEqualizer(false);
        chain.Process(out.data() + 35000, 65536 - 35000);
        EXPECT_LT(PowerBesideDb(out, toneHz, 300), -70) << toneHz;
    }
}

TEST(Equalizer, HasArrivedAfterATenthOfASecond) {
    SoundChain chain = MakeChain({}, rateHz, 1);
    std::vector<qint16> out = Sine(940, 20000, rateHz, rateHz);
    chain.Process(out.data(), 1000);
    chain.SetEqualizer(Every(-15));
    chain.Process(out.data() + 1000, rateHz - 1000);
    const Tone early = MeasureTone({out.begin() + 1000, out.begin() + 1000 + rateHz / 100}, 0, 940, rateHz);
    EXPECT_GT(early.amplitude, 7000) << "no glide";
    const Tone late = MeasureTone(out, 1000 + rateHz / 10, 940, rateHz);
    EXPECT_NEAR(Decibels(late.amplitude / 20000), -15, 0.1);
}

TEST(Equalizer, ComesToRestAfterAnythingAtAll) {
    std::mt19937 random(7);
    SoundChain chain = MakeChain({}, rateHz, 2);
    const std::vector<qint16> source = Noise(3528, 8);
    for (int turn = 0; turn < 400; ++turn) {
        chain.SetEqualizer(Random(random()));
        chain.EnableEqualizer(random() % 4 != 0);
        std::vector<qint16> out = source;
        chain.Process(out.data(), 1 + static_cast<qint64>(random() % 1764));
    }
    chain.EnableEqualizer(false);
    std::vector<qint16> out;
    for (int turn = 0; turn < 20; ++turn) {
        out = source;
        chain.Process(out.data(), 1764);
    }
    EXPECT_EQ(out, source);
}

} // namespace

} // namespace kestrune
