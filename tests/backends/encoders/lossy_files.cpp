#include "backends/encoders/lossy_files.h"

#include <gtest/gtest.h>

#include <QBuffer>

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
#include <cstring>
#include <random>

namespace kestrune {

namespace {

constexpr double twoPi = 6.283185307179586;
constexpr size_t windowLength = 4096;

// In place; the length is a power of two.
void Transform(std::vector<std::complex<double>>& values) {
    const size_t length = values.size();
    for (size_t at = 1, mirrored = 0; at < length; ++at) {
        size_t bit = length >> 1;
        for (; (mirrored & bit) != 0; bit >>= 1) {
            mirrored ^= bit;
        }
        mirrored ^= bit;
        if (at < mirrored) {
            std::swap(values[at], values[mirrored]);
        }
    }
    for (size_t span = 2; span <= length; span *= 2) {
        for (size_t start = 0; start < length; start += span) {
            for (size_t at = 0; at < span / 2; ++at) {
                const double angle = -twoPi * static_cast<double>(at) / static_cast<double>(span);
                const std::complex<double> even = values[start + at];
                const std::complex<double> odd = values[start + at + span / 2] * std::polar(1.0, angle);
                values[start + at] = even + odd;
                values[start + at + span / 2] = even - odd;
            }
        }
    }
}

QString AnswerOfFfprobe(const QString& path, const QString& entries) {
    QByteArray output;
    RunTool(QStringLiteral("ffprobe"),
            {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-show_entries"), entries,
             QStringLiteral("-of"), QStringLiteral("csv=p=0"), path},
            &output);
    return QString::fromUtf8(output).trimmed();
}

} // namespace

Sound Music(double seconds, int rateHz, int channels, quint32 seed) {
    constexpr double noteSeconds = 0.3;
    constexpr std::array<double, 6> pitches{220.0, 261.6, 329.6, 392.0, 440.0, 523.3};
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> noise(-1.0, 1.0);
    Sound sound{rateHz, channels, {}};
    const auto frames = static_cast<qint64>(seconds * rateHz);
    sound.samples.reserve(static_cast<size_t>(frames * channels));
    for (qint64 frame = 0; frame < frames; ++frame) {
        const double time = static_cast<double>(frame) / rateHz;
        const auto note = static_cast<size_t>(time / noteSeconds);
        const double within = time - static_cast<double>(note) * noteSeconds;
        const double decay = std::exp(-within * 8.0);
        const double attack = std::exp(-within * 200.0);
        for (int channel = 0; channel < channels; ++channel) {
            double value = 0;
            for (size_t tone = 0; tone < 3; ++tone) {
                const double pitch =
                    pitches[(note + 2 * tone + static_cast<size_t>(channel)) % pitches.size()];
                for (int harmonic = 1; harmonic <= 6; ++harmonic) {
                    value += std::sin(twoPi * pitch * harmonic * time) / (harmonic * harmonic);
                }
            }
            value = 0.12 * value * decay + 0.25 * noise(random) * attack + 0.002 * noise(random);
            sound.samples.push_back(static_cast<float>(value));
        }
    }
    return sound;
}

Sound Noise(double seconds, int rateHz, int channels, float peak, quint32 seed) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> noise(-peak, peak);
    Sound sound{rateHz, channels, {}};
    sound.samples.resize(static_cast<size_t>(seconds * rateHz) * static_cast<size_t>(channels));
    std::generate(sound.samples.begin(), sound.samples.end(), [&] { return noise(random); });
    return sound;
}

Outcome Write(SampleEncoder& encoder, const Sound& sound, qint64 from, qint64 frames) {
    const float* const first = sound.samples.data() + from * sound.channels;
    if (encoder.Input().takesFloats) {
        return encoder.WriteFloats(first, frames);
    }
    std::vector<qint16> whole(static_cast<size_t>(frames) * static_cast<size_t>(sound.channels));
    std::transform(first, first + whole.size(), whole.begin(), [](float sample) {
        return static_cast<qint16>(std::lrint(std::clamp(sample * 32768.0F, -32768.0F, 32767.0F)));
    });
    return encoder.WriteIntegers(whole.data(), frames);
}

QByteArray Coded(SampleEncoder& encoder, const Sound& sound) {
    QBuffer device;
    EXPECT_TRUE(device.open(QIODevice::ReadWrite));
    const EncoderInput input = encoder.Input();
    EXPECT_EQ(input.rateHz, sound.rateHz);
    EXPECT_EQ(input.channels, sound.channels);
    EXPECT_EQ(encoder.Begin(device), Outcome::Ok);
    std::mt19937 random(3);
    for (qint64 done = 0; done < sound.Frames();) {
        const qint64 count = std::min<qint64>(static_cast<qint64>(random() % 30000), sound.Frames() - done);
        EXPECT_EQ(Write(encoder, sound, done, count), Outcome::Ok);
        done += count;
    }
    EXPECT_EQ(encoder.Finish(), Outcome::Ok);
    return device.data();
}

Sound DecodedByFfmpeg(const QString& path, int rateHz, int channels) {
    QByteArray bytes;
    RunTool(QStringLiteral("ffmpeg"),
            {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-i"), path, QStringLiteral("-f"),
             QStringLiteral("f32le"), QStringLiteral("-")},
            &bytes);
    Sound sound{rateHz, channels, {}};
    sound.samples.resize(static_cast<size_t>(bytes.size()) / sizeof(float));
    if (!sound.samples.empty()) {
        std::memcpy(sound.samples.data(), bytes.constData(), sound.samples.size() * sizeof(float));
    }
    return sound;
}

QString Probed(const QString& path, const QString& names) {
    return AnswerOfFfprobe(path, QStringLiteral("stream=") + names);
}

double ProbedSeconds(const QString& path) {
    return AnswerOfFfprobe(path, QStringLiteral("format=duration")).toDouble();
}

double SignalToNoiseDb(const Sound& original, const Sound& decoded, qint64 lag) {
    double signal = 0;
    double noise = 0;
    const auto offset = static_cast<size_t>(lag * original.channels);
    for (size_t at = 0; at < original.samples.size(); ++at) {
        const double wanted = original.samples[at];
        const double got = at + offset < decoded.samples.size() ? decoded.samples[at + offset] : 0.0;
        signal += wanted * wanted;
        noise += (wanted - got) * (wanted - got);
    }
    return 10 * std::log10(signal / std::max(noise, 1e-20));
}

qint64 ClosestLag(const Sound& original, const Sound& decoded, qint64 most) {
    // A second is enough to tell one place from the next.
    Sound part = original;
    part.samples.resize(std::min<size_t>(part.samples.size(), static_cast<size_t>(original.rateHz) *
                                                                  static_cast<size_t>(original.channels)));
    qint64 closest = 0;
    double highest = -1000;
    for (qint64 lag = 0; lag <= most; ++lag) {
        const double ratio = SignalToNoiseDb(part, decoded, lag);
        if (ratio > highest) {
            highest = ratio;
            closest = lag;
        }
    }
    return closest;
}

double BandDb(const Sound& sound, double lowHz, double highHz) {
    double power = 0;
    qint64 bins = 0;
    const auto window = static_cast<qint64>(windowLength);
    for (qint64 start = 0; start + window <= sound.Frames(); start += window) {
        std::vector<std::complex<double>> values(windowLength);
        for (size_t at = 0; at < windowLength; ++at) {
            const double hann = 0.5 - 0.5 * std::cos(twoPi * static_cast<double>(at) / windowLength);
            const auto index = (static_cast<size_t>(start) + at) * static_cast<size_t>(sound.channels);
            values[at] = hann * static_cast<double>(sound.samples[index]);
        }
        Transform(values);
        for (size_t bin = 1; bin < windowLength / 2; ++bin) {
            const double hertz = static_cast<double>(bin) * sound.rateHz / windowLength;
            if (hertz >= lowHz && hertz < highHz) {
                power += std::norm(values[bin]) / (windowLength * windowLength);
                ++bins;
            }
        }
    }
    return 10 * std::log10(std::max(power / static_cast<double>(std::max<qint64>(bins, 1)), 1e-20));
}

} // namespace kestrune
