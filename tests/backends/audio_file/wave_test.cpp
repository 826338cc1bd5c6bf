#include "backends/audio_file/codec_file.h"
#include "backends/formats/dither.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QtEndian>

#include <cmath>
#include <cstring>
#include <random>

namespace kestrune {

namespace {

constexpr int frames = 20011;

class WaveReading : public testing::Test {
protected:
    TestFolder folder_;
    CodecFile file_;

    QByteArray Decode(const QByteArray& content) {
        const QString path = folder_.Write(QStringLiteral("a.wav"), content);
        EXPECT_EQ(file_.OpenRead(path), Outcome::Ok);
        const qint64 declared = file_.GetLengthBytes();
        QByteArray samples = ReadToEnd(file_);
        EXPECT_EQ(declared, samples.size());
        return samples;
    }
};

template <typename Sample>
QByteArray RandomSamples(int count, Sample low, Sample high) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> value(low, high);
    std::vector<Sample> samples(static_cast<size_t>(count));
    for (Sample& sample : samples) {
        sample = static_cast<Sample>(value(random));
    }
    return {reinterpret_cast<const char*>(samples.data()),
            static_cast<qsizetype>(samples.size() * sizeof(Sample))};
}

// Mean and variance of the rounding error, in steps, of samples that were `exact` before.
struct ErrorFigures {
    double mean = 0;
    double variance = 0;
    double largest = 0;
};
ErrorFigures ErrorsOf(const QByteArray& samples, const std::vector<double>& exact) {
    ErrorFigures figures;
    for (size_t at = 0; at < exact.size(); ++at) {
        const double error = qFromLittleEndian<qint16>(samples.constData() + at * 2) - exact[at];
        figures.mean += error;
        figures.variance += error * error;
        figures.largest = std::max(figures.largest, std::abs(error));
    }
    figures.mean /= static_cast<double>(exact.size());
    figures.variance /= static_cast<double>(exact.size());
    return figures;
}

// Triangular noise plus rounding: no bias, a variance of 1/6 + 1/12, never beyond 1.5 steps.
void ExpectTriangularDither(const QByteArray& samples, const std::vector<double>& exact) {
    ASSERT_EQ(static_cast<size_t>(samples.size()), exact.size() * 2);
    const ErrorFigures figures = ErrorsOf(samples, exact);
    EXPECT_NEAR(figures.mean, 0.0, 0.01);
    EXPECT_NEAR(figures.variance, 0.25, 0.01);
    EXPECT_LE(figures.largest, 1.5);
}

} // namespace

TEST_F(WaveReading, SixteenBitSamplesPassUntouched) {
    for (const quint16 channels : {quint16(1), quint16(2)}) {
        const QByteArray pcm = RandomSamples<qint16>(frames * channels, -32768, 32767);
        EXPECT_TRUE(Decode(WaveFile({1, channels, 44100, 16}, pcm)) == pcm);
        EXPECT_EQ(file_.GetChannels(), channels);
        EXPECT_EQ(file_.GetWaveFormat(), 44100);
        ExpectExactSeeks(file_, pcm, 50);
    }
}

TEST_F(WaveReading, EightBitSamplesAreWidened) {
    QByteArray data;
    QByteArray expected;
    for (int value = 0; value < 256; ++value) {
        data.append(static_cast<char>(value));
        const qint16 wide = qToLittleEndian(static_cast<qint16>((value - 128) * 256));
        expected.append(reinterpret_cast<const char*>(&wide), sizeof wide);
    }
    EXPECT_EQ(Decode(WaveFile({1, 1, 8000, 8}, data)), expected);
}

TEST_F(WaveReading, FloatSamplesAreDithered) {
    const QByteArray data = RandomSamples<float>(frames * 2, -0.9F, 0.9F);
    std::vector<double> exact;
    for (int at = 0; at < frames * 2; ++at) {
        float sample = 0;
        std::memcpy(&sample, data.constData() + at * 4, sizeof sample);
        exact.push_back(static_cast<double>(sample) * 32768.0);
    }
    const QByteArray samples = Decode(WaveFile({3, 2, 44100, 32}, data));
    ExpectTriangularDither(samples, exact);
    ExpectExactSeeks(file_, samples, 50);
}

TEST_F(WaveReading, TwentyFourBitSamplesAreDithered) {
    QByteArray data = RandomSamples<quint8>(frames * 3, 0, 255);
    std::vector<double> exact;
    for (int at = 0; at < frames; ++at) {
        // Keep clear of the ends, where noise is clipped.
        data[at * 3 + 2] = static_cast<char>(static_cast<qint8>(data[at * 3 + 2]) / 2);
        const int value = static_cast<uchar>(data[at * 3]) | static_cast<uchar>(data[at * 3 + 1]) << 8 |
                          static_cast<qint8>(data[at * 3 + 2]) * 65536;
        exact.push_back(value / 256.0);
    }
    const QByteArray samples = Decode(WaveFile({1, 1, 96000, 24}, data));
    ExpectTriangularDither(samples, exact);
    ExpectExactSeeks(file_, samples, 50);
}

TEST_F(WaveReading, DoubleAnd32BitSamplesAreDithered) {
    const QByteArray doubles = RandomSamples<double>(frames, -0.9, 0.9);
    std::vector<double> exact;
    for (int at = 0; at < frames; ++at) {
        double sample = 0;
        std::memcpy(&sample, doubles.constData() + at * 8, sizeof sample);
        exact.push_back(sample * 32768.0);
    }
    ExpectTriangularDither(Decode(WaveFile({3, 1, 44100, 64}, doubles)), exact);

    const QByteArray wide = RandomSamples<qint32>(frames, -2000000000, 2000000000);
    exact.clear();
    for (int at = 0; at < frames; ++at) {
        exact.push_back(qFromLittleEndian<qint32>(wide.constData() + at * 4) / 65536.0);
    }
    ExpectTriangularDither(Decode(WaveFile({1, 1, 44100, 32}, wide)), exact);
}

TEST_F(WaveReading, FloatsBeyondFullScaleAreClippedAndOddOnesAreTamed) {
    const std::vector<float> odd = {2.0F,     -2.0F,     1e30F, -1e30F, std::nanf(""),
                                    INFINITY, -INFINITY, 1.0F,  -1.5F};
    const QByteArray data(reinterpret_cast<const char*>(odd.data()),
                          static_cast<qsizetype>(odd.size() * sizeof(float)));
    const QByteArray samples = Decode(WaveFile({3, 1, 44100, 32}, data));
    const std::vector<qint16> expected = {32767, -32768, 32767, -32768, 0, 32767, -32768, 32767, -32768};
    EXPECT_LE(Compare(samples, BytesOf(expected)).largest, 1);
}

TEST_F(WaveReading, CompandedSamplesEqualTheJudges) {
    QByteArray data;
    for (int value = 0; value < 256; ++value) {
        data.append(static_cast<char>(value));
    }
    for (const quint16 tag : {quint16(6), quint16(7)}) {
        const QByteArray samples = Decode(WaveFile({tag, 1, 8000, 8}, data));
        QByteArray judged;
        ASSERT_TRUE(RunTool(QStringLiteral("sox"),
                            {folder_.Path(QStringLiteral("a.wav")), QStringLiteral("-t"),
                             QStringLiteral("raw"), QStringLiteral("-e"), QStringLiteral("signed"),
                             QStringLiteral("-b"), QStringLiteral("16"), QStringLiteral("-")},
                            &judged));
        EXPECT_EQ(samples, judged) << tag;
    }
}

TEST_F(WaveReading, SurroundIsMixedToStereoAsTheJudgeDoes) {
    const QByteArray data = BytesOf(NoiseAndTones(frames, 6, 48000, 5));
    const QByteArray samples = Decode(WaveFile({1, 6, 48000, 16}, data));
    EXPECT_EQ(file_.GetChannels(), 2);
    QByteArray judged;
    ASSERT_TRUE(RunTool(QStringLiteral("ffmpeg"),
                        {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-i"),
                         folder_.Path(QStringLiteral("a.wav")), QStringLiteral("-ac"), QStringLiteral("2"),
                         QStringLiteral("-f"), QStringLiteral("s16le"), QStringLiteral("-")},
                        &judged));
    const Comparison comparison = Compare(samples, judged);
    EXPECT_EQ(comparison.ourSamples, comparison.judgeSamples);
    EXPECT_LE(comparison.largest, 2);
    ExpectExactSeeks(file_, samples, 50);
}

TEST_F(WaveReading, ChunksBeforeAndBehindTheDataAreNoAudio) {
    const QByteArray pcm = RandomSamples<qint16>(1000, -32768, 32767);
    QByteArray content = WaveFile({1, 1, 44100, 16}, pcm);
    content.insert(12, QByteArray("LIST\x05\0\0\0abcde\0", 14));
    content.append(QByteArray("cue \x04\0\0\0\0\0\0\0", 12));
    EXPECT_EQ(Decode(content), pcm);
}

TEST_F(WaveReading, WaveUnderAnotherNameIsKnownByItsContent) {
    const QByteArray pcm = RandomSamples<qint16>(1000, -32768, 32767);
    for (const char* name :
         {"a.mp3", "a.ogg", "a.raw", "a.vox", "a.gsm", "a.g726", "a.adpcm", "a", "a.mpc"}) {
        const QString path = folder_.Write(QLatin1String(name), WaveFile({1, 2, 22050, 16}, pcm));
        ASSERT_EQ(file_.OpenRead(path), Outcome::Ok) << name;
        EXPECT_EQ(ReadToEnd(file_), pcm) << name;
    }
}

TEST_F(WaveReading, CutOrUnclosedFilesGiveWhatIsThere) {
    const QByteArray pcm = RandomSamples<qint16>(1000, -32768, 32767);
    const WaveShape shape{1, 2, 44100, 16};
    EXPECT_EQ(Decode(WaveHead(shape, 1000000) + pcm), pcm);
    EXPECT_EQ(Decode(WaveHead(shape, 0xFFFFFFFF) + pcm), pcm);
    EXPECT_EQ(Decode(WaveHead(shape, 0) + pcm), pcm);
    EXPECT_EQ(Decode(WaveHead(shape, 2000) + pcm.left(1003)), pcm.left(1000));
}

TEST_F(WaveReading, EmptyDataIsAnOpenFileWithoutSamples) {
    EXPECT_TRUE(Decode(WaveHead({1, 2, 44100, 16}, 0)).isEmpty());
    EXPECT_GE(file_.GetFormatId(), 0);
}

TEST(Dither, DependsOnTheIndexAloneAndIsTriangular) {
    double sum = 0;
    double squares = 0;
    constexpr int count = 200000;
    for (quint64 index = 0; index < count; ++index) {
        const double noise = TriangularNoise(index);
        EXPECT_EQ(noise, TriangularNoise(index));
        ASSERT_TRUE(noise > -1.0 && noise < 1.0);
        sum += noise;
        squares += noise * noise;
    }
    EXPECT_NEAR(sum / count, 0.0, 0.005);
    EXPECT_NEAR(squares / count, 1.0 / 6.0, 0.005);
}

} // namespace kestrune
