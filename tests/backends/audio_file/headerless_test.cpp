// Data without a header, with the usual formats and with formats that were set.
#include "backends/audio_file/codec_file.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

#include <spandsp.h>

#include <cmath>

namespace kestrune {

namespace {

class Headerless : public testing::Test {
protected:
    static constexpr int frames = 40000;

    QByteArray Decode(const QString& path) {
        EXPECT_EQ(file_.OpenRead(path), Outcome::Ok);
        const qint64 declared = file_.GetLengthBytes();
        QByteArray samples = ReadToEnd(file_);
        EXPECT_EQ(declared, samples.size());
        ExpectExactSeeks(file_, samples, 50);
        return samples;
    }

    // Coded by sox from mono speech of the rate, as `name`.
    QString CodeBySox(const QString& name, const QString& type, int rateHz) {
        const QString in =
            folder_.Write(QStringLiteral("in.wav"), WaveFile({1, 1, quint32(rateHz), 16}, speech_));
        RunTool(QStringLiteral("sox"),
                {QStringLiteral("-D"), in, QStringLiteral("-t"), type, folder_.Path(name)});
        return folder_.Path(name);
    }

    QByteArray DecodeBySox(const QString& path, const QString& type, int rateHz) {
        QByteArray judged;
        RunTool(QStringLiteral("sox"),
                {QStringLiteral("-D"), QStringLiteral("-t"), type, QStringLiteral("-r"),
                 QString::number(rateHz), path, QStringLiteral("-t"), QStringLiteral("raw"),
                 QStringLiteral("-e"), QStringLiteral("signed"), QStringLiteral("-b"), QStringLiteral("16"),
                 QStringLiteral("-")},
                &judged);
        return judged;
    }

    double SignalToNoiseDb(const QByteArray& decoded) const {
        double signal = 0;
        double noise = 0;
        const auto* const original = reinterpret_cast<const qint16*>(speech_.constData());
        const auto* const result = reinterpret_cast<const qint16*>(decoded.constData());
        for (int at = 0; at < frames; ++at) {
            const double error = original[at] - result[at];
            signal += static_cast<double>(original[at]) * original[at];
            noise += error * error;
        }
        return 10.0 * std::log10(signal / noise);
    }

    QByteArray CodeG726(int bits) const {
        g726_state_t* const coder = g726_init(nullptr, 8000 * bits, G726_ENCODING_LINEAR, G726_PACKING_LEFT);
        QByteArray coded(frames, '\0');
        const int bytes = g726_encode(coder, reinterpret_cast<uint8_t*>(coded.data()),
                                      reinterpret_cast<const int16_t*>(speech_.constData()), frames);
        g726_free(coder);
        coded.resize(bytes);
        return coded;
    }

    TestFolder folder_;
    CodecFile file_;
    QByteArray speech_ = BytesOf(NoiseAndTones(frames, 1, 8000, 31));
};

} // namespace

TEST_F(Headerless, RawIs16BitStereoUnlessSet) {
    for (const char* name : {"a.raw", "a.pcm", "A.RAW"}) {
        const QString path = folder_.Write(QLatin1String(name), speech_);
        EXPECT_TRUE(Decode(path) == speech_);
        EXPECT_EQ(file_.GetFormatText(), QStringLiteral("PCM, 44,100 Hz, 1411 kbps, Stereo"));
    }
    EXPECT_EQ(file_.SetFormatRaw(RawPcm, 11025, 1, 16), Outcome::Ok);
    EXPECT_TRUE(Decode(folder_.Path(QStringLiteral("a.raw"))) == speech_);
    EXPECT_EQ(file_.GetWaveFormat(), 11025);
    EXPECT_EQ(file_.GetChannels(), 1);
}

TEST_F(Headerless, RawCompandedEqualsTheJudge) {
    const QString path = folder_.Write(QStringLiteral("a.raw"), speech_);
    EXPECT_EQ(file_.SetFormatRaw(RawALaw, 8000, 1, 16), Outcome::Ok);
    EXPECT_TRUE(Decode(path) == DecodeBySox(path, QStringLiteral("al"), 8000));
    EXPECT_EQ(file_.SetFormatRaw(RawMuLaw, 8000, 1, 16), Outcome::Ok);
    EXPECT_TRUE(Decode(path) == DecodeBySox(path, QStringLiteral("ul"), 8000));
}

TEST_F(Headerless, VoxEqualsTheJudge) {
    const QString path = CodeBySox(QStringLiteral("a.vox"), QStringLiteral("vox"), 8000);
    EXPECT_TRUE(Decode(path) == DecodeBySox(path, QStringLiteral("vox"), 8000));
    EXPECT_EQ(file_.GetFormatText(), QStringLiteral("Dialogic VOX, 8,000 Hz, 32 kbps, Mono"));
    EXPECT_EQ(file_.SetFormatVOX(6000), Outcome::Ok);
    Decode(path);
    EXPECT_EQ(file_.GetWaveFormat(), 6000);
}

TEST_F(Headerless, GsmEqualsTheJudge) {
    const QString path = CodeBySox(QStringLiteral("a.gsm"), QStringLiteral("gsm"), 8000);
    EXPECT_TRUE(Decode(path) == DecodeBySox(path, QStringLiteral("gsm"), 8000));
    EXPECT_EQ(file_.SetFormatGSM(11025), Outcome::Ok);
    Decode(path);
    EXPECT_EQ(file_.GetWaveFormat(), 11025);
}

TEST_F(Headerless, AdpcmEqualsTheJudge) {
    const QString path = CodeBySox(QStringLiteral("a.adpcm"), QStringLiteral("ima"), 8000);
    EXPECT_TRUE(Decode(path) == DecodeBySox(path, QStringLiteral("ima"), 8000));
    EXPECT_EQ(file_.SetFormatADPCM(22050, 2), Outcome::Ok);
    Decode(path);
    EXPECT_EQ(file_.GetWaveFormat(), 22050);
    EXPECT_EQ(file_.GetChannels(), 1);
}

TEST_F(Headerless, G726OfEveryDepthComesBack) {
    // Quantising noise at 2 to 5 bits; a wrong packing or coder would give less than nothing.
    const double leastDb[] = {9.0, 14.0, 19.0, 23.0};
    double before = 0;
    for (int bits = 2; bits <= 5; ++bits) {
        const QString path = folder_.Write(QStringLiteral("a.g726"), CodeG726(bits));
        EXPECT_EQ(file_.SetFormatG726(8000, bits), Outcome::Ok);
        const QByteArray decoded = Decode(path);
        ASSERT_GE(decoded.size(), speech_.size());
        const double db = SignalToNoiseDb(decoded);
        EXPECT_GT(db, leastDb[bits - 2]) << bits;
        EXPECT_GT(db, before) << bits;
        before = db;
    }
}

TEST_F(Headerless, G726EqualsTheJudgeAtFourBits) {
    const QString path = folder_.Write(QStringLiteral("a.g726"), CodeG726(4));
    QByteArray judged;
    ASSERT_TRUE(
        RunTool(QStringLiteral("ffmpeg"),
                {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-f"), QStringLiteral("g726"),
                 QStringLiteral("-code_size"), QStringLiteral("4"), QStringLiteral("-i"), path,
                 QStringLiteral("-f"), QStringLiteral("s16le"), QStringLiteral("-")},
                &judged));
    const QByteArray decoded = Decode(path);
    EXPECT_EQ(decoded.size(), judged.size());
    // The judge leaves out the standard's last rounding, so the two differ by some steps.
    EXPECT_GT(SignalToNoiseDb(decoded), SignalToNoiseDb(judged) - 1.0);
}

TEST_F(Headerless, G721AndG723HaveDepthsOfTheirOwn) {
    EXPECT_GT(SignalToNoiseDb(Decode(folder_.Write(QStringLiteral("a.g721"), CodeG726(4)))), 19.0);
    EXPECT_GT(SignalToNoiseDb(Decode(folder_.Write(QStringLiteral("a.g723"), CodeG726(5)))), 23.0);
    EXPECT_EQ(file_.SetFormatG723(8000, 3), Outcome::Ok);
    EXPECT_GT(SignalToNoiseDb(Decode(folder_.Write(QStringLiteral("a.g723"), CodeG726(3)))), 14.0);
    EXPECT_EQ(file_.SetFormatG721(16000), Outcome::Ok);
    Decode(folder_.Path(QStringLiteral("a.g721")));
    EXPECT_EQ(file_.GetWaveFormat(), 16000);
}

TEST_F(Headerless, SwappedArgumentsOfG726AreKeptAsGivenAndCannotBeRead) {
    const QString path = folder_.Write(QStringLiteral("a.g726"), CodeG726(4));
    EXPECT_EQ(file_.SetFormatG726(3, 4), Outcome::Ok);
    EXPECT_FALSE(file_.GetFormatText().isEmpty());
    EXPECT_EQ(file_.OpenRead(path), Outcome::NotSupported);
    EXPECT_LT(file_.GetFormatId(), 0);
}

TEST_F(Headerless, SetFormatOfOneKindLeavesTheOthers) {
    EXPECT_EQ(file_.SetFormatVOX(6000), Outcome::Ok);
    EXPECT_EQ(file_.SetFormatMP3(44100, 128, 2), Outcome::Ok);
    ASSERT_EQ(file_.OpenRead(folder_.Write(QStringLiteral("a.raw"), speech_)), Outcome::Ok);
    EXPECT_EQ(file_.GetWaveFormat(), 44100);
    ASSERT_EQ(file_.OpenRead(folder_.Write(QStringLiteral("a.vox"), speech_)), Outcome::Ok);
    EXPECT_EQ(file_.GetWaveFormat(), 6000);
}

} // namespace kestrune
