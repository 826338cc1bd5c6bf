// Writing in the format of a chosen WAVE file: made by other programs, and read back by them.
#include "backends/encoders/encoder_support.h"
#include "backends/encoders/wave_template.h"
#include "backends/formats/wave_header.h"
#include "support/chord.h"
#include "support/judges.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QFile>
#include <QtEndian>

#include <random>

namespace kestrune {

namespace {

class WaveTemplate : public testing::Test {
protected:
    Outcome Read(const QString& path) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        format_ = {};
        return ReadTemplateFormat(file, format_);
    }

    QString MadeByFfmpeg(const QStringList& coding) {
        const QString path = folder_.Path(QStringLiteral("template.wav"));
        RunTool(QStringLiteral("ffmpeg"),
                QStringList{QStringLiteral("-y"), QStringLiteral("-v"), QStringLiteral("error"),
                            QStringLiteral("-f"), QStringLiteral("lavfi"), QStringLiteral("-i"),
                            QStringLiteral("sine=frequency=440:duration=0.2")} +
                    coding + QStringList{path});
        return path;
    }

    // Writes a sound in the format of the template, and gives the judge's words of both.
    void ExpectTheSameCoding(const QString& made, double leastDb) {
        ASSERT_EQ(Read(made), Outcome::Ok);
        EXPECT_EQ(format_.kind, FormatKind::Template);
        const std::vector<qint16> sound = Chord(23).Samples(format_.rateHz, format_.channels, format_.rateHz);
        const QString written =
            folder_.Write(QStringLiteral("written.wav"), Encoded(*MakeTemplateEncoder(format_), sound, 0));
        EXPECT_EQ(ProbedBy(written), ProbedBy(made));
        const std::vector<qint16> decoded = DecodedByFfmpeg(written);
        EXPECT_GE(decoded.size(), sound.size());
        const Likeness likeness = Compared(sound, decoded, format_.channels, 40);
        EXPECT_GT(likeness.signalToNoiseDb, leastDb);
    }

    TestFolder folder_;
    OutputFormat format_;
};

QStringList Coding(const char* codec, int rateHz, int channels) {
    return {QStringLiteral("-c:a"),  QLatin1String(codec),  QStringLiteral("-ar"),
            QString::number(rateHz), QStringLiteral("-ac"), QString::number(channels)};
}

} // namespace

TEST_F(WaveTemplate, EveryCodingOfOurs) {
    struct Member {
        const char* codec;
        int rateHz;
        int channels;
        double leastDb;
    };
    for (const Member& member :
         {Member{"pcm_u8", 11025, 1, 25.0}, Member{"pcm_s16le", 44100, 2, 150.0},
          Member{"pcm_s24le", 48000, 2, 150.0}, Member{"pcm_s32le", 96000, 1, 150.0},
          Member{"pcm_f32le", 44100, 2, 150.0}, Member{"pcm_f64le", 44100, 1, 150.0},
          Member{"pcm_alaw", 8000, 1, 30.0}, Member{"pcm_mulaw", 44100, 2, 30.0},
          Member{"adpcm_ima_wav", 22050, 2, 20.0}, Member{"adpcm_ms", 44100, 1, 20.0}}) {
        SCOPED_TRACE(member.codec);
        ExpectTheSameCoding(MadeByFfmpeg(Coding(member.codec, member.rateHz, member.channels)),
                            member.leastDb);
    }
}

TEST_F(WaveTemplate, BlockSizeOfAdpcmIsTheTemplates) {
    for (const char* blockBytes : {"256", "4096"}) {
        SCOPED_TRACE(blockBytes);
        ExpectTheSameCoding(
            MadeByFfmpeg(Coding("adpcm_ima_wav", 44100, 2) +
                         QStringList{QStringLiteral("-block_size"), QLatin1String(blockBytes)}),
            20.0);
        QFile written(folder_.Path(QStringLiteral("written.wav")));
        ASSERT_TRUE(written.open(QIODevice::ReadOnly));
        EXPECT_EQ(ReadWaveHeader(written)->blockBytes, QByteArray(blockBytes).toInt());
    }
}

TEST_F(WaveTemplate, GsmOfSox) {
    const QString plain = MadeByFfmpeg(Coding("pcm_s16le", 8000, 1));
    const QString made = folder_.Path(QStringLiteral("gsm.wav"));
    ASSERT_TRUE(RunTool(QStringLiteral("sox"), {plain, QStringLiteral("-e"), QStringLiteral("gsm"), made}));
    ExpectTheSameCoding(made, 5.0);
}

TEST_F(WaveTemplate, MpegLayerThree) {
    // The reader of ffmpeg counts the delay of the coding as sound.
    constexpr int mostFramesAround = 3 * 1152;
    for (const int rateHz : {44100, 22050}) {
        SCOPED_TRACE(rateHz);
        const QString made = MadeByFfmpeg(Coding("libmp3lame", rateHz, 2) +
                                          QStringList{QStringLiteral("-b:a"), QStringLiteral("96k")});
        ASSERT_EQ(Read(made), Outcome::Ok);
        const std::vector<qint16> sound = Chord(23).Samples(2 * rateHz, 2, rateHz);
        const QByteArray bytes = Encoded(*MakeTemplateEncoder(format_), sound, 0);
        EXPECT_EQ(qFromLittleEndian<quint32>(bytes.constData() + bytes.indexOf("fact") + 8),
                  static_cast<quint32>(2 * rateHz));
        const QString written = folder_.Write(QStringLiteral("written.wav"), bytes);
        EXPECT_EQ(ProbedBy(written), ProbedBy(made));
        const std::vector<qint16> decoded = DecodedByFfmpeg(written);
        EXPECT_GE(decoded.size(), sound.size());
        EXPECT_LE(decoded.size(), sound.size() + 2 * mostFramesAround);
        const Likeness likeness = Compared(sound, decoded, 2, 1200);
        EXPECT_EQ(likeness.delayFrames, 1105);
        EXPECT_GT(likeness.signalToNoiseDb, 15.0);
    }
}

// A header may tell any byte rate; the encoder keeps to one that there is, and the new header tells that.
TEST_F(WaveTemplate, MpegLayerThreeOfAnImpossibleRate) {
    QByteArray wave = WaveFile({WaveTagMp3, 2, 44100, 16}, QByteArray(960, '\0'));
    wave.replace(28, 4, QByteArray("\xFF\xFF\xFF\x7F"));
    ASSERT_EQ(Read(folder_.Write(QStringLiteral("a.wav"), wave)), Outcome::Ok);
    const std::vector<qint16> sound = Chord(23).Samples(44100, 2, 44100);
    const QByteArray bytes = Encoded(*MakeTemplateEncoder(format_), sound, 0);
    constexpr int highestBytesPerSecond = 320000 / 8;
    EXPECT_EQ(qFromLittleEndian<qint32>(bytes.constData() + 28), highestBytesPerSecond);
    EXPECT_NEAR(bytes.size(), highestBytesPerSecond, highestBytesPerSecond / 8.0);
    EXPECT_EQ(ProbedBy(folder_.Write(QStringLiteral("written.wav"), bytes)), QStringLiteral("mp3,44100,2"));
    wave.replace(28, 4, QByteArray(4, '\0'));
    EXPECT_EQ(Read(folder_.Write(QStringLiteral("a.wav"), wave)), Outcome::NotSupported);
}

TEST_F(WaveTemplate, TrueSpeech) {
    const QString made = folder_.Write(QStringLiteral("template.wav"), TrueSpeechFile(10, 3));
    ASSERT_EQ(Read(made), Outcome::Ok);
    const std::vector<qint16> sound = Chord(23).Samples(16000, 1, 8000);
    const QString written =
        folder_.Write(QStringLiteral("written.wav"), Encoded(*MakeTemplateEncoder(format_), sound, 0));
    EXPECT_EQ(ProbedBy(written), ProbedBy(made));
    EXPECT_GT(Compared(sound, DecodedByFfmpeg(written), 1, 480).signalToNoiseDb, 5.0);
}

TEST_F(WaveTemplate, FloatsKeepWhatIsBeyondFullScale) {
    ASSERT_EQ(Read(MadeByFfmpeg(Coding("pcm_f32le", 44100, 1))), Outcome::Ok);
    const auto encoder = MakeTemplateEncoder(format_);
    ASSERT_TRUE(encoder->Input().takesFloats);
    QBuffer out;
    ASSERT_TRUE(out.open(QIODevice::ReadWrite));
    ASSERT_EQ(encoder->Begin(out), Outcome::Ok);
    const std::vector<float> loud = {1.5F, -2.0F};
    ASSERT_EQ(encoder->WriteFloats(loud.data(), 2), Outcome::Ok);
    ASSERT_EQ(encoder->Finish(), Outcome::Ok);
    EXPECT_EQ(out.data().last(8).toHex(), QByteArray("0000c03f000000c0"));
}

// Whatever a damaged header says, its format is refused or can be written in.
TEST_F(WaveTemplate, DamagedHeadersAreRefusedOrWork) {
    std::mt19937 random(77);
    const std::vector<qint16> sound = Chord(5).Samples(3000, 2, 44100);
    const std::vector<float> floats(sound.size(), 0.25F);
    int written = 0;
    for (const quint16 tag : {WaveTagPcm, WaveTagMsAdpcm, WaveTagFloat, WaveTagALaw, WaveTagImaAdpcm,
                              WaveTagTrueSpeech, WaveTagGsm610, WaveTagMp3}) {
        for (int round = 0; round < 150; ++round) {
            QByteArray wave = WaveFile({tag, 1, 8000, 16}, QByteArray(960, '\0'));
            for (int change = 0; change < 2; ++change) {
                // Channels, rate, byte rate, block size and bits.
                wave[22 + static_cast<qsizetype>(random() % 14)] = static_cast<char>(random());
            }
            QBuffer file(&wave);
            ASSERT_TRUE(file.open(QIODevice::ReadOnly));
            if (ReadTemplateFormat(file, format_) != Outcome::Ok) {
                continue;
            }
            const auto encoder = MakeTemplateEncoder(format_);
            QBuffer out;
            ASSERT_TRUE(out.open(QIODevice::ReadWrite));
            if (encoder->Begin(out) != Outcome::Ok) {
                EXPECT_TRUE(out.data().isEmpty());
                continue;
            }
            const EncoderInput input = encoder->Input();
            const auto frames = static_cast<qint64>(sound.size()) / input.channels;
            EXPECT_EQ(input.takesFloats ? encoder->WriteFloats(floats.data(), frames)
                                        : encoder->WriteIntegers(sound.data(), frames),
                      Outcome::Ok);
            EXPECT_EQ(encoder->Finish(), Outcome::Ok);
            ++written;
        }
    }
    EXPECT_GT(written, 150);
}

TEST_F(WaveTemplate, WhatCannotBeWrittenIsRefused) {
    EXPECT_EQ(Read(folder_.Write(QStringLiteral("a.wav"), "no wave")), Outcome::NotDecodable);
    const QByteArray silence(960, '\0');
    const auto outcomeOf = [&](const WaveShape& shape) {
        return Read(folder_.Write(QStringLiteral("a.wav"), WaveFile(shape, silence)));
    };
    EXPECT_EQ(outcomeOf({1, 2, 44100, 16}), Outcome::Ok);
    EXPECT_EQ(outcomeOf({1, 6, 44100, 16}), Outcome::NotSupported);
    EXPECT_EQ(outcomeOf({1, 2, 44100, 12}), Outcome::NotSupported);
    EXPECT_EQ(outcomeOf({3, 2, 44100, 16}), Outcome::NotSupported);
    EXPECT_EQ(outcomeOf({WaveTagGsm610, 2, 44100, 8}), Outcome::NotSupported);
    EXPECT_EQ(outcomeOf({0x1234, 2, 44100, 16}), Outcome::NotSupported);
    EXPECT_EQ(format_.kind, FormatKind::None);
}

} // namespace kestrune
