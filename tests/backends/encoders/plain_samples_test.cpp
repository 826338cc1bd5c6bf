// Samples that are stored one by one.
#include "backends/encoders/encoder_support.h"
#include "backends/encoders/pcm_encoder.h"
#include "support/chord.h"
#include "support/judges.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

#include <QBuffer>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <numeric>

namespace kestrune {

namespace {

class PlainSamples : public testing::Test {
protected:
    QString Written(const QString& name, const OutputFormat& format, const std::vector<qint16>& samples) {
        return folder_.Write(name, Encoded(*MakePcmEncoder(format), samples, 0));
    }

    // The bytes that ffmpeg makes of the file in another sample format.
    QByteArray As(const QString& file, const char* sampleFormat) {
        QByteArray bytes;
        RunTool(QStringLiteral("ffmpeg"),
                {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-i"), file,
                 QStringLiteral("-f"), QLatin1String(sampleFormat), QStringLiteral("-")},
                &bytes);
        return bytes;
    }

    TestFolder folder_;
    std::vector<qint16> sound_ = NoiseAndTones(20001, 2, 44100, 3);
};

std::vector<qint16> AllLevels() {
    std::vector<qint16> levels(65536);
    std::iota(levels.begin(), levels.end(), std::numeric_limits<qint16>::min());
    return levels;
}

} // namespace

TEST_F(PlainSamples, SixteenBitsPassUntouched) {
    const QString file = Written(QStringLiteral("a.wav"), FormatFor(FormatKind::Pcm, 44100, 2, 16), sound_);
    EXPECT_EQ(ProbedBy(file), QStringLiteral("pcm_s16le,44100,2"));
    EXPECT_EQ(DecodedByFfmpeg(file), sound_);
    EXPECT_EQ(DecodedBySox(file), sound_);
}

TEST_F(PlainSamples, RawIsTheSamplesAlone) {
    const QString file = Written(QStringLiteral("a.raw"), RawFormat(RawPcm, 44100, 2, 16), sound_);
    EXPECT_TRUE(ReadWholeFile(file) == BytesOf(sound_));
}

TEST_F(PlainSamples, MoreBitsHoldTheSampleAbove) {
    struct Deep {
        int bits;
        const char* codec;
    };
    for (const Deep& deep : {Deep{24, "pcm_s24le,48000,2"}, Deep{32, "pcm_s32le,48000,2"}}) {
        SCOPED_TRACE(deep.codec);
        const QString file =
            Written(QStringLiteral("a.wav"), FormatFor(FormatKind::Pcm, 48000, 2, deep.bits), sound_);
        EXPECT_EQ(ProbedBy(file), QLatin1String(deep.codec));
        const QByteArray wide = As(file, "s32le");
        ASSERT_EQ(wide.size(), static_cast<qsizetype>(sound_.size() * 4));
        int wrong = 0;
        for (size_t at = 0; at < sound_.size(); ++at) {
            qint32 value = 0;
            std::memcpy(&value, wide.constData() + at * 4, sizeof value);
            wrong += value == sound_[at] * 65536 ? 0 : 1;
        }
        EXPECT_EQ(wrong, 0);
    }
}

TEST_F(PlainSamples, FloatsBeyondFullScaleAreClippedToIt) {
    for (const int bits : {24, 32}) {
        const auto encoder = MakePcmEncoder(FormatFor(FormatKind::Raw, 8000, 1, bits));
        QBuffer out;
        ASSERT_TRUE(out.open(QIODevice::ReadWrite));
        ASSERT_EQ(encoder->Begin(out), Outcome::Ok);
        const std::vector<float> loud = {1.5F, -1.5F, std::numeric_limits<float>::quiet_NaN(), 1.0F};
        ASSERT_EQ(encoder->WriteFloats(loud.data(), 4), Outcome::Ok);
        ASSERT_EQ(encoder->Finish(), Outcome::Ok);
        const QByteArray most = bits == 24 ? QByteArray("\xFF\xFF\x7F") : QByteArray("\xFF\xFF\xFF\x7F");
        const QByteArray least(QByteArray(bits / 8 - 1, '\0') + '\x80');
        EXPECT_EQ(out.data().toHex(), (most + least + QByteArray(bits / 8, '\0') + most).toHex());
    }
}

TEST_F(PlainSamples, FloatsAreRoundedToTheNearestStep) {
    const auto encoder = MakePcmEncoder(FormatFor(FormatKind::Raw, 8000, 1, 24));
    QBuffer out;
    ASSERT_TRUE(out.open(QIODevice::ReadWrite));
    ASSERT_EQ(encoder->Begin(out), Outcome::Ok);
    constexpr float step = 1.0F / 8388608.0F;
    const std::vector<float> between = {0.7F * step, -0.7F * step, 2.2F * step};
    ASSERT_EQ(encoder->WriteFloats(between.data(), 3), Outcome::Ok);
    ASSERT_EQ(encoder->Finish(), Outcome::Ok);
    EXPECT_EQ(out.data().toHex(), QByteArray("010000ffffff020000"));
}

TEST_F(PlainSamples, EightBitsKeepWhatIsOfTheirScale) {
    std::vector<qint16> steps;
    for (int level = -128; level < 128; ++level) {
        steps.push_back(static_cast<qint16>(level * 256));
    }
    const QString file = Written(QStringLiteral("a.wav"), FormatFor(FormatKind::Pcm, 8000, 1, 8), steps);
    EXPECT_EQ(ProbedBy(file), QStringLiteral("pcm_u8,8000,1"));
    EXPECT_EQ(DecodedByFfmpeg(file), steps);
}

TEST_F(PlainSamples, EightBitsAreDitheredWithoutABias) {
    for (const qint16 level : {qint16{100}, qint16{-77}, qint16{20001}}) {
        const std::vector<qint16> still(40000, level);
        const QString file = Written(QStringLiteral("a.wav"), FormatFor(FormatKind::Pcm, 8000, 1, 8), still);
        const std::vector<qint16> decoded = DecodedByFfmpeg(file);
        ASSERT_EQ(decoded.size(), still.size());
        const double mean = std::accumulate(decoded.begin(), decoded.end(), 0.0) / decoded.size();
        // The mean of 40,000 values of a triangle two steps wide strays by less than a hundredth of a step.
        EXPECT_NEAR(mean, level, 8.0);
    }
}

TEST_F(PlainSamples, OddLengthsArePaddedToAnEvenFile) {
    const QByteArray bytes = Encoded(*MakePcmEncoder(FormatFor(FormatKind::Pcm, 8000, 1, 8)), {256, 512, 0});
    EXPECT_EQ(bytes.size(), 44 + 3 + 1);
    EXPECT_EQ(bytes.mid(4, 4).toHex(), QByteArray("28000000"));
    EXPECT_EQ(bytes.mid(40, 8).toHex(), QByteArray("0300000081828000"));
}

TEST_F(PlainSamples, CompandedIsTheNearestCode) {
    struct Law {
        qint32 type;
        const char* soxType;
    };
    for (const Law& law : {Law{RawALaw, "al"}, Law{RawMuLaw, "ul"}}) {
        SCOPED_TRACE(law.soxType);
        const QStringList as = {QStringLiteral("-t"),   QLatin1String(law.soxType), QStringLiteral("-r"),
                                QStringLiteral("8000"), QStringLiteral("-c"),       QStringLiteral("1")};
        QByteArray all(256, '\0');
        std::iota(all.begin(), all.end(), '\0');
        std::vector<qint16> values = DecodedBySox(folder_.Write(QStringLiteral("all"), all), as);
        std::sort(values.begin(), values.end());
        const std::vector<qint16> levels = AllLevels();
        const std::vector<qint16> decoded =
            DecodedBySox(Written(QStringLiteral("a.raw"), RawFormat(law.type, 8000, 1, 8), levels), as);
        ASSERT_EQ(decoded.size(), levels.size());
        int wrong = 0;
        for (size_t at = 0; at < levels.size(); ++at) {
            int least = std::numeric_limits<int>::max();
            for (const qint16 value : values) {
                least = std::min(least, std::abs(value - levels[at]));
            }
            wrong += std::abs(decoded[at] - levels[at]) == least ? 0 : 1;
        }
        EXPECT_EQ(wrong, 0);
    }
}

} // namespace kestrune
